#pragma once

#include <string>
#include <utility>

#include "platform/windows/desktop/win32_control_window.h"

namespace karvel {

/// A one-line text box. What is typed or pasted passes the form's filter and the length limit; a
/// line holds no control characters.
class Win32TextField final : public Win32ControlWindow {
 public:
  Win32TextField(Control& control, HWND parent, WORD id);
  ~Win32TextField() override;
  void sync() override;
  void notify(WORD notification) override;
  void moveTo(const RECT& place) const override;

 private:
  static LRESULT CALLBACK fieldProc(HWND window, UINT message, WPARAM first, LPARAM second);
  LRESULT handleMessage(UINT message, WPARAM first, LPARAM second);
  [[nodiscard]] LRESULT pass(UINT message, WPARAM first, LPARAM second) const;

  /// Takes a WM_CHAR.
  LRESULT type(WPARAM typed, LPARAM repeats);
  void insert(const std::wstring& text);
  [[nodiscard]] std::wstring accepted(const std::wstring& text) const;
  void receiveFocus();
  void prepareInputMethod() const;
  void finishClick();
  void syncSelection();
  void select(std::size_t start, std::size_t length) const;
  /// Where it starts and ends, in UTF-16 units.
  [[nodiscard]] std::pair<DWORD, DWORD> selection() const;

  WNDPROC previousProc_ = nullptr;
  wchar_t firstOfPair_ = L'\0';  ///< typed, of a character that UTF-16 has as two units
  bool syncing_ = false;
  bool keptFocus_ = false;  ///< while another window was in front or a menu was open
  bool focusedByClick_ = false;
  bool selectionRequested_ = false;
  std::size_t selectionStart_ = 0;
  std::size_t selectionLength_ = 0;
};

}  // namespace karvel
