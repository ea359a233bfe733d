#pragma once

#include "ftp/site_session.h"
#include "platform/platform.h"
#include "send/folder_delivery.h"
#include "send/panel_commands.h"
#include "send/send_run.h"
#include "send/send_settings.h"
#include "send/shop_info.h"
#include "send/statistics_export.h"
#include "shell/scheduler.h"
#include "shell/start_up.h"
#include "shell/window_lifecycle.h"
#include "stats/desk_reader.h"
#include "stats/statistics_table.h"
#include "store/run_log.h"
#include "store/settings_store.h"
#include "ui/ftp_form.h"

namespace karvel {

/// The whole program: builds every room on the platform and connects events to their handlers.
class Program {
 public:
  explicit Program(Platform& platform);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// Starts, runs until the program ends, and gives its exit status.
  int run();

  /// The first half of run(), for a caller with a message loop of its own.
  [[nodiscard]] StartOutcome start() { return startUp_.Form_Load(platform_.commandLine); }
  [[nodiscard]] FtpForm& mainForm() { return form_; }

 private:
  void wire();

  Platform& platform_;
  IniRedWrt settings_;
  RunLog log_;
  FtpForm form_;
  DeskReader desks_;
  StatisticsTable table_;
  FtpSite site_;
  FolderDelivery folder_;
  ShopInfo shopInfo_;
  StatisticsExport export_;
  SendSettings sendSettings_;
  SendRun sendRun_;
  PanelCommands commands_;
  WindowLifecycle window_;
  Scheduler scheduler_;
  StartUp startUp_;
};

}  // namespace karvel
