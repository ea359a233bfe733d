#include "shop_folder.h"

#include <charconv>
#include <chrono>
#include <fstream>
#include <initializer_list>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "sample_receptions.h"
#include "text/code_page.h"
#include "text/date_time.h"

namespace karvel::sample {
namespace {

namespace fs = std::filesystem;
using Settings = std::initializer_list<std::pair<std::string_view, std::string>>;

void writeFile(const fs::path& file, const std::string& content) {
  std::ofstream out(file, std::ios::binary);
  out.exceptions(std::ios::failbit | std::ios::badbit);
  out << content;
}

std::string utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string section(std::string_view name, Settings settings) {
  std::string text = "[" + std::string(name) + "]\r\n";
  for (const auto& [key, value] : settings) text.append(key).append("=").append(value + "\r\n");
  return text;
}

std::string ownSettings(const Shop& shop) {
  const bool toFolder = shop.destination == Destination::kFolder;
  return section("FTP INFOMATION", {{"FTP SEVE", toFolder ? "" : shop.site.host},
                                    {"FTP FOLD", shop.site.folder},
                                    {"FTP NAME", shop.site.user},
                                    {"FTP PASS", shop.site.password},
                                    {"FTP PORT", shop.site.port},
                                    {"FTP PSIV", shop.site.passive ? "1" : "0"},
                                    {"FTP CODE", shop.shopCode},
                                    {"FTP TIME", std::to_string(shop.interval)},
                                    {"HST FOLD", utf8(shop.folder)},
                                    {"OUT FOLD", utf8(shop.outFolder)},
                                    {"FTP TYPE", toFolder ? "0" : "1"},
                                    {"FTP CHKC", toFolder ? "1" : "0"},
                                    {"FTP CHKF", toFolder ? "0" : "1"},
                                    {"GRUP CODE", shop.groupCode},
                                    {"GRUP NAME", shop.groupName},
                                    {"FTP EXIT", "1"},
                                    {"FTP INIT", "1"}});
}

std::string deskSettings(int desks) {
  std::string text = section("TASHIN INFOMATION", {{"SHINSATSU", std::to_string(desks - 1)}});
  for (int desk = 1; desk <= desks; ++desk) {
    text += "TASHIN" + std::to_string(desk) + "=" +
            kDeskNames.at(static_cast<std::size_t>(desk - 1)) + "\r\n";
  }
  return text;
}

std::string ticketSettings(const Shop& shop) {
  return section("USER INFOMATION", {{"USER CODE", "70012"}, {"TODAY", shop.day}}) +
         section("KARVEL1 INFOMATION", {{"USER NAME", shop.shopName}}) + deskSettings(shop.desks) +
         section("FTP INFOMATION", {{"FTP USER", "noto345"}, {"FTP GRUP", "hokuriku"}});
}

int number(std::string_view digits) {
  int value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

std::chrono::sys_days dateOf(const std::string& dayKey) {
  using namespace std::chrono;
  const std::string_view key = dayKey;
  if (key.size() != 6 || key.find_first_not_of("0123456789") != key.npos) {
    throw std::invalid_argument("a day is written yymmdd: " + dayKey);
  }
  const year_month_day date{year{2000 + number(key.substr(0, 2))},
                            month{static_cast<unsigned>(number(key.substr(2, 2)))},
                            day{static_cast<unsigned>(number(key.substr(4, 2)))}};
  if (!date.ok()) throw std::invalid_argument("there is no such day: " + dayKey);
  return date;
}

std::string dayKeyOf(std::chrono::sys_days day) {
  const std::chrono::year_month_day date{day};
  return formatDayKey(static_cast<int>(date.year()),
                      static_cast<int>(static_cast<unsigned>(date.month())),
                      static_cast<int>(static_cast<unsigned>(date.day())));
}

/// A seed of its own for every desk of every day.
std::uint64_t seedOf(const Shop& shop, const std::string& dayKey, int desk) {
  return (shop.seed * 1'000'000 + static_cast<std::uint64_t>(number(dayKey))) * 10 +
         static_cast<std::uint64_t>(desk);
}

void writeDay(const Shop& shop, const std::string& dayKey) {
  for (int desk = 1; desk <= shop.desks; ++desk) {
    const std::string name = dayKey + "_" + std::to_string(desk) + ".tmp";
    writeDeskFile(shop.folder / "temp" / name, shop.receptions, seedOf(shop, dayKey, desk));
  }
}

}  // namespace

void layOut(const Shop& shop) {
  const auto today = dateOf(shop.day);
  fs::create_directories(shop.folder / "Log");
  fs::create_directories(shop.folder / "temp");
  writeFile(shop.folder / "karvel.hnb", toCodePage932(ownSettings(shop)));
  fs::permissions(shop.folder / "karvel.hnb", fs::perms::owner_read | fs::perms::owner_write);
  writeFile(shop.folder / "karvel.ini", toCodePage932(ticketSettings(shop)));
  writeDay(shop, shop.day);
  for (int back = 1; back <= shop.earlierDays; ++back) {
    const std::string dayKey = dayKeyOf(today - std::chrono::days{back});
    writeFile(shop.folder / "temp" / (dayKey + ".tmp"), "");
    writeDay(shop, dayKey);
  }
}

void writeDeskFile(const fs::path& file, int receptions, std::uint64_t seed) {
  std::ofstream out(file, std::ios::binary);
  out.exceptions(std::ios::failbit | std::ios::badbit);
  writeReceptions(out, receptionsOfDay(receptions, seed));
}

}  // namespace karvel::sample
