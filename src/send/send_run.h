#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "ftp/site_session.h"
#include "platform/desktop.h"
#include "send/folder_delivery.h"
#include "send/send_settings.h"
#include "send/statistics_export.h"
#include "store/run_log.h"
#include "ui/ftp_form.h"

namespace karvel {

/// How a send run was started, as a number: 0, and the indexes of the panel's two buttons.
enum class SendMode : std::int16_t {
  kUnattended,
  kManual = FtpForm::Command::kSend,
  kConnectionTest = FtpForm::Command::kTest,
};

/// One send run from start to end. Every transfer of the program goes through it.
class SendRun {
 public:
  SendRun(FtpForm& form, StatisticsExport& statistics, FolderDelivery& folder, FtpSite& site,
          SendSettings& sendSettings, RunLog& log, Desktop& desktop);

  /// Shows the failure icon (true) or the normal one in the notification area.
  std::function<void(bool failed)> Task_SetIcon;

  /// Delivers to the destination chosen on the panel and reports the outcome on the status line,
  /// in the icon, in the flag of the reached destination, in the tick counter and, on every second
  /// failure in a row of unattended runs, in a message box.
  void Snd(SendMode mode);

 private:
  void sendToFolder(SendMode mode);
  void sendToSite(SendMode mode);
  void succeeded(SendMode mode, const OwnKey& reachedFlag);
  void connectionFailed(SendMode mode);
  void transferFailed(SendMode mode, const std::string& secondLine);
  void scheduleRetry();
  void showFailure(const std::string& text);
  void setIcon(bool failed);

  FtpForm& form_;
  StatisticsExport& statistics_;
  FolderDelivery& folder_;
  FtpSite& site_;
  SendSettings& sendSettings_;
  RunLog& log_;
  Desktop& desktop_;
};

}  // namespace karvel
