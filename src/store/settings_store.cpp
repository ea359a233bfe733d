#include "store/settings_store.h"

#include <algorithm>

#include "text/code_page.h"
#include "text/path.h"
#include "text/strings.h"

namespace karvel {
namespace {

constexpr std::size_t kBufferSize = 256;
constexpr std::chrono::milliseconds kRetryPause{100};

std::string oneLine(std::string_view value) {
  std::string line(value);
  std::erase_if(line, [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
  return line;
}

/// A reader takes one pair of enclosing quotes off a value, so a value with quotes of its own is
/// stored in a second pair.
std::string storedForm(const std::string& line) {
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
  const std::string line = toCodePage932(oneLine(value));
  if (holds(sectionBytes, keyBytes, line, file)) return true;

  const std::string stored = storedForm(line);
  if (profile_.write(sectionBytes, keyBytes, stored, file)) return true;
  SetFileAttr(file, Files::kNormal);
  clock_.sleep(kRetryPause);
  return profile_.write(sectionBytes, keyBytes, stored, file);
}

/// A missing value and an empty one look the same, so an empty one is always written. So is one in
/// a read-only file, which the write makes a normal one.
bool IniRedWrt::holds(const std::string& section, const std::string& key, const std::string& value,
                      const std::string& file) {
  if (value.empty() || profile_.read(section, key, file, kBufferSize) != value) return false;
  const auto attributes = files_.attributes(file);
  return attributes && (*attributes & Files::kReadOnly) == 0;
}

std::string IniRedWrt::read(const OwnKey& key) {
  return ReadIni(section::kFtp, key.name, OwnIniPath);
}

std::string IniRedWrt::read(const TicketKey& key) {
  return ReadIni(key.section, key.name, TicketIniPath);
}

bool IniRedWrt::write(const OwnKey& key, std::string_view value) {
  return WriteIni(section::kFtp, key.name, value, OwnIniPath);
}

bool IniRedWrt::write(const TicketKey& key, std::string_view value) {
  return WriteIni(key.section, key.name, value, TicketIniPath);
}

bool IniRedWrt::locateOwnIni(const std::string& programFolder) {
  OwnIniPath = joinPath(programFolder, "karvel.hnb");
  return files_.exists(OwnIniPath);
}

void IniRedWrt::createOwnIni(const std::string& programFolder) {
  for (const OwnKey& key : own::kInitialKeys) {
    const bool isTicketFolder = key.name == own::kTicketFolder.name;
    write(key, isTicketFolder ? std::string_view(programFolder) : key.initial);
  }
}

bool IniRedWrt::locateTicketIni(const std::string& programFolder) {
  std::string folder = read(own::kTicketFolder);
  if (folder.empty()) {
    folder = programFolder;
    write(own::kTicketFolder, folder);
  }
  // The code page cannot store every path, but the program's own folder is known exactly.
  if (toCodePage932(folder) == toCodePage932(programFolder)) folder = programFolder;
  TicketIniPath = joinPath(folder, "karvel.ini");
  return files_.exists(TicketIniPath);
}

void IniRedWrt::removeLeftovers() {
  for (const std::string& file : {OwnIniPath, TicketIniPath}) profile_.removeLeftovers(file);
}

void IniRedWrt::SetFileAttr(const std::string& path, std::uint16_t attributes) {
  const std::string file(trimmed(path));
  const auto current = files_.attributes(file);
  if (current && (*current & attributes) == 0) files_.setAttributes(file, attributes);
}

}  // namespace karvel
