#include "platform/windows/system/crash_dump.h"

#include <windows.h>

#include <dbghelp.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <type_traits>
#include <vector>

#include "platform/windows/system/wide_text.h"
#include "platform/windows/system/win32_handle.h"
#include "platform/windows/system/win32_module.h"

namespace karvel {
namespace {

constexpr std::size_t kKept = 3;
constexpr ULONG kStackForHandler = 64 * 1024;  // bytes, when the stack itself has overflowed

/// Found while the program is sound, so that a crash needs little.
std::wstring dumpFolder;
std::wstring dumpLibrary;

/// Deletes the oldest until there is room for one more; the names are in the order of time.
void deleteOldDumps() {
  std::vector<std::wstring> names;
  WIN32_FIND_DATAW entry{};
  HANDLE find = FindFirstFileW((dumpFolder + L"karvel-*.dmp").c_str(), &entry);
  if (find == INVALID_HANDLE_VALUE) return;
  do {
    names.emplace_back(entry.cFileName);
  } while (FindNextFileW(find, &entry) != FALSE);
  FindClose(find);
  std::ranges::sort(names);
  for (std::size_t i = 0; i + kKept <= names.size(); ++i) {
    DeleteFileW((dumpFolder + names[i]).c_str());
  }
}

std::wstring newDump() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  std::array<wchar_t, 64> name{};
  std::swprintf(name.data(), name.size(), L"karvel-%02d%02d%02d-%02d%02d%02d.dmp", now.wYear % 100,
                now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond);
  return dumpFolder + name.data();
}

LONG WINAPI dump(EXCEPTION_POINTERS* exception) {
  LoadLibraryW(dumpLibrary.c_str());
  const auto write = findFunction<std::remove_pointer_t<decltype(&MiniDumpWriteDump)>>(
      L"dbghelp.dll", "MiniDumpWriteDump");
  if (write == nullptr) return EXCEPTION_EXECUTE_HANDLER;
  deleteOldDumps();
  HANDLE handle = CreateFileW(newDump().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return EXCEPTION_EXECUTE_HANDLER;
  const Win32Handle file(handle);
  MINIDUMP_EXCEPTION_INFORMATION about{GetCurrentThreadId(), exception, FALSE};
  write(GetCurrentProcess(), GetCurrentProcessId(), file.get(), MiniDumpNormal, &about, nullptr,
        nullptr);
  return EXCEPTION_EXECUTE_HANDLER;
}

/// A failed assertion, or an exception that nobody catches.
[[noreturn]] void crash(int) {
  __builtin_trap();
}

}  // namespace

void writeDumpOnCrash(const std::string& folder) {
  dumpFolder = toWide(folder) + L'\\';
  std::wstring system(MAX_PATH, L'\0');
  system.resize(GetSystemDirectoryW(system.data(), MAX_PATH));
  dumpLibrary = system + L"\\dbghelp.dll";
  ULONG stack = kStackForHandler;
  SetThreadStackGuarantee(&stack);
  SetUnhandledExceptionFilter(dump);
  std::signal(SIGABRT, crash);
}

}  // namespace karvel
