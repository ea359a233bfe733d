#include "platform/linux/desktop/qt_display.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace karvel {
namespace {

/// The environment as a test wants it; as it was when the test is over.
class Environment {
 public:
  explicit Environment(const std::map<std::string, std::string>& wanted) {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR", "QT_QPA_PLATFORM"}) {
      const char* value = std::getenv(name);
      before_[name] = value == nullptr ? std::nullopt : std::optional<std::string>(value);
      unsetenv(name);
    }
    for (const auto& [name, value] : wanted) setenv(name.c_str(), value.c_str(), 1);
  }
  ~Environment() {
    for (const auto& [name, value] : before_) {
      unsetenv(name.c_str());
      if (value) setenv(name.c_str(), value->c_str(), 1);
    }
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  std::map<std::string, std::optional<std::string>> before_;
};

TEST(Display, IsThereOnlyWhenItAnswers) {
  using Variables = std::map<std::string, std::string>;
  const std::pair<Variables, bool> cases[] = {
      {{}, false},
      {{{"DISPLAY", ""}}, false},
      {{{"DISPLAY", "nonsense"}}, false},
      {{{"DISPLAY", ":4711"}}, false},
      {{{"DISPLAY", ":4711"}, {"QT_QPA_PLATFORM", "xcb"}}, false},
      {{{"WAYLAND_DISPLAY", "wayland-4711"}}, false},
      {{{"WAYLAND_DISPLAY", "wayland-4711"}, {"XDG_RUNTIME_DIR", "/nonexistent"}}, false},
      {{{"WAYLAND_DISPLAY", std::string(500, 'x')}, {"XDG_RUNTIME_DIR", "/"}}, false},
      {{{"WAYLAND_DISPLAY", "/nonexistent"}, {"QT_QPA_PLATFORM", "wayland"}}, false},
      {{{"QT_QPA_PLATFORM", "offscreen"}}, true},
      {{{"DISPLAY", ":4711"}, {"QT_QPA_PLATFORM", "offscreen"}}, true},
  };
  for (const auto& [variables, expected] : cases) {
    std::string description;
    for (const auto& [name, value] : variables) description.append(name + "=" + value + " ");
    SCOPED_TRACE(description);
    const Environment environment(variables);
    EXPECT_EQ(findDisplay(), expected);
  }
}

}  // namespace
}  // namespace karvel
