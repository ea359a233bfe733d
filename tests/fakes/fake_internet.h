#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "fakes/fake_files.h"
#include "platform/internet.h"

namespace karvel {

/// An FTP server in memory, seen through the internet library. Names are bytes as in the port.
class FakeInternet final : public Internet {
 public:
  struct Failure {
    ErrorNumber number = 0;  ///< 0: the call succeeds but has no effect
    std::string response{};  ///< the server's text, for kErrorExtended
    ErrorNumber responseNumber = kErrorExtended;
  };
  using Folder = std::map<std::string, std::string>;  ///< names and contents of its files

  explicit FakeInternet(FakeFiles& files) : files_(files) {}

  std::map<std::string, Folder> folders{{"/", {}}};  ///< by path from the root, without a last "/"
  std::vector<FindData> extraEntries;                ///< listed in every folder in front of its own
  /// Asked before each call, with its words ("put name.xxx"); an answer makes it fail so.
  std::function<std::optional<Failure>(const std::string& call)> fault;
  std::vector<std::string> calls;
  std::map<std::uint32_t, std::uint32_t> options;
  Account account;
  std::uint32_t connectFlags = 0;
  std::map<std::string, std::uint32_t> transferTypes;  ///< of the files put, by remote name
  std::string current = "/";
  std::string replies;                 ///< of the server, after every call
  std::optional<std::string> offered;  ///< its features
  int openHandles = 0;

  Handle open() override { return newHandle("open"); }
  bool setOption(Handle root, std::uint32_t option, std::uint32_t milliseconds) override;
  Handle connect(Handle root, const Account& account, std::uint32_t flags) override;
  bool close(Handle handle) override;
  std::optional<std::string> currentDirectory(Handle session) override;
  bool setCurrentDirectory(Handle session, const std::string& folder) override;
  bool putFile(Handle session, const std::string& localPath, const std::string& remoteName,
               std::uint32_t transferType) override;
  bool renameFile(Handle session, const std::string& from, const std::string& to) override;
  bool deleteFile(Handle session, const std::string& remoteName) override;
  Handle findFirst(Handle session, const std::string& pattern, FindData& entry) override;
  bool findNext(Handle find, FindData& entry) override;
  ErrorNumber lastError() override { return failure_.number; }
  Response lastResponse() override { return {failure_.responseNumber, failure_.response}; }
  std::string lastReplies() override { return replies; }
  std::optional<std::string> features(Handle) override { return offered; }
  std::string systemMessage(ErrorNumber number) override;

 private:
  /// Notes the call and, unless it is to fail, does it.
  bool attempt(const std::string& call, const std::function<bool()>& action);
  /// The same for a call whose success has an effect always.
  bool done(const std::string& call);
  bool fail(const Failure& failure);
  Handle newHandle(const std::string& call);
  bool takeFound(FindData& entry);
  [[nodiscard]] std::vector<FindData> listing() const;

  FakeFiles& files_;
  Failure failure_;
  std::vector<FindData> found_;
  std::size_t nextFound_ = 0;
  Handle lastHandle_ = 0;
};

}  // namespace karvel
