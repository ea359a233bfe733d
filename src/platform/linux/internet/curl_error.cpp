#include "platform/linux/internet/curl_error.h"

#include <cerrno>

namespace karvel {

bool isConnectionFailure(CURLcode code) {
  switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
    case CURLE_OPERATION_TIMEDOUT:
    case CURLE_FTP_ACCEPT_TIMEOUT:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
      return true;
    default:
      return false;
  }
}

Internet::ErrorNumber errorOfCurl(CURLcode code, long systemError) {
  switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_URL_MALFORMAT:  // only the host can be wrong in our addresses
      return Internet::kErrorNameNotResolved;
    case CURLE_COULDNT_CONNECT:
      return Internet::kErrorCannotConnect;
    case CURLE_OPERATION_TIMEDOUT:
    case CURLE_FTP_ACCEPT_TIMEOUT:
      return Internet::kErrorTimeout;
    case CURLE_LOGIN_DENIED:
      return Internet::kErrorLoginFailure;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
      return systemError == ECONNRESET ? Internet::kErrorConnectionReset
                                       : Internet::kErrorConnectionAborted;
    default:
      return Internet::kErrorInternal;
  }
}

}  // namespace karvel
