#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>

namespace karvel::sample {

inline constexpr int kMostDesks = 6;
inline constexpr std::array<const char*, kMostDesks> kDeskNames{
    "総合受付", "予約窓口", "会計", "ソフト相談", "修理受付", "表通り窓口"};

enum class Destination : std::uint8_t { kFolder, kOwnSite };

struct OwnSite {
  std::string host = "127.0.0.1";
  std::string port = "21";
  std::string folder;
  std::string user;
  std::string password;
  bool passive = true;
};

/// A shop as it stands after its first delivery. Texts are UTF-8.
struct Shop {
  std::filesystem::path folder;     ///< where the program stands
  std::filesystem::path outFolder;  ///< where the statistics go
  std::string shopCode = "00345";
  std::string shopName = "能登表町店";
  std::string groupCode = "12";
  std::string groupName = "北陸グループ";
  Destination destination = Destination::kFolder;
  OwnSite site;
  int interval = 2;            ///< as in "FTP TIME": 0 never, 1 to 4 every 5, 15, 30, 60 minutes
  std::string day = "240105";  ///< business day, "yymmdd"
  int earlierDays = 0;         ///< days before it that have been kept
  int desks = kMostDesks;
  int receptions = 300;  ///< per desk and day
  std::uint64_t seed = 1;
};

/// Lays the shop out: both settings files, the folders "Log" and "temp", the reception files of the
/// day, and those of earlier days with their presence files. Folders are created, files replaced;
/// the output folder is left to its owner. The request keys hold 1, as an earlier run may have left
/// them: a start resets them to 0. Throws std::exception when something cannot be written.
void layOut(const Shop& shop);

/// Writes one reception file.
void writeDeskFile(const std::filesystem::path& file, int receptions, std::uint64_t seed);

}  // namespace karvel::sample
