#include "contract/make_internet.h"

#include "platform/linux/internet/ftp_internet.h"

namespace karvel {

std::unique_ptr<Internet> makeInternet(const std::uint32_t& longestLimit) {
  return std::make_unique<ImpatientInternet<FtpInternet>>(longestLimit);
}

}  // namespace karvel
