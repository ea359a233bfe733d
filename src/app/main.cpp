#include <cstdio>
#include <utility>

#include "app/headless_desktop.h"
#include "app/program.h"

namespace {

/// These starts only show a window.
bool needsDisplay(const std::string& commandLine) {
  return commandLine == karvel::StartUp::kShowPanel ||
         commandLine == karvel::StartUp::kShowGroupDialog;
}

}  // namespace

int main(int argc, char** argv) {
  karvel::Platform platform = karvel::makePlatform(argc, argv);
  if (!platform.desktop->hasDisplay()) {
    if (needsDisplay(platform.commandLine)) {
      std::fputs("karvel: 画面がないため設定を表示できません。\n", stderr);
      return 1;
    }
    platform.desktop = std::make_unique<karvel::HeadlessDesktop>(std::move(platform.desktop));
  }
  return karvel::Program(platform).run();
}
