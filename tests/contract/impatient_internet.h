#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

#include "platform/internet.h"

namespace karvel {

/// An internet library whose time limits are shorter than its user asks for, so that a test need
/// not wait as long as a shop would.
class ImpatientInternet final : public Internet {
 public:
  explicit ImpatientInternet(std::unique_ptr<Internet> library) : library_(std::move(library)) {}

  /// The longest limit, in milliseconds, of the roots that are opened from now on.
  std::uint32_t longestLimit = UINT32_MAX;

  Handle open() override { return library_->open(); }
  bool setOption(Handle root, std::uint32_t option, std::uint32_t milliseconds) override {
    return library_->setOption(root, option, std::min(milliseconds, longestLimit));
  }
  Handle connect(Handle root, const Account& account, std::uint32_t flags) override {
    return library_->connect(root, account, flags);
  }
  bool close(Handle handle) override { return library_->close(handle); }
  std::optional<std::string> currentDirectory(Handle session) override {
    return library_->currentDirectory(session);
  }
  bool setCurrentDirectory(Handle session, const std::string& folder) override {
    return library_->setCurrentDirectory(session, folder);
  }
  bool putFile(Handle session, const std::string& localPath, const std::string& remoteName,
               std::uint32_t transferType) override {
    return library_->putFile(session, localPath, remoteName, transferType);
  }
  bool renameFile(Handle session, const std::string& from, const std::string& to) override {
    return library_->renameFile(session, from, to);
  }
  bool deleteFile(Handle session, const std::string& remoteName) override {
    return library_->deleteFile(session, remoteName);
  }
  Handle findFirst(Handle session, const std::string& pattern, FindData& entry) override {
    return library_->findFirst(session, pattern, entry);
  }
  bool findNext(Handle find, FindData& entry) override { return library_->findNext(find, entry); }
  ErrorNumber lastError() override { return library_->lastError(); }
  Response lastResponse() override { return library_->lastResponse(); }
  std::string systemMessage(ErrorNumber number) override { return library_->systemMessage(number); }

 private:
  std::unique_ptr<Internet> library_;
};

}  // namespace karvel
