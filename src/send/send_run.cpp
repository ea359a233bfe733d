#include "send/send_run.h"

namespace karvel {
namespace {

constexpr int kRetryTicks = 150;  // five minutes
constexpr const char* kLineBreak = "\r\n";

}  // namespace

SendRun::SendRun(FtpForm& form, StatisticsExport& statistics, FtpSite& site,
                 SendSettings& sendSettings, IniRedWrt& settings, RunLog& log, Desktop& desktop)
    : form_(form),
      statistics_(statistics),
      site_(site),
      sendSettings_(sendSettings),
      settings_(settings),
      log_(log),
      desktop_(desktop) {
}

void SendRun::Snd(SendMode mode) {
  log_.WriteLog("HS-FTP:------------------------ Snd Start");
  form_.MsgLabel.setCaption("");
  if (form_.destinationIs(FtpForm::Destination::kOutputFolder)) {
    sendToFolder(mode);
  } else {
    site_.createSession();
    sendToSite(mode);
    site_.releaseSession();
  }
  log_.WriteLog("HS-FTP:------------------------ Snd Exit");
}

void SendRun::sendToFolder(SendMode mode) {
  if (statistics_.Make_Csv2Send()) {
    succeeded(mode, "FTP CHKC");
  } else {
    transferFailed(mode, "");
  }
}

void SendRun::sendToSite(SendMode mode) {
  if (!site_.Ftp_Open()) {
    connectionFailed(mode);
    return;
  }
  const bool sent = statistics_.Make_Csv2Send();
  site_.CloseSession();
  if (sent) {
    succeeded(mode, "FTP CHKF");
  } else {
    transferFailed(mode, "設定より接続確認を行って下さい。　");
  }
}

void SendRun::succeeded(SendMode mode, const char* reachedFlag) {
  settings_.writeOwn(reachedFlag, "1");
  if (mode != SendMode::kUnattended) {
    form_.MsgLabel.setCaption(mode == SendMode::kConnectionTest ? "接続完了" : "転送完了");
    // A save that finds the panel incomplete takes the flag back.
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
