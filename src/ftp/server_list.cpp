#include "ftp/server_list.h"

#include "text/code_page.h"
#include "text/line_splitter.h"
#include "text/numeric_value.h"
#include "text/path.h"
#include "text/strings.h"
#include "ui/configured_values.h"

namespace karvel {
namespace {

constexpr std::size_t kNumberLength = 4;

}  // namespace

ServerList::ServerList(Files& files, IniRedWrt& settings, const std::string& programFolder)
    : files_(files), settings_(settings), path_(joinPath(programFolder, "kvserver.ini")) {
}

void ServerList::LoadServerList() {
  FtpServerHost = configured::kServiceHost;
  MailDomain = configured::kServiceDomain;
  FtpDomain = configured::kServiceDomain;

  LineSplitter lines;
  const auto take = [this](std::string_view line) { takeLine(fromCodePage932(line)); };
  const bool complete =
      files_.readPieces(path_, [&](std::string_view piece) { lines.feed(piece, take); });
  if (!complete) return;  // no list, or an unreadable rest: what has been read holds
  lines.finish(take);

  updateDomain(ticket::kMailDomain, MailDomain);
  updateDomain(ticket::kDomain, FtpDomain);
}

void ServerList::takeLine(const std::string& line) {
  if (characterCount(line) <= kNumberLength) return;
  const std::string_view number = firstCharacters(line, kNumberLength);
  const std::string value = line.substr(firstCharacters(line, kNumberLength + 1).size());
  if (trimmed(value).empty()) return;

  const double entry = numericValue(number);
  if (entry == 3) MailDomain = value;
  if (entry == 4) FtpServerHost = value;
  if (entry == 5) FtpDomain = value;
}

void ServerList::updateDomain(const TicketKey& key, const std::string& domain) {
  const std::string current = settings_.read(key);
  if (trimmed(current).empty() || trimmed(current) == trimmed(domain)) return;
  settings_.write(key, trimmed(domain));
}

}  // namespace karvel
