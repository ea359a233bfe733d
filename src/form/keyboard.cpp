#include "form/keyboard.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

namespace karvel {
namespace {

constexpr int kBehindAll = std::numeric_limits<int>::max();

bool isOption(const Control& control) {
  return control.row().kind == ControlKind::kOptionButton;
}

bool isDecoration(const Control& control) {
  const ControlKind kind = control.row().kind;
  return kind == ControlKind::kFrame || kind == ControlKind::kLine;
}

Control* buttonWith(const Form& form, ControlRow::Style style) {
  for (const auto& control : form.controls()) {
    if (control->has(style)) return control.get();
  }
  return nullptr;
}

}  // namespace

std::vector<Control*> stackingOrder(const Form& form) {
  std::vector<std::pair<int, Control*>> places;
  int order = kBehindAll;
  for (auto control = form.controls().rbegin(); control != form.controls().rend(); ++control) {
    if ((*control)->has(ControlRow::kHidden)) continue;
    const int own = (*control)->row().tabOrder;
    if (own != ControlRow::kNoTab) order = own;
    places.emplace_back(isDecoration(**control) ? kBehindAll : order, control->get());
  }
  std::reverse(places.begin(), places.end());
  std::stable_sort(places.begin(), places.end(),
                   [](const auto& left, const auto& right) { return left.first < right.first; });
  std::vector<Control*> ordered;
  ordered.reserve(places.size());
  for (const auto& place : places) ordered.push_back(place.second);
  return ordered;
}

bool excludeEachOther(const Control& left, const Control& right) {
  return isOption(left) && isOption(right) && std::string_view(left.row().name) == right.row().name;
}

bool isTabStop(const Form& form, const Control& control) {
  if (control.has(ControlRow::kHidden) || control.row().tabOrder == ControlRow::kNoTab) {
    return false;
  }
  if (!isOption(control) || control.selected()) return true;
  return std::none_of(form.controls().begin(), form.controls().end(), [&](const auto& other) {
    return other->selected() && excludeEachOther(*other, control);
  });
}

Control* nextTabStop(const Form& form, const Control* from) {
  std::vector<Control*> order = stackingOrder(form);
  const auto start = std::find(order.begin(), order.end(), from);
  if (start != order.end()) std::rotate(order.begin(), start + 1, order.end());
  const auto next = std::find_if(order.begin(), order.end(), [&](const Control* control) {
    return control->enabled() && isTabStop(form, *control);
  });
  return next == order.end() ? nullptr : *next;
}

Control* neighbouringOption(const Form& form, const Control& from, int step) {
  if (!isOption(from)) return nullptr;
  std::vector<Control*> options;
  for (const auto& control : form.controls()) {
    if (!excludeEachOther(*control, from)) continue;
    if (control->enabled() || control.get() == &from) options.push_back(control.get());
  }
  const auto place = std::find(options.begin(), options.end(), &from) - options.begin();
  const auto count = static_cast<std::ptrdiff_t>(options.size());
  return options[static_cast<std::size_t>((place + step + count) % count)];
}

Control* answeredBy(const Form& form, AnswerKey key, bool repeats, const Control* focused) {
  if (key == AnswerKey::kNone || repeats) return nullptr;
  if (key == AnswerKey::kEscape) return buttonWith(form, ControlRow::kCancelButton);
  for (const auto& control : form.controls()) {
    if (control.get() == focused && control->row().kind == ControlKind::kButton) {
      return control.get();
    }
  }
  return buttonWith(form, ControlRow::kDefaultButton);
}

Control* FocusKeeper::afterChange(Control& changed, const Control* focused) {
  if (changed.enabled()) {
    return &changed == waiting_ ? std::exchange(waiting_, nullptr) : nullptr;
  }
  if (&changed != focused) return nullptr;
  if (waiting_ == nullptr) waiting_ = &changed;
  return nextTabStop(form_, &changed);
}

}  // namespace karvel
