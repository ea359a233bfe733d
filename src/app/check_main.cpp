#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/shop_check.h"
#include "text/path.h"
#include "text/strings.h"

namespace {

constexpr int kNothingInTheWay = 0;
constexpr int kSomethingInTheWay = 1;
constexpr int kWrongUse = 2;

constexpr const char* kUsage =
    "karvel-check [--folder フォルダ] [--html ファイル.html] [--probe] [--open]\n"
    "  --folder  集計管理のフォルダ(省略すると、このプログラムのあるフォルダ)\n"
    "  --html    結果をHTMLファイルにも書きます\n"
    "  --probe   FTPサイトに小さなファイルを送り、削除して確かめます\n"
    "  --open    HTMLファイルを開きます(--htmlがなければドキュメントに書きます)\n";

struct Order {
  std::optional<std::string> folder;
  std::string html;
  bool probe = false;
  bool open = false;
};

/// A page's name ends like one: no other file of a shop can be overwritten.
bool isPage(const std::string& path) {
  const std::string lower = karvel::asciiLower(path);
  return lower.ends_with(".html") || lower.ends_with(".htm");
}

/// Empty when they cannot be understood.
std::optional<Order> orderOf(const std::vector<std::string>& arguments) {
  Order order;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const bool last = i + 1 == arguments.size();
    if (argument == "--probe") {
      order.probe = true;
    } else if (argument == "--open") {
      order.open = true;
    } else if (argument == "--folder" && !last) {
      order.folder = arguments[++i];
    } else if (argument == "--html" && !last && isPage(arguments[i + 1])) {
      order.html = arguments[++i];
    } else {
      return std::nullopt;
    }
  }
  return order;
}

/// The profile functions take other paths for files of the system's own folder.
std::string absolute(const std::string& folder) {
  const std::filesystem::path given(std::u8string(folder.begin(), folder.end()));
  std::error_code error;
  const std::u8string path = std::filesystem::absolute(given, error).lexically_normal().u8string();
  std::string text(path.begin(), path.end());
  while (text.size() > 1 && text.ends_with(karvel::kSeparator)) text.pop_back();
  return text;
}

}  // namespace

int main(int argc, char** argv) {
  const auto inspection = karvel::makeInspection();
  auto order = orderOf(inspection->arguments(argc, argv));
  karvel::Platform platform = karvel::makePlatform(argc, argv);
  if (order && order->folder) platform.programFolder = absolute(*order->folder);
  if (!order || !platform.files->exists(platform.programFolder)) {
    inspection->print(kUsage);
    return kWrongUse;
  }
  if (order->open && order->html.empty()) {
    order->html = karvel::joinPath(inspection->documentsFolder(), "集計管理 診断.html");
  }

  karvel::Report report = karvel::checkShop(platform, *inspection, order->probe);
  report.facts.emplace_back("版", KARVEL_VERSION);
  inspection->print(report.text());
  if (!order->html.empty()) {
    if (!platform.files->write(order->html, report.html())) {
      inspection->print("書き込めません: " + order->html + "\n");
      return kWrongUse;
    }
    if (order->open && !inspection->openForUser(order->html)) {
      inspection->print("開けません: " + order->html + "\n");
    }
  }
  return report.hasTrouble() ? kSomethingInTheWay : kNothingInTheWay;
}
