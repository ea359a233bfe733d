#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/inspection.h"
#include "platform/internet.h"

namespace karvel {

/// An internet library whose calls are noted: what each did, how long it took and what the server
/// said to it. Before it connects it looks the host up, afterwards it asks what the server offers.
class WatchedInternet final : public Internet {
 public:
  enum class Step : std::uint8_t { kConnect, kFolder, kList, kPut, kRename, kDelete };

  struct Call {
    Step step;
    std::string name;       ///< of the folder or file, as it went to the server
    ErrorNumber error = 0;  ///< 0: it succeeded
    std::string replies;    ///< the server's bytes
    std::chrono::milliseconds time{0};
    bool listed = false;  ///< kFolder: the last listing has a folder of exactly this name
  };

  WatchedInternet(Internet& library, Inspection& inspection)
      : library_(library), inspection_(inspection) {}

  std::vector<Call> calls;
  Account account;  ///< of the last connect
  std::vector<std::string> addresses;
  std::chrono::milliseconds lookupTime{0};
  std::optional<std::string> offered;  ///< the server's features
  std::vector<std::string> names;      ///< of all entries listed, in the server's bytes

  Handle open() override { return library_.open(); }
  bool setOption(Handle root, std::uint32_t option, std::uint32_t milliseconds) override {
    return library_.setOption(root, option, milliseconds);
  }
  Handle connect(Handle root, const Account& account, std::uint32_t flags) override;
  bool close(Handle handle) override { return library_.close(handle); }
  std::optional<std::string> currentDirectory(Handle session) override {
    return library_.currentDirectory(session);
  }
  bool setCurrentDirectory(Handle session, const std::string& folder) override;
  bool putFile(Handle session, const std::string& localPath, const std::string& remoteName,
               std::uint32_t transferType) override;
  bool renameFile(Handle session, const std::string& from, const std::string& to) override;
  bool deleteFile(Handle session, const std::string& remoteName) override;
  Handle findFirst(Handle session, const std::string& pattern, FindData& entry) override;
  bool findNext(Handle find, FindData& entry) override;
  ErrorNumber lastError() override { return lastError_; }
  Response lastResponse() override { return response_; }
  std::string lastReplies() override { return library_.lastReplies(); }
  std::optional<std::string> features(Handle session) override {
    return library_.features(session);
  }
  std::string systemMessage(ErrorNumber number) override { return library_.systemMessage(number); }

 private:
  void note(const FindData& entry);
  bool noted(Step step, const std::string& name, const std::function<bool()>& call);

  Internet& library_;
  Inspection& inspection_;
  ErrorNumber lastError_ = 0;  ///< kept, as are the words: looking on must not change them
  Response response_;
  std::vector<std::string> folders_;  ///< of the last listing
};

}  // namespace karvel
