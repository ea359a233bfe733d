#include "selftest/windows/order.h"

namespace karvel {

Order orderOf(const std::vector<std::string>& arguments) {
  Order order;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const bool last = i + 1 == arguments.size();
    if (argument == "--quick") {
      order.quick = true;
    } else if (argument == "--open") {
      order.open = true;
    } else if (argument == "--after-sign-in") {
      order.afterSignIn = true;
    } else if (argument == "--signed-in") {
      order.signedIn = true;
    } else if (argument == "--ask" && !last) {
      order.ask = arguments[++i];
    } else if (argument == "--report" && !last) {
      order.report = arguments[++i];
    } else {
      order.wrong = true;
    }
  }
  return order;
}

}  // namespace karvel
