#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <iostream>
#include <map>
#include <mutex>
#include <regex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "contract/known_differences.h"
#include "contract/site_shop.h"
#include "text/strings.h"

// A complete send run that replaces both its files, broken at every command that it sends in every
// way that a server or the network can break it.

namespace karvel {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kShortLimit{300};
constexpr milliseconds kPatience{10'000};
constexpr milliseconds kLongestRun{60'000};  ///< however busy the machine is
constexpr int kAttempts = 4;                 ///< to reach a fault within short limits

const std::string kFolder = std::string("/") + SiteShop::kSiteFolder + "/";
const std::vector<std::string> kNames{SiteShop::kShopInfo, SiteShop::kTable};

/// A command of the run: its place in the transcript (the greeting's is -1), and the how-manieth of
/// its name it is; or every one of its name, from the first one's place.
struct Moment {
  int place;
  std::string command;
  int occurrence;
  bool last = true;  ///< of its name
};

struct Fault {
  enum class Effect : std::uint8_t {
    kNone,       ///< the run must not notice
    kEndsAfter,  ///< the session is over once the command has been answered
    kEnds,       ///< the session is over without an answer
    kOpen,       ///< it depends on the command what this does
  };

  const char* name;
  FtpFault fault;
  Effect effect;
  milliseconds limit;
  /// How the reason of the run begins, where it gives one: a regular expression.
  std::string reason;
  /// The commands that it can happen to, where it is not every one.
  std::set<std::string> commands{};
  bool standsForItsKind = false;
};

using Effect = Fault::Effect;

const std::set<std::string> kTransfers{"LIST", "STOR"};
/// The next connect may be the first to find out.
const std::string kLost = "1203[01]/|12029/";

const std::vector<Fault>& faults() {
  static const std::vector<Fault> all{
      {"421", FtpFault::refuse("421 Closing."), Effect::kOpen, kPatience, "12003/421 Closing."},
      {"450", FtpFault::refuse("450 Busy."), Effect::kOpen, kPatience, "12003/450 Busy."},
      {"550", FtpFault::refuse("550 No."), Effect::kOpen, kPatience, "12003/550 No.", {}, true},
      {"dropped before", FtpFault::dropBefore(), Effect::kEnds, kPatience, kLost, {}, true},
      {"dropped after", FtpFault::dropAfter(), Effect::kEndsAfter, kPatience, kLost},
      {"reset", FtpFault::reset(), Effect::kEnds, kPatience, kLost},
      {"late", FtpFault::delay(2 * kShortLimit), Effect::kEnds, kShortLimit, "12002/"},
      {"silent", FtpFault::stall(), Effect::kEnds, kShortLimit, "12002/"},
      {"endless", FtpFault::endlessReply("200-and\r\n", milliseconds{5}), Effect::kEnds,
       kShortLimit, "12002/"},
      {"no code", FtpFault::replaceReply("\xFF\x01 what?"), Effect::kEnds, kPatience, "12003/"},
      {"other code", FtpFault::replaceReply("299 (,,,,,) \"|||"), Effect::kOpen, kPatience,
       "12003/299"},
      {"byte by byte", FtpFault::splitReply(), Effect::kNone, kPatience, ""},
      {"cut", FtpFault::cutTransfer(10), Effect::kOpen, kPatience, "12003/426", kTransfers, true},
      {"dropped within", FtpFault::dropTransfer(10), Effect::kEnds, kPatience, kLost, kTransfers},
      {"silent within", FtpFault::stallTransfer(10), Effect::kEnds, kShortLimit, "12002/",
       kTransfers},
      {"dribbled",
       FtpFault::endlessTransfer("-rw-r--r-- 1 a b 1 Jan 01  2024 x\r\n", kShortLimit),
       Effect::kEnds,
       kShortLimit,
       "12002/",
       {"LIST"}},
      {"refused after 150", FtpFault::refuse("150 Opening.\r\n425 Cannot open."), Effect::kOpen,
       kPatience, "12003/425", kTransfers},
      {"refused port", FtpFault::refusedPort(), Effect::kOpen, kPatience, "12029/", {"PASV"}, true},
      {"silent port", FtpFault::silentPort(), Effect::kEnds, kShortLimit, "12002/", {"PASV"}},
      {"no address",
       FtpFault::replaceReply("227 Entering Passive Mode."),
       Effect::kOpen,
       kPatience,
       "12003/227",
       {"PASV"}},
      {"foreign address", FtpFault::foreignAddress(), Effect::kNone, kPatience, "", {"PASV"}},
      {"stranger", FtpFault::stranger(), Effect::kNone, kPatience, "", {"PORT"}},
  };
  return all;
}

/// What the run log tells of one run.
struct RunReport {
  bool wellFormed = false;  ///< the lines of one run in their order, and no others
  bool connected = false;
  bool shopInfo = false;   ///< delivered
  bool table = false;      ///< likewise
  std::string lastStatus;  ///< what the status line must show; "" when the log cannot tell
};

/// As the last failure is kept: nothing, or 128 characters, a number and "/" first.
bool isFailureText(const std::string& text) {
  static const std::regex kBeginning("[0-9]+/[^ ]");
  constexpr auto kFromTheStart = std::regex_constants::match_continuous;
  return text.empty() ||
         (characterCount(text) == 128 && std::regex_search(text, kBeginning, kFromTheStart));
}

RunReport reportOf(const std::string& log) {
  const std::string stamp = "2024/01/15 09:05:07\t";
  const std::string line = "\r\n" + stamp + "HS-FTP:";
  const std::string file = "(" + line + "RenameFile" + line + "PutFile OK)?(?:\r\n" + stamp +
                           "HS-(FTP:(?:PutFile|Rename) NG (.*)))?";
  const std::regex run(stamp + "HS-FTP:-{24} Snd Start(" + line + "-{29} Make_Csv2Send Start" +
                       line + "-{34} Ftp_ShopFold Start" + file + line + "-{34} Ftp_ShopFold Exit" +
                       file + line + "-{29} Make_Csv2Send Exit)?" + line + "-{24} Snd Exit\r\n");
  RunReport report;
  std::smatch part;
  report.wellFormed = std::regex_match(log, part, run);
  if (!report.wellFormed) return report;
  report.connected = part[1].matched;
  const auto delivered = [&](std::size_t group) {
    if (part[group].matched) report.lastStatus = "FTP:PutFile OK";
    if (part[group + 1].matched) report.lastStatus = part[group + 1];
    report.wellFormed = report.wellFormed && isFailureText(part[group + 2]);
    return part[group].matched;
  };
  report.shopInfo = delivered(2);
  report.table = delivered(5);
  return report;
}

/// Folders and files as they are before a run.
void furnish(RemoteTree& tree) {
  for (const std::string& name : kNames) tree.addFile(kFolder + name, "old " + name + "\r\n");
}

/// A run without faults: what it says to the server, and what it leaves there.
struct Model {
  bool passive = true;
  std::vector<Moment> moments;
  std::map<std::string, std::string> files;
  int lastListing = 0;
};

Model modelRun(bool passive) {
  ScriptedFtpServer server;
  furnish(server.tree());
  SiteShop shop(server);
  shop.setPassive(passive);
  shop.start();
  shop.send();

  Model model;
  model.passive = passive;
  model.moments.push_back({-1, ScriptedFtpServer::kGreeting, 1});
  std::map<std::string, int> counts{{ScriptedFtpServer::kGreeting, 1}};
  for (const std::string& line : server.transcript()) {
    const int place = static_cast<int>(model.moments.size()) - 1;
    const std::string command = line.substr(0, line.find(' '));
    model.moments.push_back({place, command, ++counts[command]});
    if (command == "LIST") model.lastListing = place;
  }
  for (Moment& moment : model.moments) moment.last = moment.occurrence == counts[moment.command];
  const std::size_t most = differsHere(Difference::kSendsMoreCommands) ? 48 : 40;
  EXPECT_LE(model.moments.size(), most) << "each costs a slow line a round trip";
  // What happens to every data connection is another matter than what happens to one.
  for (const Moment& moment : model.moments) {
    if (moment.command != (passive ? "PASV" : "PORT")) continue;
    model.moments.push_back({moment.place, moment.command, ScriptedFtpServer::kEvery, false});
    break;
  }
  for (const std::string& name : kNames) {
    model.files[name] = server.tree().content(kFolder + name).value_or("");
  }
  EXPECT_TRUE(reportOf(shop.takeLog()).table);
  return model;
}

/// Where a library has numbers of its own for a connection that is lost.
bool reasonsDiffer() {
  return differsHere(Difference::kLostConnectionHasOtherNumbers);
}

/// One fault at one moment: a run that meets it, then a run that does not.
class FaultCase {
 public:
  FaultCase(const Model& model, const Moment& moment, const Fault& fault)
      : model_(model), moment_(moment), fault_(fault) {
    furnish(server_.tree());
    server_.on(moment.command, moment.occurrence, fault.fault);
    shop_.longestLimit = static_cast<std::uint32_t>(fault.limit.count());
    shop_.setPassive(model.passive);
    shop_.start();
  }

  /// False when the run broke off before its fault, because the machine was slow.
  [[nodiscard]] bool meetFault() {
    const auto begin = Clock::now();
    shop_.send();
    elapsed_ = Clock::now() - begin;
    report_ = reportOf(shop_.takeLog());
    const auto lines = server_.transcript();
    return static_cast<int>(lines.size()) > moment_.place;
  }

  void check() {
    checkReport();
    checkOutcome();
    checkServer();
    server_.behave();
    checkNextRun();
  }

  [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }

 private:
  void expect(bool holds, const std::string& problem) {
    if (holds) return;
    problems_.push_back(moment_.command + " " + std::to_string(moment_.occurrence) + ", " +
                        fault_.name + ": " + problem + ", status " +
                        shop_.form().MsgLabel.caption());
  }

  /// Log, status line, flag, icon and tick counter tell one story.
  void checkReport() {
    const std::string& status = shop_.form().MsgLabel.caption();
    // What a server says, or that it is gone, needs no waiting; Wine alone needs its time.
    const bool waits = fault_.limit != kPatience || differsHere(Difference::kTimeLimitsDoNotHold);
    expect(elapsed_ < (waits ? kLongestRun : kPatience), "took too long");
    expect(report_.wellFormed, "the log is out of order");
    if (report_.connected) {
      expect(status == report_.lastStatus, "status line and log differ");
    } else {
      const std::string openNg = "FTP:OPEN NG ";
      const bool noFolder = status == "指定フォルダがありません";
      expect(noFolder || (status.starts_with(openNg) && isFailureText(status.substr(12))),
             "no reason on the status line");
    }
    checkReason(status);
    const bool succeeded = report_.table;
    expect(shop_.own("FTP CHKF") == (succeeded ? "1" : "0"), "flag");
    expect(shop_.desktop.tray == (succeeded ? TrayImage::kNormal : TrayImage::kFailure), "icon");
    expect(shop_.form().SndNG == !succeeded, "SndNG");
    expect(shop_.form().TimerCount == (succeeded ? 0 : -150), "tick counter");
    expect(shop_.desktop.messageBoxes.empty(), "a message box");
    expect(shop_.isTidy(), "a local file is left");
  }

  /// A number on the status line is the fault's own.
  void checkReason(const std::string& status) {
    const auto number = status.find(" NG ");
    if (number == std::string::npos || reasonsDiffer()) return;
    const std::string reason = status.substr(number + std::string(" NG ").size());
    expect(std::regex_search(reason, std::regex("^(" + fault_.reason + ")")), "a false reason");
  }

  void checkOutcome() {
    const bool late = fault_.effect == Effect::kEndsAfter ? moment_.place >= model_.lastListing
                                                          : moment_.place > model_.lastListing;
    if (fault_.effect == Effect::kNone) {
      expect(report_.table, "a harmless fault fails the run");
    } else if (fault_.effect != Effect::kOpen && !late) {
      expect(!report_.table, "success without a session");
    } else if (late && fault_.limit == kPatience) {
      expect(report_.table, "what comes after the delivery fails the run");
    }
  }

  /// Whole files or none, and new ones where the run says so.
  void checkServer() {
    for (const std::string& name : kNames) {
      const auto content = server_.tree().content(kFolder + name);
      const bool isNew = content == model_.files.at(name);
      expect(!content || isNew || content == "old " + name + "\r\n", "a part of " + name);
      // When its change of folder has failed, a run goes on where it is.
      const auto astray = server_.tree().content("/" + name);
      expect(!astray || (moment_.command == "CWD" && astray == model_.files.at(name)),
             name + " in the login folder");
      const bool sent = name == SiteShop::kTable ? report_.table : report_.shopInfo;
      expect(!sent || isNew || astray, name + " is not there");
    }
  }

  void checkNextRun() {
    shop_.longestLimit = static_cast<std::uint32_t>(kPatience.count());
    shop_.send();
    report_ = reportOf(shop_.takeLog());
    expect(report_.table && report_.shopInfo, "the next run fails");
    checkReport();
    for (const std::string& name : kNames) {
      expect(server_.tree().content(kFolder + name) == model_.files.at(name),
             "the next run leaves no new " + name);
    }
    expect(server_.tree().entries(std::string("/") + SiteShop::kSiteFolder).size() == kNames.size(),
           "the next run leaves more than its files");
    expect(server_.connections() == 2, "connections");
  }

  const Model& model_;
  const Moment& moment_;
  const Fault& fault_;
  ScriptedFtpServer server_;
  SiteShop shop_{server_};
  RunReport report_;
  Clock::duration elapsed_{};
  std::vector<std::string> problems_;
};

struct Cell {
  const Moment& moment;
  const Fault& fault;
};

/// Where the library keeps no time limits and is slow, faults that end by themselves, at each
/// command's first and last time.
bool isTried(const Moment& moment, const Fault& fault) {
  if (!differsHere(Difference::kTimeLimitsDoNotHold)) return true;
  return fault.standsForItsKind && (moment.occurrence == 1 || moment.last);
}

std::vector<Cell> cellsOf(const Model& model) {
  std::vector<Cell> cells;
  for (const Moment& moment : model.moments) {
    for (const Fault& fault : faults()) {
      const bool applies = fault.commands.empty() || fault.commands.contains(moment.command);
      if (applies && isTried(moment, fault)) cells.push_back({moment, fault});
    }
  }
  return cells;
}

std::vector<std::string> problemsOf(const Model& model, const Cell& cell) {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    FaultCase faultCase(model, cell.moment, cell.fault);
    if (!faultCase.meetFault()) continue;
    faultCase.check();
    return faultCase.problems();
  }
  return {cell.moment.command + ", " + cell.fault.name + ": never reached"};
}

/// With time limits most cases spend their time waiting.
int casesSideBySide() {
  return differsHere(Difference::kTimeLimitsDoNotHold) ? 2 : 12;
}

class SendRunFaults : public ::testing::TestWithParam<bool> {};

TEST_P(SendRunFaults, AtEveryCommandLeaveWholeFilesAndATrueReport) {
  const Model model = modelRun(GetParam());
  const std::vector<Cell> cells = cellsOf(model);
  std::atomic<std::size_t> next = 0;
  std::mutex mutex;
  std::vector<std::string> problems;
  const auto work = [&] {
    for (std::size_t i = next++; i < cells.size(); i = next++) {
      const auto found = problemsOf(model, cells[i]);
      const std::lock_guard lock(mutex);
      problems.insert(problems.end(), found.begin(), found.end());
    }
  };
  std::vector<std::thread> workers;
  for (int i = 0; i < casesSideBySide(); ++i) workers.emplace_back(work);
  for (std::thread& worker : workers) worker.join();

  std::cout << "fault matrix: " << model.moments.size() << " moments, " << cells.size()
            << " cases\n";
  RecordProperty("cases", static_cast<int>(cells.size()));
  for (const std::string& problem : problems) ADD_FAILURE() << problem;
}

INSTANTIATE_TEST_SUITE_P(Modes, SendRunFaults, ::testing::Bool(),
                         [](const auto& mode) { return mode.param ? "Passive" : "Active"; });

}  // namespace
}  // namespace karvel
