#include "platform/windows/system/ansi_path.h"

#include <windows.h>

#include "platform/windows/system/wide_text.h"

namespace karvel {
namespace {

/// "?" stands in no file name, so a call with this path fails and touches nothing else.
constexpr const char* kNoPath = "?";

std::wstring currentFolder() {
  std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
  folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
  return folder;
}

}  // namespace

AnsiPath::AnsiPath(const std::string& utf8Path) {
  auto path = toAnsi(utf8Path);
  if (!path) {
    const auto nameAt = utf8Path.find_last_of('\\') + 1;
    folderBefore_ = currentFolder();
    SetCurrentDirectoryW(toWide(utf8Path.substr(0, nameAt)).c_str());
    path = toAnsi(utf8Path.substr(nameAt));
  }
  bytes_ = path.value_or(kNoPath);
}

AnsiPath::~AnsiPath() {
  if (!folderBefore_.empty()) SetCurrentDirectoryW(folderBefore_.c_str());
}

}  // namespace karvel
