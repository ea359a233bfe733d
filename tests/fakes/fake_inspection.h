#pragma once

#include <string>
#include <vector>

#include "fakes/fake_files.h"
#include "platform/inspection.h"
#include "text/path.h"

namespace karvel {

/// A system in good order, until a test changes it. Every file is from the beginning of 2024.
class FakeInspection final : public Inspection {
 public:
  explicit FakeInspection(FakeFiles& files) : files_(files) {}

  std::uint64_t room = 1ULL << 40;
  bool folderWritable = true;
  bool readable = false;
  bool runs = true;
  std::string message;
  bool atSignIn = true;
  std::vector<std::string> found{"192.0.2.1"};
  unsigned page = 932;

  std::vector<Entry> entries(const std::string& folder) override {
    std::vector<Entry> inside;
    for (const auto& [path, file] : files_.files) {
      const auto name = path.find_last_of(kSeparator) + 1;
      if (path.substr(0, name) == folder + kSeparator) {
        inside.push_back({path.substr(name), false, {2024, 1, 1}});
      }
    }
    return inside;
  }
  std::optional<std::uint64_t> freeBytes(const std::string&) override { return room; }
  bool writable(const std::string&) override { return folderWritable; }
  std::optional<bool> readableByOthers(const std::string&) override { return readable; }
  bool running(const std::string&) override { return runs; }
  std::string waitingMessage(const std::string&) override { return message; }
  std::optional<bool> startsAtSignIn(const std::string&) override { return atSignIn; }
  std::vector<std::string> addresses(const std::string&) override { return found; }
  std::optional<unsigned> codePage() override { return page; }
  std::string systemName() override { return "a system"; }
  std::chrono::milliseconds elapsed() override { return elapsed_ += std::chrono::milliseconds(7); }
  std::string temporaryFolder() override { return "tmp"; }
  std::string documentsFolder() override { return "documents"; }
  bool openForUser(const std::string&) override { return true; }
  void print(const std::string&) override {}
  std::vector<std::string> arguments(int, char**) override { return {}; }

 private:
  FakeFiles& files_;
  std::chrono::milliseconds elapsed_{0};
};

}  // namespace karvel
