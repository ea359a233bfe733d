#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "desktop/desktop_user.h"
#include "desktop/sample_form.h"

namespace karvel {

/// A desktop of its own for each test, and someone who uses it.
class DesktopTest : public ::testing::Test {
 protected:
  // Without one, forms stay data and what waits for the user would wait for ever.
  void SetUp() override { ASSERT_TRUE(desktop_->hasDisplay()); }
  void TearDown() override {
    for (Form* form : shown_) desktop_->release(*form);
  }

  void show(Form& form) {
    shown_.push_back(&form);
    desktop_->bind(form);
    form.setVisible(true);
    desktop_->processPendingMessages();
  }

  Widget widget(const char* name, int index = ControlRow::kNoIndex) const {
    return User::widget(form_, form_.control(name, index));
  }
  Widget field(int index) const { return widget("Text1", index); }
  Widget button(int index) const { return widget("Button", index); }
  Widget window() const { return User::window(form_); }
  Control& text(int index) { return form_.control("Text1", index); }

  /// The index of each control of that name goes there as it is clicked.
  void logClicks(std::string_view name, std::string& clicks) {
    for (const auto& control : form_.controls()) {
      const ControlRow& row = control->row();
      if (row.name == name) control->onClick = [&] { clicks += std::to_string(row.index); };
    }
  }

  void wait(std::chrono::milliseconds duration) {
    const auto end = std::chrono::steady_clock::now() + duration;
    while (std::chrono::steady_clock::now() < end) {
      desktop_->processPendingMessages();
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }

  const std::unique_ptr<Desktop> desktop_ = makeDesktop();
  User user_{*desktop_};
  Form form_{kSampleTable};

 private:
  std::vector<Form*> shown_;
};

/// The sample form is on the screen.
class ShownForm : public DesktopTest {
 protected:
  ShownForm() { show(form_); }
};

}  // namespace karvel
