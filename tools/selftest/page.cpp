#include "selftest/page.h"

#include <algorithm>
#include <numeric>
#include <set>

#include "text/html.h"

namespace karvel {
namespace {

constexpr std::string_view kHead =
    "<!DOCTYPE html>\n<html lang=\"ja\"><head><meta charset=\"utf-8\">\n"
    "<meta name=\"viewport\" content=\"width=device-width\">\n"
    "<title>集計管理 自己試験</title>\n<style>\n"
    "body{font-family:'Yu Gothic UI',Meiryo,sans-serif;max-width:60em;margin:2em auto;"
    "padding:0 1em;color:#222;line-height:1.6}\n"
    "h2{border-bottom:1px solid #ccc;margin-top:2em}h3{font-size:1em;margin-bottom:.3em}\n"
    "table{border-collapse:collapse;width:100%}\n"
    "td,th{border:1px solid #ccc;padding:.3em .6em;text-align:left;vertical-align:top;"
    "overflow-wrap:anywhere}\nth{background:#f5f5f5}\n"
    ".facts td:first-child{white-space:nowrap}.number{text-align:right}\n"
    ".good{color:#176b2c}.bad{color:#b00020;font-weight:bold}\n"
    ".answer{font-size:1.2em;font-weight:bold;border-left:.4em solid;padding:.4em .8em}\n"
    "pre{background:#f5f5f5;padding:.8em;white-space:pre-wrap;overflow-wrap:anywhere;"
    "font-size:.85em;line-height:1.4}\n"
    "@media print{body{max-width:none;margin:0}h3{break-after:avoid}tr{break-inside:avoid}}\n"
    "</style></head><body>\n<h1>集計管理 自己試験</h1>\n";

std::string cell(std::string_view text) {
  return "<td>" + htmlText(text) + "</td>";
}

std::string cell(std::size_t number) {
  return "<td class=\"number\">" + std::to_string(number) + "</td>";
}

std::string cell(int number) {
  return cell(static_cast<std::size_t>(number));
}

std::string heading(std::string_view text) {
  return "<h2>" + htmlText(text) + "</h2>\n";
}

std::string factTable(const std::vector<std::pair<std::string, std::string>>& facts) {
  std::string table = "<table class=\"facts\">\n";
  for (const auto& [name, value] : facts) table += "<tr>" + cell(name) + cell(value) + "</tr>\n";
  return table + "</table>\n";
}

std::string resultTable(const std::vector<TestResult>& results) {
  std::string table =
      "<table>\n<tr><th>プログラム</th><th>予定</th><th>合格</th><th>不合格</th><th>見送り</th>"
      "<th>秒</th><th>結果</th></tr>\n";
  for (const TestResult& result : results) {
    const std::string outcome = result.good()            ? "合格"
                                : result.trouble.empty() ? "不合格"
                                                         : "中断: " + result.trouble;
    table += "<tr>" + cell(result.program) + cell(result.planned) + cell(result.passed) +
             cell(result.failures.size()) + cell(result.skipped) + cell(result.seconds) +
             "<td class=\"" + (result.good() ? "good" : "bad") + "\">" + htmlText(outcome) +
             "</td></tr>\n";
  }
  return table + "</table>\n";
}

std::string failureList(const std::vector<TestResult>& results) {
  std::string list;
  for (const TestResult& result : results) {
    for (const TestFailure& failure : result.failures) {
      list += "<h3>" + htmlText(result.program + ": " + failure.test) + "</h3>\n<pre>" +
              htmlText(failure.text) + "</pre>\n";
    }
  }
  return list.empty() ? "<p>ありません。</p>\n" : list;
}

std::string differenceList(const std::vector<TestResult>& results) {
  std::set<std::string> all;
  for (const TestResult& result : results) {
    all.insert(result.differences.begin(), result.differences.end());
  }
  if (all.empty()) return "<p>ありません。</p>\n";
  std::string list =
      "<p>このシステムのライブラリが想定と違う動きをするところです。試験はその動きを前提に行いま"
      "した。不合格には数えません。</p>\n<ul>\n";
  for (const std::string& difference : all) list += "<li>" + htmlText(difference) + "</li>\n";
  return list + "</ul>\n";
}

std::string answerList(const std::vector<Answer>& answers) {
  std::string list;
  for (const Answer& answer : answers) {
    list += "<h3>" + htmlText(answer.question) + "</h3>\n<p><b>" + htmlText(answer.conclusion) +
            "</b></p>\n<pre>";
    for (const std::string& line : answer.observations) list += htmlText(line) + "\n";
    list += "</pre>\n";
  }
  return list;
}

}  // namespace

Answer answerOf(const std::string& question, const Ending& ending) {
  Answer answer{question, "", {}};
  for (const std::string& line : readableLines(ending.output)) {
    if (line.starts_with(kConclusion)) {
      answer.conclusion = line.substr(kConclusion.size());
    } else {
      answer.observations.push_back(line);
    }
  }
  if (answer.conclusion.empty()) {
    answer.conclusion = "答えが出ませんでした(" + describe(ending) + ")。";
  }
  return answer;
}

bool Page::good() const {
  return std::all_of(results.begin(), results.end(),
                     [](const TestResult& each) { return each.good(); });
}

std::string Page::summary() const {
  if (results.empty()) return "質問だけを試しました。";
  if (good()) return "すべての試験に合格しました。";
  const auto failures = std::accumulate(
      results.begin(), results.end(), std::size_t{0},
      [](std::size_t sum, const TestResult& each) { return sum + each.failures.size(); });
  const auto broken = std::count_if(results.begin(), results.end(),
                                    [](const TestResult& each) { return !each.trouble.empty(); });
  std::string text = std::to_string(failures) + "件の不合格があります。";
  if (broken > 0) text += std::to_string(broken) + "個のプログラムが最後まで動きませんでした。";
  return text;
}

std::string Page::html() const {
  std::string page(kHead);
  page += std::string("<p class=\"answer ") + (good() ? "good" : "bad") + "\">" +
          htmlText(summary()) + "</p>\n" + heading("環境") + factTable(facts);
  if (!results.empty()) {
    page += heading("試験プログラム") + resultTable(results) + heading("不合格の内容") +
            failureList(results) + heading("既知の違い") + differenceList(results);
  }
  return page + heading("質問と答え") + answerList(answers) + "</body></html>\n";
}

}  // namespace karvel
