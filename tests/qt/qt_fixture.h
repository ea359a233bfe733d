#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <string>
#include <vector>

#include "platform/form.h"
#include "platform/linux/qt_desktop.h"

namespace karvel {

inline QString widgetName(const std::string& name, int index) {
  return QString::fromStdString(name) + (index < 0 ? QString() : QString::number(index));
}

/// A desktop of its own for each test.
class QtFixture : public ::testing::Test {
 protected:
  /// The window of the form of that name, or nullptr.
  static QWidget* window(const char* name) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == QLatin1String(name)) return widget;
    }
    return nullptr;
  }

  /// The widget of a control; the form must have been shown.
  template <class Widget>
  static Widget* find(const Form& form, const std::string& name, int index = -1) {
    QWidget* parent = window(form.table().name);
    return parent == nullptr ? nullptr : parent->findChild<Widget*>(widgetName(name, index));
  }

  void TearDown() override {
    for (Form* form : shown_) desktop_.release(*form);
  }

  void show(Form& form) {
    shown_.push_back(&form);
    desktop_.bind(form);
    form.setVisible(true);
    desktop_.processPendingMessages();
  }

  /// Runs `action` inside the next message loop.
  template <class Action>
  static void soon(Action action) {
    QTimer::singleShot(0, qApp, action);
  }

  QtDesktop desktop_;

 private:
  std::vector<Form*> shown_;
};

}  // namespace karvel
