#pragma once

#include <curl/curl.h>

#include "platform/internet.h"

namespace karvel {

/// True when the connection itself failed, whatever the server replied before.
bool isConnectionFailure(CURLcode code);

/// The port's number for a failure that libcurl reports. `systemError` is the errno of the failed
/// socket call, 0 when there was none.
Internet::ErrorNumber errorOfCurl(CURLcode code, long systemError);

}  // namespace karvel
