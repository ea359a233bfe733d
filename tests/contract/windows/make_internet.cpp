#include "contract/make_internet.h"

#include "platform/windows/internet/wininet_internet.h"

namespace karvel {

std::unique_ptr<Internet> makeInternet(const std::uint32_t& longestLimit) {
  return std::make_unique<ImpatientInternet<WininetInternet>>(longestLimit);
}

}  // namespace karvel
