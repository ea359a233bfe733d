#include "check/report.h"

#include <algorithm>

#include "text/html.h"

namespace karvel {
namespace {

constexpr std::string_view kTitle = "集計管理 診断";

struct MarkText {
  std::string_view word;
  std::string_view style;
};

MarkText textOf(Mark mark) {
  if (mark == Mark::kGood) return {"良好", "good"};
  if (mark == Mark::kNotice) return {"注意", "notice"};
  return {"支障", "trouble"};
}

constexpr std::string_view kHead =
    "<!DOCTYPE html>\n<html lang=\"ja\"><head><meta charset=\"utf-8\">\n"
    "<meta name=\"viewport\" content=\"width=device-width\">\n"
    "<title>集計管理 診断</title>\n<style>\n"
    "body{font-family:'Yu Gothic UI',Meiryo,sans-serif;max-width:70em;margin:2em auto;padding:0 "
    "1em;"
    "color:#222;line-height:1.6}\n"
    "table{border-collapse:collapse;width:100%}\n"
    "td,th{border:1px solid #ccc;padding:.3em .6em;text-align:left;vertical-align:top;"
    "overflow-wrap:anywhere}\n"
    ".mark{white-space:nowrap;font-weight:bold}\n"
    ".good .mark{color:#176b2c}.notice .mark{color:#7a5200}.trouble .mark{color:#b00020}\n"
    ".notice{background:#fff9e6}.trouble{background:#fdecee}\n"
    ".answer{font-size:1.2em;font-weight:bold;border-left:.4em solid #888;padding:.4em .8em}\n"
    "pre{background:#f5f5f5;padding:.8em;white-space:pre-wrap;overflow-wrap:anywhere}\n"
    "</style></head><body>\n";

std::string cell(std::string_view text) {
  return "<td>" + htmlText(text) + "</td>";
}

}  // namespace

bool Report::hasTrouble() const {
  return std::any_of(findings.begin(), findings.end(),
                     [](const Finding& each) { return each.mark == Mark::kTrouble; });
}

std::string Report::answer() const {
  const auto first = std::find_if(findings.begin(), findings.end(),
                                  [](const Finding& each) { return each.mark == Mark::kTrouble; });
  if (first == findings.end()) return "この店舗の転送を妨げるものは見つかりませんでした。";
  const auto count = std::count_if(findings.begin(), findings.end(),
                                   [](const Finding& each) { return each.mark == Mark::kTrouble; });
  return "この店舗の転送を妨げるものが" + std::to_string(count) +
         "件あります。はじめに直すもの: " + first->found.substr(0, first->found.find("。")) + "。";
}

std::string Report::text() const {
  std::string text;
  for (const Finding& finding : findings) {
    text.append(textOf(finding.mark).word).append(" ").append(finding.found);
    if (!finding.advice.empty()) {
      text.append("。→ ").append(finding.advice).append(" [#").append(finding.anchor).append("]");
    }
    text += "\n";
  }
  return text + answer() + "\n";
}

std::string Report::html() const {
  std::string page(kHead);
  page.append("<h1>").append(kTitle).append("</h1>\n<p class=\"answer\">");
  page += htmlText(answer()) + "</p>\n<table>\n";
  for (const Finding& finding : findings) {
    const auto [word, style] = textOf(finding.mark);
    page.append("<tr class=\"").append(style).append("\"><td class=\"mark\">").append(word);
    page += "</td>" + cell(finding.found) + "<td>" + htmlText(finding.advice);
    if (!manual.empty()) {
      page += " <a href=\"" + htmlText(manual) + "#" + htmlText(finding.anchor) + "\">説明</a>";
    }
    page += "</td></tr>\n";
  }
  page += "</table>\n<h2>調べたもの</h2>\n<table>\n";
  for (const auto& [name, value] : facts) page += "<tr>" + cell(name) + cell(value) + "</tr>\n";
  page += "</table>\n<h2>設定(karvel.hnb)</h2>\n<table>\n";
  for (const SettingShown& setting : settings) {
    page += "<tr>" + cell(setting.key) + cell(setting.value) + cell(setting.meaning) + "</tr>\n";
  }
  page += "</table>\n<h2>ログの最後の部分</h2>\n<pre>\n";
  for (const std::string& line : log) page += htmlText(line) + "\n";
  return page + "</pre>\n</body></html>\n";
}

}  // namespace karvel
