#include "contract/make_internet.h"

#include "platform/linux/internet/curl_internet.h"

namespace karvel {

std::unique_ptr<Internet> makeInternet() {
  return std::make_unique<CurlInternet>();
}

}  // namespace karvel
