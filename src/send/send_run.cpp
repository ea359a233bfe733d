#include "send/send_run.h"

namespace karvel {
namespace {

constexpr int kRetryTicks = 150;  // five minutes
constexpr const char* kLineBreak = "\r\n";

/// Delivery into the current folder of an open session.
class SiteDelivery final : public Delivery {
 public:
  explicit SiteDelivery(SiteSession& session) : session_(session) {}

  bool putFile(const std::string& folder, const std::string& name) override {
    return session_.Ftp_PutFile(folder, name);
  }
  void removeFile(const std::string& name) override { session_.Ftp_DeleteListed(name); }

 private:
  SiteSession& session_;
};

}  // namespace

SendRun::SendRun(FtpForm& form, StatisticsExport& statistics, FolderDelivery& folder, FtpSite& site,
                 SendSettings& sendSettings, RunLog& log, Desktop& desktop)
    : form_(form),
      statistics_(statistics),
      folder_(folder),
      site_(site),
      sendSettings_(sendSettings),
      log_(log),
      desktop_(desktop) {
}

void SendRun::Snd(SendMode mode) {
  log_.WriteLog("HS-FTP:------------------------ Snd Start");
  form_.MsgLabel.setCaption("");
  if (form_.destination() == FtpForm::Destination::kOutputFolder) {
    sendToFolder(mode);
  } else {
    sendToSite(mode);
  }
  log_.WriteLog("HS-FTP:------------------------ Snd Exit");
}

void SendRun::sendToFolder(SendMode mode) {
  if (statistics_.Make_Csv2Send(folder_)) {
    succeeded(mode, own::kFolderReached);
  } else {
    transferFailed(mode, "");
  }
}

void SendRun::sendToSite(SendMode mode) {
  SiteSession session(site_);
  if (!session.Ftp_Open()) {
    connectionFailed(mode);
    return;
  }
  SiteDelivery delivery(session);
  const bool sent = statistics_.Make_Csv2Send(delivery);
  session.CloseSession();
  if (sent) {
    succeeded(mode, own::kSiteReached);
  } else {
    transferFailed(mode, "設定より接続確認を行って下さい。　");
  }
}

void SendRun::succeeded(SendMode mode, const OwnKey& reachedFlag) {
  sendSettings_.confirm(reachedFlag);
  if (mode != SendMode::kUnattended) {
    form_.MsgLabel.setCaption(mode == SendMode::kConnectionTest ? "接続完了" : "転送完了");
    // After the flag is set: saving an incomplete panel withdraws it.
    sendSettings_.Save_FtpInfo();
  }
  setIcon(false);
  form_.TimerCount = 0;
  form_.SndNG = false;
}

void SendRun::connectionFailed(SendMode mode) {
  if (mode == SendMode::kConnectionTest) {
    form_.MsgLabel.setCaption("接続できませんでした");
  } else if (form_.SndNG) {
    showFailure(std::string("接続できませんでした。　　") + kLineBreak +
                "ﾈｯﾄﾜｰｸ管理者にご相談下さい。　");
    return;
  }
  scheduleRetry();
}

void SendRun::transferFailed(SendMode mode, const std::string& secondLine) {
  if (mode == SendMode::kConnectionTest) {
    form_.MsgLabel.setCaption("接続できませんでした");
  } else if (mode == SendMode::kManual) {
    form_.MsgLabel.setCaption("転送できませんでした");
  } else if (form_.SndNG) {
    showFailure(std::string("転送できませんでした。　　") + kLineBreak + secondLine);
    return;
  }
  scheduleRetry();
}

void SendRun::scheduleRetry() {
  setIcon(true);
  form_.SndNG = true;
  form_.lowerTimerCount(kRetryTicks);
}

void SendRun::showFailure(const std::string& text) {
  form_.SndNG = false;
  form_.TimerCount = 0;
  desktop_.messageBox(form_, form_.caption(), text);
}

void SendRun::setIcon(bool failed) {
  if (form_.windowState() == WindowState::kMinimized && Task_SetIcon) Task_SetIcon(failed);
}

}  // namespace karvel
