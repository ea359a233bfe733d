#pragma once

#include <string>

#include "fakes/fake_files.h"
#include "platform/profile.h"

namespace karvel {

/// Profile files in the fake file system, as plain as the tests write them: "[section]" and
/// "key=value" lines, names spelled as the program spells them.
class FakeProfile final : public Profile {
 public:
  explicit FakeProfile(FakeFiles& files) : files_(files) {}

  /// The value in such a text, without the quotes around it; "" without one.
  static std::string valueIn(const std::string& text, const std::string& section,
                             const std::string& key);
  /// The text with the value set.
  static std::string withValue(std::string text, const std::string& section, const std::string& key,
                               const std::string& value);

  std::string read(const std::string& section, const std::string& key, const std::string& file,
                   std::size_t bufferSize) override {
    return valueIn(files_.contentOf(file).value_or(""), section, key).substr(0, bufferSize - 1);
  }
  bool write(const std::string& section, const std::string& key, const std::string& value,
             const std::string& file) override {
    return files_.write(file, withValue(files_.contentOf(file).value_or(""), section, key, value));
  }
  void removeLeftovers(const std::string& file) override { files_.remove(file + ".unsaved"); }

 private:
  FakeFiles& files_;
};

}  // namespace karvel
