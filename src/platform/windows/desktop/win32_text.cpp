#include "platform/windows/desktop/win32_text.h"

#include <algorithm>

#include "platform/windows/system/wide_text.h"

namespace karvel {

std::wstring windowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::wstring literalCaption(const std::string& caption) {
  std::wstring doubled;
  for (const wchar_t unit : toWide(caption)) {
    if (unit == L'&') doubled.push_back(unit);
    doubled.push_back(unit);
  }
  return doubled;
}

std::size_t characterCount(const std::wstring& text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](wchar_t unit) { return !IS_LOW_SURROGATE(unit); }));
}

std::size_t utf16Index(const std::wstring& text, std::size_t characters) {
  std::size_t index = 0;
  while (characters > 0 && index < text.size()) {
    const bool pair = index + 1 < text.size() && IS_SURROGATE_PAIR(text[index], text[index + 1]);
    index += pair ? 2 : 1;
    --characters;
  }
  return index;
}

}  // namespace karvel
