#include "platform/windows/system/win32_files.h"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "platform/windows/system/wide_text.h"
#include "platform/windows/system/win32_handle.h"
#include "text/path.h"
#include "text/wildcard.h"

namespace karvel {
namespace {

constexpr std::size_t kPieceSize = 64 * 1024;
constexpr std::uint32_t kSettable = Files::kReadOnly | Files::kHidden | Files::kSystem;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Opens a file on a disk; a device or a pipe of that name is none.
Win32Handle openFile(const std::string& path, DWORD access, DWORD share, DWORD disposition) {
  HANDLE handle = CreateFileW(toWide(path).c_str(), access, share, nullptr, disposition,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return {};
  Win32Handle file(handle);
  if (GetFileType(handle) != FILE_TYPE_DISK) return {};
  return file;
}

/// Whoever else has the file open keeps it and may go on writing.
Win32Handle openForReading(const std::string& path) {
  return openFile(path, GENERIC_READ, kShareAll, OPEN_EXISTING);
}

bool isReadOnly(const std::string& path) {
  const DWORD bits = GetFileAttributesW(toWide(path).c_str());
  return bits != INVALID_FILE_ATTRIBUTES && (bits & FILE_ATTRIBUTE_READONLY) != 0;
}

/// An existing file keeps its attributes, hidden and system too. Not every file system refuses a
/// read-only file to a super user.
Win32Handle openForWriting(const std::string& path, DWORD access, DWORD share) {
  if (isReadOnly(path)) return {};
  return openFile(path, access, share, OPEN_ALWAYS);
}

bool writeAll(HANDLE file, std::string_view content) {
  while (!content.empty()) {
    const auto size = static_cast<DWORD>(std::min(content.size(), kPieceSize));
    DWORD written = 0;
    if (WriteFile(file, content.data(), size, &written, nullptr) == FALSE || written == 0) {
      return false;
    }
    content.remove_prefix(written);
  }
  return true;
}

bool readAll(HANDLE file, const std::function<bool(std::string_view)>& take) {
  // Not filled with zeros first: the settings' small files are read again and again.
  const auto buffer = std::make_unique_for_overwrite<char[]>(kPieceSize);
  while (true) {
    DWORD count = 0;
    if (ReadFile(file, buffer.get(), kPieceSize, &count, nullptr) == FALSE) return false;
    if (count == 0) return true;
    if (!take({buffer.get(), count})) return false;
  }
}

struct FindCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { FindClose(handle); }
};

std::vector<std::string> namesIn(const std::string& folder) {
  std::vector<std::string> names;
  WIN32_FIND_DATAW entry{};
  HANDLE handle = FindFirstFileW(toWide(joinPath(folder, "*")).c_str(), &entry);
  if (handle == INVALID_HANDLE_VALUE) return names;
  const std::unique_ptr<HANDLE, FindCloser> find(handle);
  do {
    names.push_back(fromWide(entry.cFileName));
  } while (FindNextFileW(handle, &entry) != FALSE);
  return names;
}

}  // namespace

bool Win32Files::exists(const std::string& path) {
  return attributes(path).has_value();
}

bool Win32Files::readPieces(const std::string& path, const Consumer& consumer) {
  const Win32Handle file = openForReading(path);
  return file && readAll(file.get(), [&](std::string_view piece) {
           consumer(piece);
           return true;
         });
}

bool Win32Files::write(const std::string& path, std::string_view content) {
  const Win32Handle file = openForWriting(path, GENERIC_WRITE, FILE_SHARE_READ);
  return file && SetEndOfFile(file.get()) != FALSE && writeAll(file.get(), content);
}

bool Win32Files::append(const std::string& path, std::string_view content) {
  const Win32Handle file = openForWriting(path, FILE_APPEND_DATA | SYNCHRONIZE, FILE_SHARE_READ);
  return file && writeAll(file.get(), content);
}

bool Win32Files::remove(const std::string& path) {
  return DeleteFileW(toWide(path).c_str()) != FALSE;
}

void Win32Files::removeMatching(const std::string& folder, const std::string& pattern) {
  // The system's own matching would take short names too, so that "*.txt" deletes "a.txtx".
  for (const std::string& name : namesIn(folder)) {
    if (matchesWildcard(name, pattern)) remove(joinPath(folder, name));
  }
}

bool Win32Files::copy(const std::string& source, const std::string& target) {
  const Win32Handle from = openForReading(source);
  if (!from) return false;
  {
    // Nobody else may have the target open, so a file is never copied onto itself.
    const Win32Handle to = openForWriting(target, GENERIC_WRITE, 0);
    if (!to) return false;
    const bool copied =
        SetEndOfFile(to.get()) != FALSE &&
        readAll(from.get(), [&](std::string_view piece) { return writeAll(to.get(), piece); });
    if (copied) return true;
  }
  remove(target);
  return false;
}

bool Win32Files::rename(const std::string& from, const std::string& to) {
  // Not every file system refuses a read-only file to a super user.
  return !isReadOnly(to) &&
         MoveFileExW(toWide(from).c_str(), toWide(to).c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
}

std::optional<std::uint32_t> Win32Files::attributes(const std::string& path) {
  const DWORD bits = GetFileAttributesW(toWide(path).c_str());
  if (bits == INVALID_FILE_ATTRIBUTES) return std::nullopt;
  return bits & (kSettable | kDirectory);
}

bool Win32Files::setAttributes(const std::string& path, std::uint32_t attributes) {
  const DWORD wanted = attributes & kSettable;
  return SetFileAttributesW(toWide(path).c_str(), wanted == 0 ? FILE_ATTRIBUTE_NORMAL : wanted) !=
         FALSE;
}

}  // namespace karvel
