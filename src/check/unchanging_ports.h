#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/instance.h"
#include "platform/profile.h"

namespace karvel {

// Ports through which the program's own rooms look at a shop and change nothing in it: what they
// write succeeds without an effect.

class UnchangingFiles final : public Files {
 public:
  explicit UnchangingFiles(Files& files) : files_(files) {}

  std::map<std::string, std::string> written;  ///< what would be in the files, by path

  bool exists(const std::string& path) override { return files_.exists(path); }
  bool readPieces(const std::string& path, const Consumer& consumer) override {
    return files_.readPieces(path, consumer);
  }
  bool write(const std::string& path, std::string_view content) override {
    written[path] = content;
    return true;
  }
  bool append(const std::string&, std::string_view) override { return true; }
  bool remove(const std::string&) override { return true; }
  void removeMatching(const std::string&, const std::string&) override {}
  bool copy(const std::string&, const std::string&) override { return true; }
  bool rename(const std::string&, const std::string&) override { return true; }
  std::optional<std::uint32_t> attributes(const std::string& path) override {
    return files_.attributes(path);
  }
  bool setAttributes(const std::string&, std::uint32_t) override { return true; }

 private:
  Files& files_;
};

class UnchangingProfile final : public Profile {
 public:
  explicit UnchangingProfile(Profile& profile) : profile_(profile) {}

  std::string read(const std::string& section, const std::string& key, const std::string& file,
                   std::size_t bufferSize) override {
    return profile_.read(section, key, file, bufferSize);
  }
  bool write(const std::string&, const std::string&, const std::string&,
             const std::string&) override {
    return true;
  }
  void removeLeftovers(const std::string&) override {}

 private:
  Profile& profile_;
};

/// Waits for nobody: an empty setting is asked for twice at once, and the end of a start is not
/// drawn out.
class HastyClock final : public Clock {
 public:
  explicit HastyClock(Clock& clock) : clock_(clock) {}
  DateTime now() override { return clock_.now(); }
  void sleep(std::chrono::milliseconds) override {}

 private:
  Clock& clock_;
};

/// Lets a start go on whoever runs.
class UnlockedInstance final : public Instance {
 public:
  bool acquire(const std::string&) override { return true; }
};

}  // namespace karvel
