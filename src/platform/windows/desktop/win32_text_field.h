#pragma once

#include <string>

#include "form/text_entry.h"
#include "platform/windows/desktop/win32_control.h"

namespace karvel {

/// A one-line text box. What is typed or pasted passes acceptedInsertion() first.
class Win32TextField final : public Win32Control {
 public:
  Win32TextField(Control& control, HWND parent, WORD id);
  ~Win32TextField() override;
  void sync() override;
  void notify(WORD notification) override;
  void moveTo(const PixelRect& place) const override;

 private:
  /// Where a piece of the text starts and ends, in UTF-16 units.
  struct Span {
    DWORD start = 0;
    DWORD end = 0;
  };

  static LRESULT CALLBACK fieldProc(HWND window, UINT message, WPARAM first, LPARAM second);
  LRESULT handleMessage(UINT message, WPARAM first, LPARAM second);
  [[nodiscard]] LRESULT pass(UINT message, WPARAM first, LPARAM second) const;

  /// Takes a WM_CHAR.
  LRESULT type(WPARAM typed, LPARAM repeats);
  void insert(const std::wstring& text) const;
  /// What of the text may take the place of the selection.
  [[nodiscard]] std::wstring accepted(const std::wstring& text) const;
  void prepareInputMethod() const;
  void select(std::size_t start, std::size_t length) const;
  [[nodiscard]] Span selection() const;

  TextBoxFocus focus_;
  WNDPROC previousProc_ = nullptr;
  wchar_t firstOfPair_ = L'\0';  ///< typed, of a character that UTF-16 has as two units
  bool syncing_ = false;
  bool focusedByClick_ = false;
};

}  // namespace karvel
