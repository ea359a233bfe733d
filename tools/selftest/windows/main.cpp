#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "contract/scratch_folder.h"
#include "platform/inspection.h"
#include "platform/windows/system/wide_text.h"
#include "platform/windows/system/win32_files.h"
#include "selftest/page.h"
#include "selftest/windows/child_process.h"
#include "selftest/windows/machine_facts.h"
#include "selftest/windows/order.h"
#include "selftest/windows/questions.h"
#include "text/path.h"

// Runs the test programs that stand in the folder "programs" beside it, tries out the questions,
// each in a process of its own, and writes what came out of it as a page.

namespace karvel {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr int kAllPassed = 0;
constexpr int kSomeFailed = 1;
constexpr int kWrongUse = 2;

constexpr milliseconds kUsualLimit{10'000};  ///< what the program asks for
constexpr milliseconds kQuickLimit{500};
constexpr seconds kQuestionLimit{300};

constexpr const wchar_t* kRunOnce = L"Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce";

constexpr const char* kWelcome =
    "集計管理の自己試験をします。10分から30分かかります。\n"
    "終わると結果のページが開きます。それまで、キーボードとマウスに触れないでください。\n"
    "ファイアウォールの確認が出たら、「キャンセル」でかまいません。\n\n";

struct TestProgram {
  const char* name;
  const char* file;
  const char* filter;
  seconds limit;
  bool isLong = false;
};

/// The fault matrices use up the loopback's ports for a while: they are as far apart as can be.
constexpr std::array kPrograms{
    TestProgram{"転送の障害(Passive)", "contract_tests", "*SendRunFaults*/Passive", seconds(1800),
                true},
    TestProgram{"contract_tests", "contract_tests", "-*SendRunFaults*", seconds(900)},
    TestProgram{"desktop_tests", "desktop_tests", "*", seconds(600)},
    TestProgram{"転送の障害(Active)", "contract_tests", "*SendRunFaults*/Active", seconds(1800),
                true},
};

std::string programPath() {
  std::vector<wchar_t> path(0x8000);
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return fromWide({path.data(), length});
}

std::string folderOf(const std::string& path) {
  return path.substr(0, path.find_last_of(kSeparator));
}

class SelfTest {
 public:
  SelfTest(Inspection& inspection, Order order)
      : inspection_(inspection), order_(std::move(order)) {}

  int run();

 private:
  int answer(const Question& question);
  int registerForSignIn();
  int testAll();
  int reportSignIn();

  [[nodiscard]] std::vector<std::pair<std::string, std::string>> facts() const;
  void runPrograms(const std::string& scratch);
  void askQuestions(const std::string& scratch);
  /// Beside this program, or where this user may write.
  bool writePage();
  int finish();

  [[nodiscard]] milliseconds limit() const { return order_.quick ? kQuickLimit : kUsualLimit; }
  [[nodiscard]] std::string programs() const { return joinPath(folder_, "programs"); }

  Inspection& inspection_;
  Order order_;
  std::string folder_ = folderOf(programPath());
  std::string temporary_ = inspection_.temporaryFolder();  ///< before the tests get another one
  Page page_;
};

int SelfTest::run() {
  for (const Question& question : questions()) {
    if (order_.ask == question.name) return answer(question);
  }
  if (order_.wrong || !order_.ask.empty()) {
    inspection_.print(kUsage);
    return kWrongUse;
  }
  if (order_.afterSignIn) return registerForSignIn();
  return order_.signedIn ? reportSignIn() : testAll();
}

int SelfTest::answer(const Question& question) {
  const auto note = [this](const std::string& line) { inspection_.print(line + "\n"); };
  const std::string conclusion = question.ask(note, limit());
  note(std::string(kConclusion) + conclusion);
  return kAllPassed;
}

int SelfTest::registerForSignIn() {
  const std::wstring command = toWide("\"" + programPath() + "\" --signed-in");
  const auto size = static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t));
  const bool registered = RegSetKeyValueW(HKEY_CURRENT_USER, kRunOnce, L"karvel-selftest", REG_SZ,
                                          command.c_str(), size) == ERROR_SUCCESS;
  inspection_.print(registered
                        ? "登録しました。サインアウトして、もう一度サインインしてください。\n"
                          "2分ほどで結果のページが開きます。\n"
                        : "登録できません。\n");
  return registered ? kAllPassed : kWrongUse;
}

int SelfTest::reportSignIn() {
  order_.open = true;
  page_.facts = facts();
  Answer answer{"サインインのとき、通知領域のアイコンは出るか", "", {}};
  const auto note = [&](const std::string& line) { answer.observations.push_back(line); };
  answer.conclusion = askTrayIconAtSignIn(note, limit());
  page_.answers.push_back(std::move(answer));
  return finish();
}

int SelfTest::testAll() {
  if (!Win32Files().exists(programs())) {
    inspection_.print(
        "フォルダ「programs」がありません。zipファイルをすべて展開してから、"
        "もう一度実行してください。\n");
    Sleep(10'000);
    return kWrongUse;
  }
  inspection_.print(kWelcome);
  page_.facts = facts();
  {
    const ScratchFolder scratch("selftest");
    // For what the test programs leave when they are stopped.
    SetEnvironmentVariableW(L"TEMP", toWide(scratch.path()).c_str());
    SetEnvironmentVariableW(L"TMP", toWide(scratch.path()).c_str());
    runPrograms(scratch.path());
  }
  return finish();
}

std::vector<std::pair<std::string, std::string>> SelfTest::facts() const {
  std::string commit;
  std::ifstream(std::filesystem::path(toWide(joinPath(programs(), "commit")))) >> commit;
  auto facts = machineFacts();
  facts.insert(facts.begin(),
               {"版", std::string(KARVEL_VERSION) + (commit.empty() ? "" : " (" + commit + ")")});
  if (order_.quick) {
    facts.emplace_back("範囲", "--quick: 転送の障害は試さず、時間の制限は短くしました");
  }
  return facts;
}

void SelfTest::runPrograms(const std::string& scratch) {
  bool asked = false;
  for (const TestProgram& program : kPrograms) {
    if (program.isLong && order_.quick) continue;
    if (&program == &kPrograms.back()) {
      askQuestions(scratch);
      asked = true;
    }
    inspection_.print(std::string(program.name) + " ... ");
    const Ending ending = runChild(joinPath(programs(), std::string(program.file) + ".exe"),
                                   std::string("--gtest_color=no --gtest_filter=") + program.filter,
                                   joinPath(scratch, "output"), program.limit);
    page_.results.push_back(testResultOf(program.name, ending));
    const TestResult& result = page_.results.back();
    inspection_.print(std::to_string(result.passed) + "件合格、" +
                      std::to_string(result.failures.size()) + "件不合格 " + result.trouble + "\n");
  }
  if (!asked) askQuestions(scratch);
}

void SelfTest::askQuestions(const std::string& scratch) {
  for (const Question& question : questions()) {
    inspection_.print(std::string(question.text) + " ... ");
    const std::string arguments =
        std::string("--ask ") + question.name + (order_.quick ? " --quick" : "");
    const Ending ending =
        runChild(programPath(), arguments, joinPath(scratch, "output"), kQuestionLimit);
    page_.answers.push_back(answerOf(question.text, ending));
    inspection_.print(page_.answers.back().conclusion + "\n");
  }
}

bool SelfTest::writePage() {
  if (order_.report.empty()) {
    SYSTEMTIME time{};
    GetLocalTime(&time);
    std::array<char, 64> name{};
    std::snprintf(name.data(), name.size(), "karvel-selftest-%04d%02d%02d-%02d%02d.html",
                  time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute);
    order_.report = joinPath(folder_, name.data());
  }
  const std::string html = page_.html();
  if (Win32Files().write(order_.report, html)) return true;
  const std::string name = order_.report.substr(order_.report.find_last_of(kSeparator) + 1);
  order_.report = joinPath(temporary_, name);
  return Win32Files().write(order_.report, html);
}

int SelfTest::finish() {
  if (!writePage()) {
    inspection_.print("結果を書き込めません: " + order_.report + "\n");
    return kWrongUse;
  }
  inspection_.print("\n" + page_.summary() + "\n結果: " + order_.report + "\n");
  if (order_.open) static_cast<void>(inspection_.openForUser(order_.report));
  return page_.good() ? kAllPassed : kSomeFailed;
}

}  // namespace
}  // namespace karvel

int main(int argc, char** argv) {
  // A test program that crashes asks nobody.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
  const auto inspection = karvel::makeInspection();
  auto order = karvel::orderOf(inspection->arguments(argc, argv));
  return karvel::SelfTest(*inspection, std::move(order)).run();
}
