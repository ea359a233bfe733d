#include "platform/windows/system/library_search.h"

#include <windows.h>

#include "platform/windows/system/win32_module.h"

namespace karvel {
namespace {

constexpr IMAGE_LOAD_CONFIG_DIRECTORY64 loadConfiguration() {
  IMAGE_LOAD_CONFIG_DIRECTORY64 configuration{};
  configuration.Size = sizeof configuration;
  // Newer headers call it DependentLoadFlags: the loader's rule for imports, since Windows 10.
  configuration.Reserved1 = LOAD_LIBRARY_SEARCH_SYSTEM32;
  return configuration;
}

}  // namespace
}  // namespace karvel

// This linker does not know the name: packaging/finish-program enters it into the program's header.
extern "C" {
extern constinit const IMAGE_LOAD_CONFIG_DIRECTORY64 _load_config_used;
constinit const IMAGE_LOAD_CONFIG_DIRECTORY64 _load_config_used = karvel::loadConfiguration();
}

namespace karvel {

void confineLibrarySearch() {
  const auto setDirectories =
      findFunction<BOOL WINAPI(DWORD)>(L"kernel32.dll", "SetDefaultDllDirectories");
  if (setDirectories == nullptr) return;
  // Input methods name folders of their own.
  setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_USER_DIRS);
}

}  // namespace karvel
