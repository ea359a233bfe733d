#include "fakes/fake_internet.h"

namespace karvel {

bool FakeInternet::begin(const std::string& call, bool& result) {
  calls.push_back(call);
  result = true;
  const auto failure = fault ? fault(call) : std::nullopt;
  if (!failure) return true;
  failure_ = *failure;
  result = failure->number == 0;
  return false;
}

Internet::Handle FakeInternet::newHandle() {
  ++openHandles;
  return ++lastHandle_;
}

Internet::Handle FakeInternet::open() {
  bool result = false;
  return begin("open", result) ? newHandle() : 0;
}

bool FakeInternet::setOption(Handle, std::uint32_t option, std::uint32_t milliseconds) {
  options[option] = milliseconds;
  return true;
}

Internet::Handle FakeInternet::connect(Handle, const Account& who, std::uint32_t flags) {
  account = who;
  connectFlags = flags;
  current = "/";
  bool result = false;
  return begin("connect", result) ? newHandle() : 0;
}

bool FakeInternet::close(Handle) {
  bool result = false;
  if (begin("close", result)) --openHandles;
  return result;
}

std::optional<std::string> FakeInternet::currentDirectory(Handle) {
  bool result = false;
  if (!begin("pwd", result)) return std::nullopt;
  return current;
}

bool FakeInternet::setCurrentDirectory(Handle, const std::string& folder) {
  bool result = false;
  if (!begin("cd " + folder, result)) return result;
  std::string target = current;
  if (target != "/") target += '/';
  target += folder;
  if (!folders.contains(target)) {
    failure_ = {kErrorExtended, "550 no such folder"};
    return false;
  }
  current = target;
  return true;
}

bool FakeInternet::putFile(Handle, const std::string& localPath, const std::string& remoteName,
                           std::uint32_t transferType) {
  bool result = false;
  if (!begin("put " + remoteName, result)) return result;
  const auto content = files_.contentOf(localPath);
  if (!content) {
    failure_ = {kErrorFileNotFound, ""};
    return false;
  }
  folders[current][remoteName] = *content;
  transferTypes[remoteName] = transferType;
  return true;
}

bool FakeInternet::renameFile(Handle, const std::string& from, const std::string& to) {
  bool result = false;
  if (!begin("rename " + from + " " + to, result)) return result;
  auto node = folders[current].extract(from);
  if (!node) {
    failure_ = {kErrorExtended, "550 no such file"};
    return false;
  }
  node.key() = to;
  folders[current].insert(std::move(node));
  return true;
}

bool FakeInternet::deleteFile(Handle, const std::string& remoteName) {
  bool result = false;
  if (!begin("delete " + remoteName, result)) return result;
  return folders[current].erase(remoteName) > 0;
}

std::vector<Internet::FindData> FakeInternet::listing() const {
  std::vector<FindData> entries = extraEntries;
  std::string prefix = current;
  if (prefix != "/") prefix += '/';
  for (const auto& [path, files] : folders) {
    if (path == "/" || !path.starts_with(prefix)) continue;
    const std::string name = path.substr(prefix.size());
    if (name.empty() || name.find('/') != std::string::npos) continue;
    entries.push_back({name, true, 0, {}});
  }
  for (const auto& [name, content] : folders.at(current)) {
    entries.push_back({name, false, content.size(), {}});
  }
  return entries;
}

Internet::Handle FakeInternet::findFirst(Handle, const std::string&, FindData& entry) {
  bool result = false;
  if (!begin("list", result)) return 0;
  found_ = listing();
  if (found_.empty()) {
    failure_ = {kErrorNoMoreFiles, ""};
    return 0;
  }
  entry = found_.front();
  nextFound_ = 1;
  return newHandle();
}

bool FakeInternet::findNext(Handle, FindData& entry) {
  bool result = false;
  if (!begin("next", result)) return false;
  if (nextFound_ >= found_.size()) {
    failure_ = {kErrorNoMoreFiles, ""};
    return false;
  }
  entry = found_[nextFound_++];
  return true;
}

std::string FakeInternet::systemMessage(ErrorNumber number) {
  return number == 5 ? "アクセスが拒否されました。" : "";
}

}  // namespace karvel
