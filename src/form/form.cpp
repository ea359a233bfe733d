#include "form/form.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace karvel {

Control::Control(Form& form, const ControlRow& row)
    : form_(form), row_(row), enabled_(!has(ControlRow::kDisabled)), caption_(row.caption) {
}

void Control::changed() {
  if (form_.view_ != nullptr) form_.view_->controlChanged(*this);
}

void Control::setEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  changed();
}

void Control::setCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  changed();
}

void Control::setText(std::string text) {
  if (text == text_ || !form_.takesInput()) return;
  text_ = std::move(text);
  changed();
  form_.run(onChange);
}

void Control::setValue(int value) {
  const int wanted = value != 0 ? 1 : 0;
  if (wanted == value_ || !form_.takesInput()) return;
  value_ = wanted;
  changed();
  form_.run(onClick);
}

void Control::select() {
  if (!form_.takesInput()) return;
  form_.selectOnly(*this);
  form_.run(onClick);
}

void Control::click() {
  if (!enabled_ || selected_) return;
  if (row_.kind == ControlKind::kOptionButton) {
    select();
  } else {
    form_.run(onClick);
  }
}

void Control::focus() {
  form_.run(onFocus);
}

void Control::setSelection(std::size_t start, std::size_t length) {
  selectionStart_ = start;
  selectionLength_ = length;
  selectionRequested_ = true;
  changed();
}

bool Control::takeSelectionRequest() {
  return std::exchange(selectionRequested_, false);
}

void Control::setItems(std::vector<std::string> items) {
  items_ = std::move(items);
  changed();
}

void Control::setTabStops(std::vector<int> dialogUnits) {
  tabStops_ = std::move(dialogUnits);
  changed();
}

ControlArray::ControlArray(Form& form, std::string_view name) {
  for (const auto& control : form.controls()) {
    if (control->row().name == name) controls_.push_back(control.get());
  }
}

Control& ControlArray::operator[](int index) const {
  Control* control = find(index);
  assert(control != nullptr);
  return *control;
}

Control* ControlArray::find(int index) const {
  const auto found =
      std::find_if(controls_.begin(), controls_.end(),
                   [index](const Control* control) { return control->row().index == index; });
  return found != controls_.end() ? *found : nullptr;
}

Form::Form(const FormTable& table) : table_(table), caption_(table.caption) {
  for (const ControlRow& row : table.controls) {
    controls_.push_back(std::make_unique<Control>(*this, row));
  }
}

Form::~Form() = default;

Control& Form::control(std::string_view name, int index) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(), [&](const auto& control) {
    return control->row().name == name && control->row().index == index;
  });
  assert(found != controls_.end());
  return **found;
}

void Form::setCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  if (view_ != nullptr) view_->formChanged();
}

void Form::setVisible(bool visible) {
  if (visible == visible_ || closed_) return;
  visible_ = visible;
  showChange();
}

void Form::setWindowState(WindowState state) {
  if (state == windowState_) return;
  windowState_ = state;
  showChange();
  run(onResize);
}

void Form::setTopmost(bool topmost) {
  if (topmost == topmost_) return;
  topmost_ = topmost;
  if (view_ != nullptr) view_->formChanged();
}

void Form::stopInput() {
  keyEvent(0);
  takesInput_ = false;
  if (dialog_ != nullptr) dialog_->markClosed();
}

void Form::close() {
  if (onClose) {
    run(onClose);
  } else {
    markClosed();
  }
}

void Form::markClosed() {
  if (closed_) return;
  stopInput();
  closed_ = true;
  visible_ = false;
  if (view_ != nullptr) view_->formChanged();
}

void Form::keyEvent(int shift) {
  if (onKey && takesInput_) onKey(onScreen() ? shift : 0);
}

void Form::run(const std::function<void()>& handler) const {
  if (handler && takesInput_) handler();
}

void Form::showChange() {
  if (view_ != nullptr) view_->formChanged();
  if (!onScreen()) keyEvent(0);
}

void Form::selectOnly(const Control& option) {
  for (const auto& control : controls_) {
    if (control->row().kind != ControlKind::kOptionButton) continue;
    if (std::string_view(control->row().name) != option.row().name) continue;
    const bool selected = control.get() == &option;
    if (control->selected_ == selected) continue;
    control->selected_ = selected;
    control->changed();
  }
}

void MenuItem::choose(const Form& owner) const {
  if (enabled && onClick && owner.takesInput()) onClick();
}

}  // namespace karvel
