#include "app/shop_check.h"

#include "app/headless_desktop.h"
#include "app/program.h"
#include "check/folder_findings.h"
#include "check/log_findings.h"
#include "check/site_findings.h"
#include "check/start_findings.h"
#include "check/ticket_findings.h"
#include "text/path.h"

namespace karvel {
namespace {

/// Owned by the rehearsed program's platform, and by nobody else.
template <typename Port, typename... Arguments>
Port& put(auto& place, Arguments&&... arguments) {
  auto made = std::make_unique<Port>(arguments...);
  Port& port = *made;
  place = std::move(made);
  return port;
}

std::string manualAddress(const std::string& programFolder, Files& files) {
  const std::string page = joinPath(joinPath(programFolder, "karvel-manual"), "trouble.ja.html");
  if (!files.exists(page)) return {};
  std::string address = page.starts_with('/') ? "file://" : "file:///";
  for (const char c : page) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = byte > ' ' && byte < 0x7F &&
                       std::string_view("%#?\\\"<>").find(c) == std::string_view::npos;
    if (c == '\\') {
      address += '/';
    } else if (plain) {
      address += c;
    } else {
      address.append("%").append(1, kHex[byte / 16]).append(1, kHex[byte % 16]);
    }
  }
  return address;
}

}  // namespace

Report checkShop(Platform& real, Inspection& inspection, bool probe) {
  Platform rehearsal;
  rehearsal.programFolder = real.programFolder;
  put<HastyClock>(rehearsal.clock, *real.clock);
  auto& unchanging = put<UnchangingFiles>(rehearsal.files, *real.files);
  put<UnchangingProfile>(rehearsal.profile, *real.profile);
  auto& internet = put<WatchedInternet>(rehearsal.internet, *real.internet, inspection);
  put<UnlockedInstance>(rehearsal.instance);
  put<UnseenDesktop>(rehearsal.desktop);

  Program program(rehearsal);
  const bool resident = program.start() == StartOutcome::kResident;
  IniRedWrt settings(*rehearsal.profile, unchanging, *rehearsal.clock);
  RunLog log(unchanging, *rehearsal.clock, real.programFolder);
  settings.locateOwnIni(real.programFolder);
  settings.locateTicketIni(real.programFolder);
  Shop shop{real.programFolder, resident, probe,    *real.files, *real.clock,       inspection,
            unchanging,         internet, settings, log,         program.mainForm()};

  Findings findings;
  findSettings(shop, findings);
  findTicketApplication(shop, findings);
  findProgramFolder(shop, findings);
  findOutputFolder(shop, findings);
  findSite(shop, findings);
  findStart(shop, findings);

  Report report;
  report.log = lastLogLines(shop);
  findRuns(shop, report.log, findings);
  report.findings = std::move(findings.all);
  report.settings = shownSettings(shop);
  const DateTime now = real.clock->now();
  report.facts = {{"フォルダ", real.programFolder},
                  {"日時", formatDate(now) + " " + formatTime(now)},
                  {"システム", inspection.systemName()}};
  if (const auto codePage = inspection.codePage()) {
    report.facts.emplace_back("コードページ", std::to_string(*codePage));
  }
  report.manual = manualAddress(real.programFolder, *real.files);
  return report;
}

}  // namespace karvel
