#include "contract/make_internet.h"

#include "platform/linux/internet/ftp_internet.h"

namespace karvel {

std::unique_ptr<Internet> makeInternet() {
  return std::make_unique<FtpInternet>();
}

}  // namespace karvel
