#include "shell/window_lifecycle.h"

#include <utility>

namespace karvel {
namespace {

constexpr const char* kTip = "るりはなリンク集計管理";
constexpr std::chrono::seconds kEndPause{1};
constexpr int kEndPauses = 2;

}  // namespace

WindowLifecycle::WindowLifecycle(FtpForm& form, Desktop& desktop, Files& files, Clock& clock,
                                 std::string programFolder)
    : form_(form),
      desktop_(desktop),
      files_(files),
      clock_(clock),
      programFolder_(std::move(programFolder)) {
}

void WindowLifecycle::Task_Add() {
  desktop_.addTrayIcon(form_, TrayImage::kNormal, kTip, [this] { Task_PopMenu(); });
  form_.setVisible(false);
  form_.setCaption("");
}

void WindowLifecycle::Task_Remove() {
  form_.setWindowState(WindowState::kNormal);
  desktop_.removeTrayIcon();
  form_.setVisible(true);
  form_.setCaption(form_.table().caption);
  desktop_.processPendingMessages();
}

void WindowLifecycle::Task_SetIcon(bool failed) {
  if (form_.visible()) return;
  desktop_.changeTrayIcon(failed ? TrayImage::kFailure : TrayImage::kNormal, kTip);
}

void WindowLifecycle::Task_PopMenu() {
  desktop_.bringToForeground(form_);
  desktop_.popupMenu(form_, form_.MyMenu_Task);
}

void WindowLifecycle::unloadMainForm() {
  // Messages are processed meanwhile, among which may be another wish to close, or a click on the
  // panel that shows for a moment.
  if (!form_.takesInput()) return;
  form_.stopInput();
  Form_QueryUnload();
  form_.markClosed();
  Form_Terminate();
}

void WindowLifecycle::Form_QueryUnload() {
  form_.Timer1->setEnabled(false);
  if (form_.windowState() == WindowState::kMinimized) Task_Remove();
}

void WindowLifecycle::Form_Resize() {
  if (form_.windowState() != WindowState::kMinimized) return;
  form_.Timer1->setEnabled(true);
  Task_Add();
}

void WindowLifecycle::Form_Terminate() {
  form_.Timer1->setEnabled(false);
  for (int i = 0; i < kEndPauses; ++i) {
    clock_.sleep(kEndPause);
    desktop_.processPendingMessages();
  }
  deleteWorkFiles();
  desktop_.quit();
}

void WindowLifecycle::deleteWorkFiles() {
  files_.removeMatching(programFolder_, "*.txt");
}

void WindowLifecycle::Form_KeyDown(int shift) {
  form_.ShiftState = static_cast<std::int16_t>(shift);
}

void WindowLifecycle::MyMenu_Init_Click() {
  form_.Timer1->setEnabled(false);
  if (form_.windowState() == WindowState::kMinimized) Task_Remove();
}

}  // namespace karvel
