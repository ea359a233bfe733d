#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "contract/ports.h"
#include "contract/scratch_folder.h"
#include "fakes/scripted_ftp_server.h"

namespace karvel {

/// The platform's internet library, opened, beside a scripted server.
class InternetTest : public ::testing::Test {
 protected:
  using Handle = Internet::Handle;
  using ErrorNumber = Internet::ErrorNumber;
  using Names = std::vector<std::string>;
  using Files = ScriptedFtpServer::Files;

  explicit InternetTest(const char* host = TestSocket::kIpv4) : server_(host) {}

  [[nodiscard]] Internet::Account account() const {
    return {server_.host(), server_.port(), ScriptedFtpServer::kUser, ScriptedFtpServer::kPassword};
  }
  /// Logs in, as a passive session unless told otherwise.
  Handle connect(std::uint32_t flags = Internet::kFlagPassive) {
    return internet_->connect(root_, account(), flags);
  }

  /// The number that a call has failed with; 0 when it has not.
  [[nodiscard]] ErrorNumber errorOf(bool succeeded) {
    return succeeded ? 0 : internet_->lastError();
  }

  /// Uploads a file with that content.
  bool put(Handle session, const std::string& content, const std::string& remoteName,
           std::uint32_t type = Internet::kTransferBinary) {
    return internet_->putFile(session, folder_.add("upload.bin", content), remoteName, type);
  }
  /// The names of the current folder.
  Names list(Handle session) {
    Names names;
    const Handle find = internet_->findFirst(session, "*.*", entry_);
    for (bool found = find != 0; found; found = internet_->findNext(find, entry_)) {
      names.push_back(entry_.name);
    }
    EXPECT_EQ(internet_->close(find), find != 0);
    return names;
  }

  ScriptedFtpServer server_;
  ScratchFolder folder_{"한글 😀"};  ///< of a name that code page 932 lacks
  std::unique_ptr<Internet> internet_ = makeInternet();
  Handle root_ = internet_->open();
  Internet::FindData entry_;  ///< found last
};

}  // namespace karvel
