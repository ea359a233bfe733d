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
  std::uint32_t transferType = 0;  ///< of the last upload
  std::string current = "/";
  std::string replies;                 ///< of the server, after every call
  std::optional<std::string> offered;  ///< its features
  int openHandles = 0;

  Handle open() override { return newHandle("open"); }
  bool setOption(Handle, std::uint32_t option, std::uint32_t milliseconds) override {
    options[option] = milliseconds;
    return true;
  }
  Handle connect(Handle, const Account& who, std::uint32_t flags) override {
    account = who;
    connectFlags = flags;
    current = "/";
    return newHandle("connect");
  }
  bool close(Handle) override {
    return attempt("close", [this] { return openHandles-- > 0; });
  }
  std::optional<std::string> currentDirectory(Handle) override {
    return done("pwd") ? std::optional(current) : std::nullopt;
  }
  bool setCurrentDirectory(Handle, const std::string& folder) override {
    return attempt("cd " + folder, [&] {
      const std::string target = (current == "/" ? current : current + "/") + folder;
      if (!folders.contains(target)) return fail({kErrorExtended, "550 no such folder"});
      current = target;
      return true;
    });
  }
  bool putFile(Handle, const std::string& localPath, const std::string& remoteName,
               std::uint32_t type) override {
    transferType = type;
    return attempt("put " + remoteName, [&] {
      const auto content = files_.contentOf(localPath);
      if (!content) return fail({kErrorFileNotFound});
      folders[current][remoteName] = *content;
      return true;
    });
  }
  bool renameFile(Handle, const std::string& from, const std::string& to) override {
    return attempt("rename " + from + " " + to, [&] {
      auto node = folders[current].extract(from);
      if (!node) return fail({kErrorExtended, "550 no such file"});
      node.key() = to;
      folders[current].insert(std::move(node));
      return true;
    });
  }
  bool deleteFile(Handle, const std::string& remoteName) override {
    return attempt("delete " + remoteName, [&] { return folders[current].erase(remoteName) > 0; });
  }
  Handle findFirst(Handle, const std::string&, FindData& entry) override {
    const Handle find = newHandle("list");
    found_ = listing();
    nextFound_ = 0;
    if (find == 0 || takeFound(entry)) return find;
    --openHandles;
    return 0;
  }
  bool findNext(Handle, FindData& entry) override { return done("next") && takeFound(entry); }
  ErrorNumber lastError() override { return failure_.number; }
  Response lastResponse() override { return {failure_.responseNumber, failure_.response}; }
  std::string lastReplies() override { return replies; }
  std::optional<std::string> features(Handle) override { return offered; }
  std::string systemMessage(ErrorNumber number) override {
    return number == 5 ? "アクセスが拒否されました。" : "";
  }

 private:
  /// Notes the call and, unless it is to fail, does it.
  bool attempt(const std::string& call, const std::function<bool()>& action) {
    calls.push_back(call);
    const auto failure = fault ? fault(call) : std::nullopt;
    if (!failure) return action();
    failure_ = *failure;
    return failure->number == 0;
  }
  /// The same for a call whose success has an effect always.
  bool done(const std::string& call) {
    bool done = false;
    attempt(call, [&done] { return done = true; });
    return done;
  }
  bool fail(const Failure& failure) {
    failure_ = failure;
    return false;
  }
  Handle newHandle(const std::string& call) {
    if (!done(call)) return 0;
    ++openHandles;
    return ++lastHandle_;
  }
  [[nodiscard]] std::vector<FindData> listing() const {
    std::vector<FindData> entries = extraEntries;
    const std::string prefix = current == "/" ? current : current + "/";
    for (const auto& [path, files] : folders) {
      if (path == "/" || !path.starts_with(prefix)) continue;
      const std::string name = path.substr(prefix.size());
      if (name.find('/') == std::string::npos) entries.push_back({name, true, 0, {}});
    }
    for (const auto& [name, content] : folders.at(current)) {
      entries.push_back({name, false, content.size(), {}});
    }
    return entries;
  }
  bool takeFound(FindData& entry) {
    if (nextFound_ >= found_.size()) return fail({kErrorNoMoreFiles});
    entry = found_[nextFound_++];
    return true;
  }

  FakeFiles& files_;
  Failure failure_;
  std::vector<FindData> found_;
  std::size_t nextFound_ = 0;
  Handle lastHandle_ = 0;
};

}  // namespace karvel
