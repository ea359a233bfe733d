#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace karvel {

/// A new folder for one test, deleted with all it holds at the end.
class TemporaryFolder {
 public:
  TemporaryFolder() : folder_(std::filesystem::temp_directory_path() / uniqueName()) {
    std::filesystem::create_directories(folder_);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  [[nodiscard]] std::string path(const std::string& name) const {
    return (folder_ / name).string();
  }

 private:
  static std::string uniqueName() {
    std::random_device random;
    return "karvel_test_" + std::to_string(random()) + "_" + std::to_string(random());
  }

  std::filesystem::path folder_;
};

}  // namespace karvel
