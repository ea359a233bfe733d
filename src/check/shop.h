#pragma once

#include <string>

#include "check/unchanging_ports.h"
#include "check/watched_internet.h"
#include "platform/files.h"
#include "platform/inspection.h"
#include "store/run_log.h"
#include "store/settings_store.h"
#include "ui/ftp_form.h"

namespace karvel {

/// A shop as a rehearsed start has found it. Settings, panel and log work on unchanging ports.
struct Shop {
  std::string folder;     ///< the program's, without a separator at its end
  bool resident = false;  ///< a start would stay resident
  bool probe = false;     ///< something may be sent

  Files& files;  ///< the real ones
  Clock& clock;
  Inspection& inspection;
  UnchangingFiles& unchanging;
  WatchedInternet& internet;
  IniRedWrt& settings;
  RunLog& log;
  FtpForm& form;
};

}  // namespace karvel
