#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace karvel {

/// A screen as data: a table of controls, the plain objects made from it, and the events that a
/// window reports. The system's rules work on these objects alone; a renderer (see desktop.h)
/// binds a real window to them in both directions. All texts are UTF-8.

enum class ControlKind : std::uint8_t {
  kLabel,
  kTextBox,
  kButton,
  kOptionButton,  ///< exclusive among the controls of the same name
  kCheckBox,
  kListBox,  ///< always hidden: it only holds values, some of which nobody reads
  kFrame,    ///< an etched rectangle behind other controls
  kLine,     ///< an etched horizontal line
};

/// Dialog units: a quarter of the font's average character width across, an eighth of its height
/// down. A screen so scales with the font and the display.
struct Rect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

enum class InputMethod : std::uint8_t { kOff, kHiragana };

/// One row of a form's table: what a control is before anything happens to it.
struct ControlRow {
  static constexpr int kNoIndex = -1;
  static constexpr int kNoTab = -1;

  enum Style : std::uint32_t {
    kPlain = 0,
    kDisabled = 1U << 0U,
    kHidden = 1U << 1U,
    kPassword = 1U << 2U,       ///< every character shown as "*"
    kDigitsOnly = 1U << 3U,     ///< typing accepts "0" to "9" and editing keys alone
    kDefaultButton = 1U << 4U,  ///< pressed by Enter
    kCancelButton = 1U << 5U,   ///< pressed by Escape
    kTitle = 1U << 6U,          ///< a section title: set off from plain labels
    kNote = 1U << 7U,           ///< an explanation: less prominent, wrapped within its rectangle
  };

  ControlKind kind = ControlKind::kLabel;
  const char* name = "";
  int index = kNoIndex;  ///< place in its control array
  const char* caption = "";
  Rect rect{};
  int tabOrder = kNoTab;         ///< ascending; kNoTab is out of the keyboard's way
  std::uint32_t style = kPlain;  ///< Style bits
  int maxLength = 0;             ///< characters that can be typed; 0 is no limit
  InputMethod inputMethod = InputMethod::kOff;
  const char* toolTip = "";
  const char* accessibleName = "";  ///< what a screen reader says; empty: the caption
};

class Form;

/// One control. Setting a property to what it is already has no effect, except where said.
class Control {
 public:
  Control(Form& form, const ControlRow& row);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  [[nodiscard]] const ControlRow& row() const { return row_; }
  [[nodiscard]] bool has(ControlRow::Style style) const { return (row_.style & style) != 0; }

  [[nodiscard]] bool enabled() const { return enabled_; }
  void setEnabled(bool enabled);

  /// Label, button, option button, check box.
  [[nodiscard]] const std::string& caption() const { return caption_; }
  void setCaption(std::string caption);

  /// Text box. A different text runs onChange.
  [[nodiscard]] const std::string& text() const { return text_; }
  void setText(std::string text);

  /// Check box: 0 or 1. A different value runs onClick.
  [[nodiscard]] int value() const { return value_; }
  void setValue(int value);

  /// Option button. Selecting clears the others of the same name and runs onClick, also when it
  /// was selected already.
  [[nodiscard]] bool selected() const { return selected_; }
  void select();

  /// A user's click on a button or an option button: nothing happens while it is disabled, nor on
  /// an option that is selected already.
  void click();

  /// Text box: it has received the focus; runs onFocus.
  void focus();

  /// Text box: asks the renderer to select the characters [start, start + length), cut to the text.
  /// The user may change the selection afterwards; what was asked for stays here.
  void setSelection(std::size_t start, std::size_t length);
  [[nodiscard]] std::size_t selectionStart() const { return selectionStart_; }
  [[nodiscard]] std::size_t selectionLength() const { return selectionLength_; }
  /// For renderers: true once after each setSelection().
  [[nodiscard]] bool takeSelectionRequest();

  /// List box.
  [[nodiscard]] const std::vector<std::string>& items() const { return items_; }
  void setItems(std::vector<std::string> items);
  void setTabStops(std::vector<int> dialogUnits);
  [[nodiscard]] const std::vector<int>& tabStops() const { return tabStops_; }

  std::function<void()> onChange;
  std::function<void()> onClick;
  std::function<void()> onFocus;

 private:
  friend class Form;
  void changed();

  Form& form_;
  const ControlRow& row_;
  bool enabled_;
  std::string caption_;
  std::string text_;
  int value_ = 0;
  bool selected_ = false;
  std::size_t selectionStart_ = 0;
  std::size_t selectionLength_ = 0;
  bool selectionRequested_ = false;
  std::vector<std::string> items_;
  std::vector<int> tabStops_;
};

/// The controls of one name, by index. Indexes may have gaps.
class ControlArray {
 public:
  ControlArray(Form& form, std::string_view name);
  Control& operator[](int index) const;
  /// The control that a handler's index names, or nullptr.
  [[nodiscard]] Control* find(int index) const;
  [[nodiscard]] const std::vector<Control*>& all() const { return controls_; }

 private:
  std::vector<Control*> controls_;
};

enum class WindowState : std::uint8_t { kNormal, kMinimized };

/// What a renderer is told. One per form, while a window is bound to it.
class FormView {
 public:
  virtual ~FormView() = default;
  /// Caption, visibility, window state or topmost has changed.
  virtual void formChanged() = 0;
  /// Any property of the control has changed. A label's new caption is painted before the call
  /// returns, also when no messages are processed meanwhile.
  virtual void controlChanged(Control& control) = 0;
};

struct FormTable {
  const char* name;
  const char* caption;
  int width;   ///< of the client area, in dialog units
  int height;  ///< likewise
  bool canMinimize;
  std::span<const ControlRow> controls;
};

/// One screen. Hidden and in normal state until told otherwise. It takes input until stopInput():
/// from then on texts, values and selected options stay as they are, and no handler of the form or
/// of its controls runs, whatever the user does.
class Form {
 public:
  explicit Form(const FormTable& table);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  [[nodiscard]] const FormTable& table() const { return table_; }
  [[nodiscard]] const std::vector<std::unique_ptr<Control>>& controls() const { return controls_; }
  /// The control of that name and index; it must exist.
  Control& control(std::string_view name, int index = ControlRow::kNoIndex) const;

  [[nodiscard]] const std::string& caption() const { return caption_; }
  void setCaption(std::string caption);
  [[nodiscard]] bool visible() const { return visible_; }
  /// A closed form stays hidden. A window that is not shown holds no key: hiding or minimising it
  /// reports every modifier as released.
  void setVisible(bool visible);
  [[nodiscard]] WindowState windowState() const { return windowState_; }
  /// A different state runs onResize, whether a user or the program sets it.
  void setWindowState(WindowState state);
  [[nodiscard]] bool topmost() const { return topmost_; }
  void setTopmost(bool topmost);

  [[nodiscard]] bool takesInput() const { return takesInput_; }
  /// A dialog that is open above the form is closed.
  void stopInput();

  /// A modal dialog is open from showing until this is set.
  [[nodiscard]] bool closed() const { return closed_; }
  /// Closes the form: runs onClose, or without one marks the form closed. The close box of a window
  /// does the same.
  void close();
  /// Stops the input and hides the form, for good.
  void markClosed();

  /// A key was pressed or released while the window had the focus; `shift` is 1 Shift + 2 Ctrl +
  /// 4 Alt as they are after the event. The key itself goes on to its control. A window that loses
  /// the focus or is not on the screen holds no key: onKey runs with 0.
  void keyEvent(int shift);

  std::function<void()> onResize;
  std::function<void()> onClose;
  std::function<void(int shift)> onKey;

  /// Binds or, with nullptr, releases the renderer's view.
  void setView(FormView* view) { view_ = view; }

 private:
  friend class Control;
  friend class DialogScope;
  void run(const std::function<void()>& handler) const;
  void selectOnly(const Control& option);
  void showChange();
  [[nodiscard]] bool onScreen() const { return visible_ && windowState_ == WindowState::kNormal; }

  const FormTable& table_;
  std::vector<std::unique_ptr<Control>> controls_;
  std::string caption_;
  bool visible_ = false;
  WindowState windowState_ = WindowState::kNormal;
  bool topmost_ = false;
  bool takesInput_ = true;
  bool closed_ = false;
  Form* dialog_ = nullptr;  ///< open above this form
  FormView* view_ = nullptr;
};

/// For as long as a modal dialog is open above its owner, with which it is closed.
class DialogScope {
 public:
  DialogScope(Form& owner, Form& dialog)
      : owner_(owner), previous_(std::exchange(owner.dialog_, &dialog)) {}
  ~DialogScope() { owner_.dialog_ = previous_; }
  DialogScope(const DialogScope&) = delete;
  DialogScope& operator=(const DialogScope&) = delete;

 private:
  Form& owner_;
  Form* previous_;
};

/// An entry of a popup menu. A caption "-" is a separator line.
struct MenuItem {
  std::string caption;
  bool enabled = true;
  std::function<void()> onClick{};

  /// The user has chosen it from the owner's menu: runs onClick when it is enabled and the owner
  /// still takes input.
  void choose(const Form& owner) const;
};

}  // namespace karvel
