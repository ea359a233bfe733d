#include "check/watched_internet.h"

#include <algorithm>

namespace karvel {

void WatchedInternet::note(const FindData& entry) {
  names.push_back(entry.name);
  if (entry.folder) folders_.push_back(entry.name);
}

bool WatchedInternet::noted(Step step, const std::string& name, const std::function<bool()>& call) {
  const auto begin = inspection_.elapsed();
  const bool done = call();
  lastError_ = done ? 0 : library_.lastError();
  response_ = library_.lastResponse();
  // An empty folder is a listing, too.
  const bool empty = step == Step::kList && lastError_ == kErrorNoMoreFiles;
  calls.push_back(
      {step, name, empty ? 0 : lastError_, library_.lastReplies(), inspection_.elapsed() - begin});
  return done;
}

Internet::Handle WatchedInternet::connect(Handle root, const Account& who, std::uint32_t flags) {
  account = who;
  const auto begin = inspection_.elapsed();
  addresses = inspection_.addresses(who.host.value_or(""));
  lookupTime = inspection_.elapsed() - begin;

  Handle session = 0;
  noted(Step::kConnect, who.host.value_or(""), [&] {
    session = library_.connect(root, who, flags);
    return session != 0;
  });
  if (session != 0) offered = library_.features(session);
  return session;
}

bool WatchedInternet::setCurrentDirectory(Handle session, const std::string& folder) {
  const bool done =
      noted(Step::kFolder, folder, [&] { return library_.setCurrentDirectory(session, folder); });
  calls.back().listed = std::find(folders_.begin(), folders_.end(), folder) != folders_.end();
  return done;
}

bool WatchedInternet::putFile(Handle session, const std::string& localPath,
                              const std::string& remoteName, std::uint32_t transferType) {
  return noted(Step::kPut, remoteName,
               [&] { return library_.putFile(session, localPath, remoteName, transferType); });
}

bool WatchedInternet::renameFile(Handle session, const std::string& from, const std::string& to) {
  return noted(Step::kRename, to, [&] { return library_.renameFile(session, from, to); });
}

bool WatchedInternet::deleteFile(Handle session, const std::string& remoteName) {
  return noted(Step::kDelete, remoteName, [&] { return library_.deleteFile(session, remoteName); });
}

Internet::Handle WatchedInternet::findFirst(Handle session, const std::string& pattern,
                                            FindData& entry) {
  folders_.clear();
  Handle find = 0;
  noted(Step::kList, pattern, [&] {
    find = library_.findFirst(session, pattern, entry);
    return find != 0;
  });
  if (find != 0) note(entry);
  return find;
}

bool WatchedInternet::findNext(Handle find, FindData& entry) {
  const bool found = library_.findNext(find, entry);
  lastError_ = found ? 0 : library_.lastError();
  if (found) note(entry);
  return found;
}

}  // namespace karvel
