#include <cstdio>

#include "app/program.h"

namespace {

/// A start that is there to show a window is of no use without a display.
bool needsDisplay(const std::string& commandLine) {
  return commandLine == karvel::StartUp::kShowPanel ||
         commandLine == karvel::StartUp::kShowGroupDialog;
}

}  // namespace

int main(int argc, char** argv) {
  karvel::Platform platform = karvel::makePlatform(argc, argv);
  if (needsDisplay(platform.commandLine) && !platform.desktop->hasDisplay()) {
    std::fputs("karvel: 画面がないため設定を表示できません。\n", stderr);
    return 1;
  }
  return karvel::Program(platform).run();
}
