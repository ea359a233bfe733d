#include "platform/linux/desktop/qt_display.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>

namespace karvel {
namespace {

using Variables = std::map<std::string, std::string>;

/// Puts other variables in the place of those that name a display; what was there before.
Variables exchange(const Variables& wanted) {
  Variables before;
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR", "QT_QPA_PLATFORM"}) {
    if (const char* value = std::getenv(name)) before[name] = value;
    unsetenv(name);
  }
  for (const auto& [name, value] : wanted) setenv(name.c_str(), value.c_str(), 1);
  return before;
}

TEST(Display, IsThereOnlyWhenItAnswers) {
  const std::pair<Variables, bool> cases[] = {
      {{}, false},
      {{{"DISPLAY", "nonsense"}}, false},
      {{{"DISPLAY", ":4711"}, {"QT_QPA_PLATFORM", "xcb"}}, false},
      {{{"WAYLAND_DISPLAY", "wayland-4711"}}, false},
      {{{"WAYLAND_DISPLAY", std::string(500, 'x')}, {"XDG_RUNTIME_DIR", "/"}}, false},
      {{{"WAYLAND_DISPLAY", "/nonexistent"}, {"QT_QPA_PLATFORM", "wayland"}}, false},
      {{{"DISPLAY", ":4711"}, {"QT_QPA_PLATFORM", "offscreen"}}, true},
  };
  for (const auto& [variables, expected] : cases) {
    const Variables before = exchange(variables);
    EXPECT_EQ(findDisplay(), expected) << ::testing::PrintToString(variables);
    exchange(before);
  }
}

}  // namespace
}  // namespace karvel
