#include "contract/internet_fixture.h"

namespace karvel {

Internet::Account InternetTest::account() const {
  const bool ipv6 = server_.options().host == TestSocket::Host::kIpv6;
  return {ipv6 ? "::1" : "127.0.0.1", server_.port(), server_.options().user,
          server_.options().password};
}

Internet::Handle InternetTest::connect(std::uint32_t flags) {
  return internet_->connect(root_, account(), flags);
}

void InternetTest::setTimeLimits(std::uint32_t milliseconds) {
  internet_->setOption(root_, Internet::kOptionConnectTimeout, milliseconds);
  internet_->setOption(root_, Internet::kOptionReceiveTimeout, milliseconds);
}

std::string InternetTest::localFile(const std::string& content) {
  return folder_.add("upload.bin", content);
}

bool InternetTest::put(Handle session, const std::string& content, const std::string& remoteName,
                       std::uint32_t type) {
  return internet_->putFile(session, localFile(content), remoteName, type);
}

InternetTest::Names InternetTest::list(Handle session) {
  Names names;
  Internet::FindData entry;
  const Handle find = internet_->findFirst(session, "*.*", entry);
  bool found = find != 0;
  while (found) {
    names.push_back(entry.name);
    found = internet_->findNext(find, entry);
  }
  EXPECT_EQ(internet_->close(find), find != 0);
  return names;
}

}  // namespace karvel
