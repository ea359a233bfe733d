#include "contract/make_internet.h"

#include "platform/windows/internet/wininet_internet.h"

namespace karvel {

std::unique_ptr<Internet> makeInternet() {
  return std::make_unique<WininetInternet>();
}

}  // namespace karvel
