#pragma once

#include <string>

#include "fakes/fake_files.h"
#include "platform/profile.h"
#include "text/ini_text.h"

namespace karvel {

/// Profile files in the fake file system.
class FakeProfile final : public Profile {
 public:
  explicit FakeProfile(FakeFiles& files) : files_(files) {}

  std::string read(const std::string& section, const std::string& key, const std::string& file,
                   std::size_t bufferSize) override {
    return iniValue(files_.contentOf(file).value_or(""), section, key).substr(0, bufferSize - 1);
  }
  bool write(const std::string& section, const std::string& key, const std::string& value,
             const std::string& file) override {
    const std::string before = files_.contentOf(file).value_or("");
    return files_.write(file, iniWithValue(before, section, key, value));
  }
  void removeLeftovers(const std::string& file) override { files_.remove(file + ".unsaved"); }

 private:
  FakeFiles& files_;
};

}  // namespace karvel
