#include "text/code_page.h"

#include <iconv.h>

#include <array>
#include <cerrno>

namespace karvel {
namespace {

constexpr std::string_view kUnknownCharacter = "\u30FB";

/// An iconv conversion from one encoding to another.
class Converter {
 public:
  Converter(const char* to, const char* from) : descriptor_(iconv_open(to, from)) {}
  ~Converter() {
    if (usable()) iconv_close(descriptor_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  /// Converts as much as it can from the front of `input`, which it takes away; stops at what has
  /// no counterpart.
  void convert(std::string_view& input, std::string& output) const {
    std::array<char, 4096> buffer{};
    while (usable() && !input.empty()) {
      char* in = const_cast<char*>(input.data());  // iconv reads through it only
      std::size_t inLeft = input.size();
      char* out = buffer.data();
      std::size_t outLeft = buffer.size();
      const std::size_t result = iconv(descriptor_, &in, &inLeft, &out, &outLeft);
      const bool full = result == static_cast<std::size_t>(-1) && errno == E2BIG;
      output.append(buffer.data(), buffer.size() - outLeft);
      input.remove_prefix(input.size() - inLeft);
      if (!full) return;
    }
  }

 private:
  [[nodiscard]] bool usable() const { return descriptor_ != reinterpret_cast<iconv_t>(-1); }

  iconv_t descriptor_;
};

/// Single bytes that Windows maps and iconv does not.
constexpr struct {
  char byte;
  std::string_view utf8;
} kLoneBytes[] = {
    {'\x80', "\u0080"}, {'\xA0', "\uF8F0"}, {'\xFD', "\uF8F1"},
    {'\xFE', "\uF8F2"}, {'\xFF', "\uF8F3"},
};

char byteFor(std::string_view character) {
  for (const auto& lone : kLoneBytes) {
    if (lone.utf8 == character) return lone.byte;
  }
  return '?';
}

std::string_view characterFor(char byte) {
  for (const auto& lone : kLoneBytes) {
    if (lone.byte == byte) return lone.utf8;
  }
  return kUnknownCharacter;
}

std::size_t utf8CharacterLength(std::string_view text) {
  std::size_t length = 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
    ++length;
  }
  return length;
}

}  // namespace

std::string toCodePage932(std::string_view utf8) {
  thread_local const Converter converter("CP932", "UTF-8");
  std::string bytes;
  while (!utf8.empty()) {
    converter.convert(utf8, bytes);
    if (utf8.empty()) break;
    const std::string_view character = utf8.substr(0, utf8CharacterLength(utf8));
    bytes.push_back(byteFor(character));
    utf8.remove_prefix(character.size());
  }
  return bytes;
}

std::string fromCodePage932(std::string_view bytes) {
  thread_local const Converter converter("UTF-8", "CP932");
  std::string utf8;
  while (!bytes.empty()) {
    converter.convert(bytes, utf8);
    if (bytes.empty()) break;
    if (bytes.size() == 1 && isLeadByte932(bytes.front())) break;
    utf8.append(characterFor(bytes.front()));
    // What follows a lead byte without forming a character with it may be a character itself.
    bytes.remove_prefix(1);
  }
  return utf8;
}

}  // namespace karvel
