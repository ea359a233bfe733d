#include "check/watched_internet.h"

namespace karvel {

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
  return noted(Step::kFolder, folder,
               [&] { return library_.setCurrentDirectory(session, folder); });
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
  Handle find = 0;
  noted(Step::kList, pattern, [&] {
    find = library_.findFirst(session, pattern, entry);
    return find != 0;
  });
  if (find != 0) names.push_back(entry.name);
  return find;
}

bool WatchedInternet::findNext(Handle find, FindData& entry) {
  const bool found = library_.findNext(find, entry);
  lastError_ = found ? 0 : library_.lastError();
  if (found) names.push_back(entry.name);
  return found;
}

}  // namespace karvel
