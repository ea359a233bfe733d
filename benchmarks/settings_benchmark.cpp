#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "platform/linux/system/ini_profile.h"
#include "platform/linux/system/posix_files.h"
#include "platform/linux/system/system_clock.h"
#include "store/settings_store.h"

namespace karvel {
namespace {

/// A settings file on the disk; the key asked for is its last one.
class SettingsFile {
 public:
  explicit SettingsFile(std::int64_t keys)
      : path_(std::filesystem::temp_directory_path() /
              ("karvel-benchmark-" + std::to_string(keys) + ".hnb")) {
    std::ofstream out(path_, std::ios::binary);
    out << "[FTP INFOMATION]\r\n";
    for (std::int64_t key = 1; key < keys; ++key) out << "KEY" << key << "=value\r\n";
    out << "FTP EXIT=0\r\n";
  }
  ~SettingsFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  SettingsFile(const SettingsFile&) = delete;
  SettingsFile& operator=(const SettingsFile&) = delete;

  [[nodiscard]] std::string path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

/// What every tick does three or four times.
void readSetting(benchmark::State& state) {
  const SettingsFile file(state.range(0));
  PosixFiles files;
  IniProfile profile;
  SystemClock clock;
  IniRedWrt settings(profile, files, clock);
  settings.OwnIniPath = file.path();
  for (auto _ : state) benchmark::DoNotOptimize(settings.read(own::kExitRequest));
}
BENCHMARK(readSetting)->Arg(20)->Arg(2000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace karvel
