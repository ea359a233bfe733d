#pragma once

#include <windows.h>

#include <string>

namespace karvel {

[[nodiscard]] std::wstring windowText(HWND window);

/// A caption for places that underline the character after "&": shown letter for letter.
[[nodiscard]] std::wstring literalCaption(const std::string& caption);

[[nodiscard]] std::size_t characterCount(const std::wstring& text);

/// Index of the n-th character in UTF-16 text; its size when there are fewer characters.
[[nodiscard]] std::size_t utf16Index(const std::wstring& text, std::size_t characters);

}  // namespace karvel
