#include <algorithm>
#include <array>
#include <cstdio>
#include <future>

#include "selftest/windows/ftp_probe.h"
#include "selftest/windows/questions.h"

namespace karvel {
namespace {

using std::chrono::milliseconds;

/// What one listing shows, beside what it should; false when it does not come from the server.
bool tryListing(FtpProbe& probe, const std::string& expected, const Note& note,
                const std::string& when) {
  const std::string names = probe.list();
  const auto commands = probe.server().takeTranscript();
  note(when + ": 一覧「" + names + "」、サーバーの中身「" + expected + "」、命令 " +
       joined(commands));
  const auto listings = std::count_if(commands.begin(), commands.end(), [](const auto& command) {
    return command.starts_with("LIST");
  });
  return names == expected && listings == 1;
}

std::string hex(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    std::array<char, 4> digits{};
    std::snprintf(digits.data(), digits.size(), "%02X ", static_cast<unsigned char>(c));
    text += digits.data();
  }
  return text;
}

/// Where two texts part, and the bytes from there on.
std::string difference(const std::string& sent, const std::string& received) {
  constexpr std::size_t kShown = 24;
  std::size_t at = 0;
  while (at < sent.size() && at < received.size() && sent[at] == received[at]) ++at;
  return std::to_string(at) + "バイト目から違う。送った " + hex(sent.substr(at, kShown)) +
         "/ 返った " + hex(received.substr(at, kShown));
}

/// Where the data connection of a passive transfer goes whose reply names another address than the
/// session's. Both addresses are this machine's own.
std::string tryPassiveAddress(const Note& note, milliseconds limit) {
  const TestSocket named = TestSocket::listen(TestSocket::kOther);
  const TestSocket peer = TestSocket::listen(TestSocket::kIpv4, named.port());
  FtpProbe probe(limit);
  const std::string port =
      std::to_string(named.port() / 256) + "," + std::to_string(named.port() % 256);
  const std::string reply = "227 Entering Passive Mode (127,0,0,2," + port + ").";
  probe.server().on("PASV", ScriptedFtpServer::kEvery, {FtpFault::kReplaceReply, reply});
  if (!probe.connect()) return "接続できません: " + failureOf(probe.internet());
  auto listing = std::async(std::launch::async, [&] { return probe.list(); });
  const bool toNamed = named.accept(limit).valid();
  const bool toPeer = !toNamed && peer.accept(milliseconds(100)).valid();
  const std::string outcome = listing.get();
  note("127.0.0.1に接続し、返事は「" + reply + "」");
  note(std::string("データ接続の相手: ") +
       (toNamed  ? "127.0.0.2"
        : toPeer ? "127.0.0.1"
                 : "どちらでもない") +
       "、一覧は「" + outcome + "」");
  note("命令: " + joined(probe.server().takeTranscript()));
  probe.disconnect();
  if (toNamed) return "227の返事のアドレスへ接続します。";
  return toPeer ? "227の返事のアドレスではなく、接続している相手のアドレスへ接続します。"
                : "227の返事に別のアドレスがあると、接続しません。";
}

bool tryIpv6(const Note& note, milliseconds limit, std::uint32_t flags, const std::string& mode) {
  FtpProbe probe(limit, TestSocket::kIpv6);
  probe.server().add("/a.txt", "a");
  if (!probe.connect(flags)) {
    note("::1、" + mode + ": 接続できない、" + failureOf(probe.internet()));
    return false;
  }
  const std::string names = probe.list();
  note("::1、" + mode + ": 一覧「" + names + "」");
  note("命令: " + joined(probe.server().takeTranscript()));
  probe.disconnect();
  return names == "a.txt";
}

}  // namespace

std::string askListingCache(const Note& note, milliseconds limit) {
  FtpProbe probe(limit);
  probe.server().add("/a.txt", "a");
  if (!probe.connect()) return "接続できません: " + failureOf(probe.internet());
  bool fresh = tryListing(probe, "a.txt", note, "1回目");
  probe.server().add("/b.txt", "b");
  fresh = tryListing(probe, "a.txt, b.txt", note, "同じ接続で2回目") && fresh;
  probe.disconnect();
  probe.server().add("/c.txt", "c");
  if (!probe.connect()) return "2度目は接続できません: " + failureOf(probe.internet());
  fresh = tryListing(probe, "a.txt, b.txt, c.txt", note, "新しい接続で") && fresh;
  static_cast<void>(probe.internet().deleteFile(probe.session(), "a.txt"));
  fresh = tryListing(probe, "b.txt, c.txt", note, "削除のあと") && fresh;
  probe.disconnect();
  return fresh ? "どの一覧もサーバーから来ました。"
               : "サーバーから来なかったか、中身と違う一覧があります。";
}

std::string askPassiveMode(const Note& note, milliseconds limit) {
  const std::string address = tryPassiveAddress(note, limit);
  const bool passive = tryIpv6(note, limit, Internet::kFlagPassive, "Passive");
  const bool active = tryIpv6(note, limit, 0, "Active");
  const auto can = [](bool works) { return works ? "使えます" : "使えません"; };
  return address + "IPv6は、Passiveで" + can(passive) + "、Activeで" + can(active) + "。";
}

std::string askRefusals(const Note& note, milliseconds limit) {
  const std::string katakana = "\x83\x5C\x83\x74\x83\x67";  // code page 932
  const std::pair<const char*, std::string> replies[] = {
      {"1行", "550 No such file."},
      {"複数行", "550-First line\r\n550-Second line\r\n550 Last line."},
      {"Shift-JIS", "550 " + katakana},
      {"UTF-8", "550 ソフト"},
      {"300バイト", "550 " + std::string(296, 'x')},
      {"2000バイト", "550 " + std::string(1996, 'x')},
      {"別の番号", "553 Not allowed."},
  };
  FtpProbe probe(limit);
  if (!probe.connect()) return "接続できません: " + failureOf(probe.internet());
  int count = 0;
  int same = 0;
  for (const auto& [name, reply] : replies) {
    probe.server().on("DELE", ++count, {FtpFault::kRefuse, reply});
    const bool deleted = probe.internet().deleteFile(probe.session(), "x");
    const auto number = probe.internet().lastError();
    const Internet::Response response = probe.internet().lastResponse();
    std::string line = std::string(name) + ": 結果 " + (deleted ? "成功" : "失敗") + "、エラー" +
                       std::to_string(number) + "、返事の番号 " + std::to_string(response.number) +
                       "、" + std::to_string(reply.size()) + "バイト送り" +
                       std::to_string(response.text.size()) + "バイト返った。";
    const bool whole = response.text == reply || response.text == reply + "\r\n";
    same += whole ? 1 : 0;
    note(line + (whole ? "送ったとおり" : difference(reply, response.text)));
  }
  probe.disconnect();
  return std::to_string(count) + "通りのうち" + std::to_string(same) +
         "通りで、サーバーの文が1バイトも変わらずに返りました。";
}

}  // namespace karvel
