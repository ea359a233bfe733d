#include "selftest/windows/ftp_probe.h"

namespace karvel {

FtpProbe::FtpProbe(std::chrono::milliseconds limit, const char* host)
    : limit_(limit),
      server_(std::make_unique<ScriptedFtpServer>(host)),
      account_{host, server_->port(), ScriptedFtpServer::kUser, ScriptedFtpServer::kPassword} {
}

bool FtpProbe::connect(std::uint32_t flags) {
  const auto milliseconds = static_cast<std::uint32_t>(limit_.count());
  root_ = internet_.open();
  internet_.setOption(root_, Internet::kOptionReceiveTimeout, milliseconds);
  internet_.setOption(root_, Internet::kOptionConnectTimeout, milliseconds);
  session_ = internet_.connect(root_, account_, Internet::kFlagAsync | flags);
  return session_ != 0;
}

void FtpProbe::disconnect() {
  static_cast<void>(internet_.close(session_));
  static_cast<void>(internet_.close(root_));
}

std::string FtpProbe::list() {
  Internet::FindData entry;
  const Internet::Handle find = internet_.findFirst(session_, "*.*", entry);
  if (find == 0) return failureOf(internet_);
  std::string names = entry.name;
  while (internet_.findNext(find, entry)) names += ", " + entry.name;
  static_cast<void>(internet_.close(find));
  return names;
}

std::string joined(const std::vector<std::string>& commands) {
  std::string text;
  for (const std::string& command : commands) text += (text.empty() ? "" : " | ") + command;
  return text;
}

std::string failureOf(Internet& internet) {
  const auto number = internet.lastError();
  std::string text = "エラー" + std::to_string(number);
  if (number == Internet::kErrorExtended) text += " 「" + internet.lastResponse().text + "」";
  return text;
}

}  // namespace karvel
