#include <algorithm>
#include <sstream>
#include <vector>

#include "contract/scratch_folder.h"
#include "platform/windows/system/win32_profile.h"
#include "selftest/windows/questions.h"
#include "text/code_page.h"

namespace karvel {
namespace {

std::vector<std::string> linesOf(const std::string& content) {
  std::vector<std::string> lines;
  std::istringstream stream(content);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// With what cannot be seen on paper: blanks and line ends.
std::string visible(const std::string& line) {
  std::string text;
  for (const char c : fromCodePage932(line)) {
    if (c == ' ') {
      text += "·";
    } else if (c == '\t') {
      text += "→";
    } else if (c == '\r') {
      text += "[CR]";
    } else {
      text += c;
    }
  }
  return text;
}

}  // namespace

std::string askProfileLines(const Note& note, std::chrono::milliseconds /*limit*/) {
  const std::string content =
      "; a comment\r\n\r\n  [INFOMATION]  \r\n\r\n ; indented comment\r\nFTP TIME = 15 \r\n"
      "\tFTP SEVE\t=\tserver\t\r\nQUOTED=\" blanks \"\r\nSINGLE='x'\r\nEMPTY=\r\n"
      "no equals sign\r\n=no key\r\nTARGET=1\r\nONLY LF=1\n   \r\n\r\n[OTHER]\r\nTARGET=9\r\n"
      "\x83\x5C=\x95\x5C\r\n; the end";
  const ScratchFolder folder;
  const std::string path = folder.add("probe.hnb", content);
  const bool written = Win32Profile().write("INFOMATION", "TARGET", "2", path);
  auto before = linesOf(content);
  auto after = linesOf(ScratchFolder::content(path).value_or(""));
  note(std::string("TARGET=1を2に書き換えた: ") + (written ? "成功" : "失敗") + "、行数 " +
       std::to_string(before.size()) + " → " + std::to_string(after.size()));
  // The line that is to change is none that has to stay.
  before.erase(std::find(before.begin(), before.end(), "TARGET=1\r"));
  std::size_t changed = 0;
  for (const std::string& line : before) {
    const auto kept = std::find(after.begin(), after.end(), line);
    note((kept != after.end() ? "  同じ   " : "→なくなった ") + visible(line));
    if (kept == after.end()) ++changed;
    if (kept != after.end()) after.erase(kept);
  }
  for (const std::string& line : after) note("→新しい " + visible(line));
  return changed == 0 ? "書き換えた値のほかは、すべての行が1バイトも変わりませんでした。"
                      : "書き換えた値のほかに" + std::to_string(changed) +
                            "行が、そのままでは残りませんでした。";
}

}  // namespace karvel
