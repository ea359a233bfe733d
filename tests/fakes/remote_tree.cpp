#include "fakes/remote_tree.h"

#include <sstream>
#include <utility>

namespace karvel {
namespace {

std::string parentOf(const std::string& path) {
  const auto slash = path.rfind('/');
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string childPrefix(const std::string& folder) {
  return folder == "/" ? folder : folder + "/";
}

}  // namespace

void RemoteTree::addFolder(const std::string& path) {
  if (path != "/") addFolder(parentOf(path));
  const std::lock_guard lock(mutex_);
  nodes_[path] = std::nullopt;
}

void RemoteTree::addFile(const std::string& path, std::string content) {
  addFolder(parentOf(path));
  const std::lock_guard lock(mutex_);
  nodes_[path] = std::move(content);
}

bool RemoteTree::isFolder(const std::string& path) const {
  const std::lock_guard lock(mutex_);
  return hasFolder(path);
}

bool RemoteTree::isFile(const std::string& path) const {
  return content(path).has_value();
}

std::optional<std::string> RemoteTree::content(const std::string& path) const {
  const std::lock_guard lock(mutex_);
  const auto found = nodes_.find(path);
  return found == nodes_.end() ? std::nullopt : found->second;
}

std::vector<RemoteTree::Entry> RemoteTree::entries(const std::string& folder) const {
  const std::lock_guard lock(mutex_);
  const std::string prefix = childPrefix(folder);
  std::vector<Entry> found;
  for (auto it = nodes_.upper_bound(prefix); it != nodes_.end(); ++it) {
    const auto& [path, node] = *it;
    if (path.compare(0, prefix.size(), prefix) != 0) break;
    const std::string name = path.substr(prefix.size());
    if (name.find('/') == std::string::npos) {
      found.push_back({name, !node, node ? node->size() : 0});
    }
  }
  return found;
}

bool RemoteTree::removeFile(const std::string& path) {
  const std::lock_guard lock(mutex_);
  return hasFile(path) && nodes_.erase(path) == 1;
}

bool RemoteTree::rename(const std::string& from, const std::string& to) {
  const std::lock_guard lock(mutex_);
  if (!hasFile(from) || hasFolder(to) || !hasFolder(parentOf(to))) return false;
  nodes_[to] = nodes_.extract(from).mapped();
  return true;
}

bool RemoteTree::store(const std::string& path, std::string content) {
  const std::lock_guard lock(mutex_);
  if (hasFolder(path) || !hasFolder(parentOf(path))) return false;
  nodes_[path] = std::move(content);
  return true;
}

std::string RemoteTree::resolve(const std::string& folder, const std::string& path) {
  const std::string whole = path.rfind('/', 0) == 0 ? path : folder + "/" + path;
  std::vector<std::string> parts;
  std::istringstream stream(whole);
  for (std::string part; std::getline(stream, part, '/');) {
    if (part.empty() || part == ".") continue;
    if (part != "..") {
      parts.push_back(part);
    } else if (!parts.empty()) {
      parts.pop_back();
    }
  }
  std::string resolved;
  for (const std::string& part : parts) resolved.append("/").append(part);
  return resolved.empty() ? "/" : resolved;
}

bool RemoteTree::hasFolder(const std::string& path) const {
  const auto found = nodes_.find(path);
  return found != nodes_.end() && !found->second;
}

bool RemoteTree::hasFile(const std::string& path) const {
  const auto found = nodes_.find(path);
  return found != nodes_.end() && found->second;
}

}  // namespace karvel
