#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "contract/make_internet.h"
#include "contract/scratch_folder.h"
#include "fakes/scripted_ftp_server.h"
#include "platform/internet.h"

namespace karvel {

/// The platform's internet library, opened, beside a scripted server.
class InternetTest : public ::testing::Test {
 protected:
  using Handle = Internet::Handle;
  using Names = std::vector<std::string>;

  explicit InternetTest(ScriptedFtpServer::Options options = {}) : server_(std::move(options)) {}

  [[nodiscard]] Internet::Account account() const;
  /// Logs in, as a passive session unless told otherwise.
  Handle connect(std::uint32_t flags = Internet::kFlagPassive);
  /// Sets both time limits of the library.
  void setTimeLimits(std::uint32_t milliseconds);

  /// A local file with that content; its path.
  std::string localFile(const std::string& content);
  bool put(Handle session, const std::string& content, const std::string& remoteName,
           std::uint32_t type = Internet::kTransferBinary);
  /// The names of the current folder.
  Names list(Handle session);

  ScriptedFtpServer server_;
  ScratchFolder folder_;
  std::unique_ptr<Internet> internet_ = makeInternet();
  Handle root_ = internet_->open();
};

}  // namespace karvel
