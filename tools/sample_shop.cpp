// Lays out a sample shop in a folder, or writes a single reception file.

#include <charconv>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include "shop_folder.h"

namespace {

using karvel::sample::Destination;
using karvel::sample::Shop;

constexpr std::string_view kUsage = R"(Lays out a sample shop, the same for the same options.

  sample_shop --folder F [options]            a whole shop in the folder F
  sample_shop --desk-file F [options]         only one reception file, F

  --receptions N    per desk and day (300)    --out-folder F   where the statistics go
  --seed N          another shop (1)          --interval 0-4   never, 5, 15, 30, 60 minutes (2)
  --desks 1-6       (6)                       --destination folder|own-site (folder)
  --day yymmdd      business day (240105)     --host H  --port N  --user U  --password P
  --days N          earlier days kept (0)     --site-folder F  --passive 0|1 (1)
)";

int number(const std::string& text, int lowest, int highest) {
  int value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value < lowest || value > highest) {
    throw std::invalid_argument("no number from " + std::to_string(lowest) + " to " +
                                std::to_string(highest) + ": " + text);
  }
  return value;
}

Destination destination(const std::string& text) {
  if (text == "folder") return Destination::kFolder;
  if (text == "own-site") return Destination::kOwnSite;
  throw std::invalid_argument("no destination: " + text);
}

struct Order {
  Shop shop;
  std::filesystem::path deskFile;  ///< the only file wanted, or empty
};

Order readOptions(int argc, char** argv) {
  constexpr int kMany = 10'000'000;
  constexpr int kMostDays = 10'000;
  Order order;
  Shop& shop = order.shop;
  using Text = const std::string&;
  const std::map<std::string, std::function<void(Text)>, std::less<>> options{
      {"--folder", [&](Text value) { shop.folder = std::filesystem::absolute(value); }},
      {"--out-folder", [&](Text value) { shop.outFolder = std::filesystem::absolute(value); }},
      {"--desk-file", [&](Text value) { order.deskFile = value; }},
      {"--receptions", [&](Text value) { shop.receptions = number(value, 0, kMany); }},
      {"--seed",
       [&](Text value) { shop.seed = static_cast<std::uint64_t>(number(value, 0, kMany)); }},
      {"--desks", [&](Text value) { shop.desks = number(value, 1, karvel::sample::kMostDesks); }},
      {"--day", [&](Text value) { shop.day = value; }},
      {"--days", [&](Text value) { shop.earlierDays = number(value, 0, kMostDays); }},
      {"--interval", [&](Text value) { shop.interval = number(value, 0, 4); }},
      {"--destination", [&](Text value) { shop.destination = destination(value); }},
      {"--host", [&](Text value) { shop.site.host = value; }},
      {"--port", [&](Text value) { shop.site.port = value; }},
      {"--user", [&](Text value) { shop.site.user = value; }},
      {"--password", [&](Text value) { shop.site.password = value; }},
      {"--site-folder", [&](Text value) { shop.site.folder = value; }},
      {"--passive", [&](Text value) { shop.site.passive = number(value, 0, 1) == 1; }},
  };
  for (int i = 1; i < argc; i += 2) {
    const auto option = options.find(std::string_view(argv[i]));
    if (option == options.end()) throw std::invalid_argument(std::string("no option: ") + argv[i]);
    if (i + 1 == argc) throw std::invalid_argument(std::string("a value is missing: ") + argv[i]);
    option->second(argv[i + 1]);
  }
  if (shop.folder.empty() == order.deskFile.empty()) {
    throw std::invalid_argument("either --folder or --desk-file is needed");
  }
  return order;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const Order order = readOptions(argc, argv);
    if (order.deskFile.empty()) {
      karvel::sample::layOut(order.shop);
    } else {
      karvel::sample::writeDeskFile(order.deskFile, order.shop.receptions, order.shop.seed);
    }
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "sample_shop: " << error.what() << "\n\n" << kUsage;
    return 1;
  }
}
