#include "platform/windows/desktop/win32_control_order.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace karvel {
namespace {

constexpr int kBehindAll = std::numeric_limits<int>::max();

bool isDecoration(const Control& control) {
  const ControlKind kind = control.row().kind;
  return kind == ControlKind::kFrame || kind == ControlKind::kLine;
}

struct Place {
  int order;
  Control* control;
};

}  // namespace

std::vector<Control*> inStackingOrder(const Form& form) {
  std::vector<Place> places;
  int order = kBehindAll;
  for (auto control = form.controls().rbegin(); control != form.controls().rend(); ++control) {
    const int own = (*control)->row().tabOrder;
    if (own != ControlRow::kNoTab) order = own;
    places.push_back({isDecoration(**control) ? kBehindAll : order, control->get()});
  }
  std::reverse(places.begin(), places.end());
  std::stable_sort(places.begin(), places.end(),
                   [](const Place& left, const Place& right) { return left.order < right.order; });
  std::vector<Control*> ordered;
  ordered.reserve(places.size());
  for (const Place& place : places) ordered.push_back(place.control);
  return ordered;
}

bool excludeEachOther(const Control& left, const Control& right) {
  const auto option = ControlKind::kOptionButton;
  return left.row().kind == option && right.row().kind == option &&
         std::string_view(left.row().name) == right.row().name;
}

Control* neighbouringOption(const Form& form, const Control& option, int step) {
  if (option.row().kind != ControlKind::kOptionButton) return nullptr;
  std::vector<Control*> options;
  for (const auto& control : form.controls()) {
    if (!excludeEachOther(*control, option)) continue;
    if (control->enabled() || control.get() == &option) {
      options.push_back(control.get());
    }
  }
  const auto place = std::find(options.begin(), options.end(), &option) - options.begin();
  const auto count = static_cast<std::ptrdiff_t>(options.size());
  return options[static_cast<std::size_t>((place + step + count) % count)];
}

}  // namespace karvel
