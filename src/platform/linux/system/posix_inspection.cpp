#include <dirent.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <memory>

#include "platform/inspection.h"
#include "platform/linux/internet/socket_address.h"
#include "platform/linux/system/user_instance.h"
#include "text/path.h"
#include "text/strings.h"

extern char** environ;

namespace karvel {
namespace {

constexpr std::chrono::seconds kLookupLimit{10};
constexpr int kFirstYear = 1900;

DateTime localTime(std::time_t seconds) {
  std::tm calendar{};
  localtime_r(&seconds, &calendar);
  return {calendar.tm_year + kFirstYear,
          calendar.tm_mon + 1,
          calendar.tm_mday,
          calendar.tm_hour,
          calendar.tm_min,
          calendar.tm_sec};
}

std::string variable(const char* name, const std::string& otherwise) {
  const char* const value = std::getenv(name);
  return value != nullptr && *value != '\0' ? value : otherwise;
}

std::string textOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class PosixInspection final : public Inspection {
 public:
  std::vector<Entry> entries(const std::string& folder) override {
    std::vector<Entry> found;
    const std::unique_ptr<DIR, int (*)(DIR*)> names(opendir(folder.c_str()), closedir);
    while (const dirent* const entry = names ? readdir(names.get()) : nullptr) {
      struct stat status {};
      const std::string name = entry->d_name;
      if (name == "." || name == "..") continue;
      if (stat(joinPath(folder, name).c_str(), &status) != 0) continue;
      found.push_back({name, S_ISDIR(status.st_mode), localTime(status.st_mtime)});
    }
    std::sort(found.begin(), found.end(),
              [](const Entry& a, const Entry& b) { return a.name < b.name; });
    return found;
  }

  std::optional<std::uint64_t> freeBytes(const std::string& folder) override {
    struct statvfs disk {};
    if (statvfs(folder.c_str(), &disk) != 0) return std::nullopt;
    return std::uint64_t{disk.f_bavail} * disk.f_frsize;
  }

  bool writable(const std::string& folder) override {
    return access(folder.c_str(), W_OK | X_OK) == 0;
  }

  std::optional<bool> readableByOthers(const std::string& file) override {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) return std::nullopt;
    return (status.st_mode & (S_IRGRP | S_IROTH)) != 0;
  }

  bool running(const std::string& programFolder) override {
    return UserInstance::held(programFolder);
  }

  /// Who would answer a message box without a desktop is not known here.
  std::string waitingMessage(const std::string&) override { return {}; }

  /// A service manager may start it as well, so that only a yes is certain.
  std::optional<bool> startsAtSignIn(const std::string& programFolder) override {
    const std::string home = variable("HOME", "/");
    const std::string folder = variable("XDG_CONFIG_HOME", home + "/.config") + "/autostart";
    for (const Entry& entry : entries(folder)) {
      if (contains(textOf(joinPath(folder, entry.name)), joinPath(programFolder, "karvel"))) {
        return true;
      }
    }
    return std::nullopt;
  }

  std::vector<std::string> addresses(const std::string& host) override {
    std::vector<std::string> found;
    for (const SocketAddress& address : lookUpWithin(kLookupLimit, addressesOf, host, 0)) {
      found.push_back(address.host());
    }
    return found;
  }

  std::optional<unsigned> codePage() override { return std::nullopt; }

  std::string systemName() override {
    utsname name{};
    return uname(&name) == 0 ? std::string(name.sysname) + " " + name.release : "";
  }

  std::chrono::milliseconds elapsed() override {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
  }

  std::string temporaryFolder() override { return variable("TMPDIR", "/tmp"); }

  std::string documentsFolder() override {
    const std::string home = variable("HOME", "/");
    const std::string documents = joinPath(home, "Documents");
    return access(documents.c_str(), W_OK) == 0 ? documents : home;
  }

  bool openForUser(const std::string& path) override {
    std::string program = "xdg-open";
    std::string argument = path;
    char* const arguments[] = {program.data(), argument.data(), nullptr};
    pid_t process = 0;
    return posix_spawnp(&process, program.c_str(), nullptr, nullptr, arguments, environ) == 0;
  }

  void print(const std::string& utf8) override {
    std::fputs(utf8.c_str(), stdout);
    std::fflush(stdout);
  }

  std::vector<std::string> arguments(int argc, char** argv) override {
    return {argv + std::min(argc, 1), argv + argc};
  }
};

}  // namespace

std::unique_ptr<Inspection> makeInspection() {
  return std::make_unique<PosixInspection>();
}

}  // namespace karvel
