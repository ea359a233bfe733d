#include "text/code_page.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>

namespace karvel {
namespace {

constexpr std::string_view kUnknownCharacter = "\u30FB";

/// Why a conversion stopped.
enum class Stop : std::uint8_t { kDone, kIncomplete, kUnknown };

/// An iconv conversion from one encoding to another.
class Converter {
 public:
  Converter(const char* to, const char* from) : descriptor_(iconv_open(to, from)) {}
  ~Converter() {
    if (usable()) iconv_close(descriptor_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  /// Converts the whole text; `replace` appends a replacement for what stands at the front of its
  /// first argument and has no counterpart, and returns its length in bytes.
  ///
  /// iconv reads far ahead, and again after each failure: what follows a failure is given to it in
  /// small pieces that grow, so that the time stays proportional to the text.
  template <typename Replace>
  std::string convertAll(std::string_view input, Replace replace) const {
    std::string output;
    std::size_t pieceSize = kLargestPiece;
    while (!input.empty()) {
      std::string_view piece = input.substr(0, pieceSize);
      const bool last = piece.size() == input.size();
      const Stop stop = convert(piece, output);
      input.remove_prefix(std::min(pieceSize, input.size()) - piece.size());
      const bool failed = stop == Stop::kUnknown || (stop == Stop::kIncomplete && last);
      pieceSize = failed ? kSmallestPiece : std::min(2 * pieceSize, kLargestPiece);
      if (failed) input.remove_prefix(replace(input, output));
    }
    return output;
  }

 private:
  static constexpr std::size_t kSmallestPiece = 4;
  static constexpr std::size_t kLargestPiece = 64 * 1024;

  /// Takes what it converts off the front of `input`.
  Stop convert(std::string_view& input, std::string& output) const {
    std::array<char, 4096> buffer;
    while (usable() && !input.empty()) {
      char* in = const_cast<char*>(input.data());  // iconv reads through it only
      std::size_t inLeft = input.size();
      char* out = buffer.data();
      std::size_t outLeft = buffer.size();
      const std::size_t result = iconv(descriptor_, &in, &inLeft, &out, &outLeft);
      const int error = result == static_cast<std::size_t>(-1) ? errno : 0;
      output.append(buffer.data(), buffer.size() - outLeft);
      input.remove_prefix(input.size() - inLeft);
      if (error == EINVAL) return Stop::kIncomplete;
      if (error != 0 && error != E2BIG) return Stop::kUnknown;
    }
    return usable() ? Stop::kDone : Stop::kUnknown;
  }

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
  return converter.convertAll(utf8, [](std::string_view rest, std::string& bytes) {
    const std::string_view character = rest.substr(0, utf8CharacterLength(rest));
    bytes.push_back(byteFor(character));
    return character.size();
  });
}

std::string fromCodePage932(std::string_view bytes) {
  thread_local const Converter converter("UTF-8", "CP932");
  return converter.convertAll(bytes, [](std::string_view rest, std::string& utf8) {
    const bool half = rest.size() == 1 && isLeadByte932(rest.front());
    if (!half) utf8.append(characterFor(rest.front()));
    // What follows a lead byte without forming a character with it may be a character itself.
    return std::size_t{1};
  });
}

}  // namespace karvel
