#include "store/settings_store.h"

#include <algorithm>

#include "text/code_page.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::size_t kBufferSize = 256;
constexpr std::chrono::milliseconds kRetryPause{100};

/// A reader takes one pair of enclosing quotes off a value; a value that has its own gets a pair
/// for that.
std::string storedForm(std::string_view value) {
  std::string line(value);
  std::erase_if(line, [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
  const bool quoted = line.size() >= 2 && line.front() == line.back() &&
                      (line.front() == '"' || line.front() == '\'');
  return quoted ? '"' + line + '"' : line;
}

}  // namespace

std::string IniRedWrt::ReadIni(std::string_view section, std::string_view key,
                               const std::string& file) {
  const std::string sectionBytes = toCodePage932(section);
  const std::string keyBytes = toCodePage932(key);
  std::string value = profile_.read(sectionBytes, keyBytes, file, kBufferSize);
  if (value.empty()) {
    clock_.sleep(kRetryPause);
    value = profile_.read(sectionBytes, keyBytes, file, kBufferSize);
  }
  std::erase(value, '\0');
  return fromCodePage932(value);
}

bool IniRedWrt::WriteIni(std::string_view section, std::string_view key, std::string_view value,
                         const std::string& file) {
  const std::string sectionBytes = toCodePage932(section);
  const std::string keyBytes = toCodePage932(key);
  const std::string valueBytes = toCodePage932(storedForm(value));
  if (profile_.write(sectionBytes, keyBytes, valueBytes, file)) return true;
  SetFileAttr(file, Files::kNormal);
  clock_.sleep(kRetryPause);
  return profile_.write(sectionBytes, keyBytes, valueBytes, file);
}

void IniRedWrt::locateTicketIni(const std::string& programFolder) {
  std::string folder = readOwn("HST FOLD");
  if (folder.empty()) {
    folder = programFolder;
    writeOwn("HST FOLD", folder);
  }
  // The code page lacks characters that a path may have; the program's own folder is known anyway.
  if (toCodePage932(folder) == toCodePage932(programFolder)) folder = programFolder;
  TicketIniPath = joinPath(folder, "karvel.ini");
}

std::string IniRedWrt::readOwn(std::string_view key) {
  return ReadIni(section::kFtp, key, OwnIniPath);
}

bool IniRedWrt::writeOwn(std::string_view key, std::string_view value) {
  return WriteIni(section::kFtp, key, value, OwnIniPath);
}

std::string IniRedWrt::readTicket(std::string_view section, std::string_view key) {
  return ReadIni(section, key, TicketIniPath);
}

void IniRedWrt::SetFileAttr(const std::string& path, std::uint16_t attributes) {
  const std::string file(trimmed(path));
  const auto current = files_.attributes(file);
  if (current && (*current & attributes) == 0) files_.setAttributes(file, attributes);
}

}  // namespace karvel
