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
    const auto text = files_.contentOf(file);
    return text ? iniValue(*text, section, key).substr(0, bufferSize - 1) : std::string();
  }

  bool write(const std::string& section, const std::string& key, const std::string& value,
             const std::string& file) override {
    const auto text = files_.contentOf(file);
    return files_.write(file, iniWithValue(text.value_or(""), section, key, value));
  }

 private:
  FakeFiles& files_;
};

}  // namespace karvel
