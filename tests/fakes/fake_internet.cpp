#include "fakes/fake_internet.h"

namespace karvel {

bool FakeInternet::attempt(const std::string& call, const std::function<bool()>& action) {
  calls.push_back(call);
  const auto failure = fault ? fault(call) : std::nullopt;
  if (!failure) return action();
  failure_ = *failure;
  return failure->number == 0;
}

bool FakeInternet::done(const std::string& call) {
  bool done = false;
  attempt(call, [&done] { return done = true; });
  return done;
}

bool FakeInternet::fail(const Failure& failure) {
  failure_ = failure;
  return false;
}

Internet::Handle FakeInternet::newHandle(const std::string& call) {
  if (!done(call)) return 0;
  ++openHandles;
  return ++lastHandle_;
}

bool FakeInternet::setOption(Handle, std::uint32_t option, std::uint32_t milliseconds) {
  options[option] = milliseconds;
  return true;
}

Internet::Handle FakeInternet::connect(Handle, const Account& who, std::uint32_t flags) {
  account = who;
  connectFlags = flags;
  current = "/";
  return newHandle("connect");
}

bool FakeInternet::close(Handle) {
  return attempt("close", [this] { return openHandles-- > 0; });
}

std::optional<std::string> FakeInternet::currentDirectory(Handle) {
  return done("pwd") ? std::optional(current) : std::nullopt;
}

bool FakeInternet::setCurrentDirectory(Handle, const std::string& folder) {
  return attempt("cd " + folder, [&] {
    const std::string target = (current == "/" ? current : current + "/") + folder;
    if (!folders.contains(target)) return fail({kErrorExtended, "550 no such folder"});
    current = target;
    return true;
  });
}

bool FakeInternet::putFile(Handle, const std::string& localPath, const std::string& remoteName,
                           std::uint32_t transferType) {
  return attempt("put " + remoteName, [&] {
    const auto content = files_.contentOf(localPath);
    if (!content) return fail({kErrorFileNotFound, ""});
    folders[current][remoteName] = *content;
    transferTypes[remoteName] = transferType;
    return true;
  });
}

bool FakeInternet::renameFile(Handle, const std::string& from, const std::string& to) {
  return attempt("rename " + from + " " + to, [&] {
    auto node = folders[current].extract(from);
    if (!node) return fail({kErrorExtended, "550 no such file"});
    node.key() = to;
    folders[current].insert(std::move(node));
    return true;
  });
}

bool FakeInternet::deleteFile(Handle, const std::string& remoteName) {
  return attempt("delete " + remoteName, [&] { return folders[current].erase(remoteName) > 0; });
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
  const Handle find = newHandle("list");
  found_ = listing();
  nextFound_ = 0;
  if (find == 0 || takeFound(entry)) return find;
  --openHandles;
  return 0;
}

bool FakeInternet::findNext(Handle, FindData& entry) {
  return done("next") && takeFound(entry);
}

bool FakeInternet::takeFound(FindData& entry) {
  if (nextFound_ >= found_.size()) return fail({kErrorNoMoreFiles, ""});
  entry = found_[nextFound_++];
  return true;
}

std::string FakeInternet::systemMessage(ErrorNumber number) {
  return number == 5 ? "アクセスが拒否されました。" : "";
}

}  // namespace karvel
