#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <memory>
#include <thread>

#include "contract/scratch_folder.h"
#include "platform/ftp_time_limits.h"
#include "selftest/windows/ftp_probe.h"
#include "selftest/windows/questions.h"

namespace karvel {
namespace {

using std::chrono::milliseconds;
using SteadyClock = std::chrono::steady_clock;

constexpr milliseconds kMargin{5000};
constexpr std::size_t kUpload = 2'000'000;  ///< bytes, more than the buffers on the way take

struct SlowServer {
  enum class Call : std::uint8_t { kConnect, kFolder, kList, kPut };

  const char* what;
  Call call;
  const char* command;
  FtpFault fault;
  milliseconds expected;
};

std::string seconds(milliseconds time) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f秒", static_cast<double>(time.count()) / 1000);
  return text;
}

/// One call to a server that takes its time, in a thread of its own.
class SlowCall {
 public:
  SlowCall(const SlowServer& server, milliseconds limit, const std::string& upload)
      : server_(server), probe_(std::make_shared<FtpProbe>(limit)) {
    probe_->server().on(server.command, 1, server.fault);
    result_ = std::async(std::launch::async, [call = server.call, probe = probe_, upload] {
      return timeCall(call, *probe, upload);
    });
  }

  /// Notes how long it took; true when that was about what was asked for.
  bool finish(const Note& note) {
    const milliseconds patience = 2 * server_.expected + kMargin;
    if (result_.wait_until(begin_ + patience) == std::future_status::timeout) {
      note(std::string(server_.what) + ": 予定 " + seconds(server_.expected) + "、" +
           seconds(patience) + "たっても戻らないので、サーバーを止めた");
      probe_->endServer();
      note("    止めたあと " + result_.get().text);
      return false;
    }
    const Outcome outcome = result_.get();
    note(std::string(server_.what) + ": 予定 " + seconds(server_.expected) + "、実際 " +
         outcome.text);
    return outcome.time < server_.expected * 3 / 2 + milliseconds(1000);
  }

 private:
  struct Outcome {
    milliseconds time;
    std::string text;
  };

  static Outcome timeCall(SlowServer::Call call, FtpProbe& probe, const std::string& upload) {
    auto begin = SteadyClock::now();
    bool done = probe.connect();
    if (call != SlowServer::Call::kConnect && done) {
      begin = SteadyClock::now();
      done = callOf(call, probe, upload);
    }
    const auto time = std::chrono::duration_cast<milliseconds>(SteadyClock::now() - begin);
    return {time, seconds(time) + " (" + (done ? "成功" : failureOf(probe.internet())) + ")"};
  }

  static bool callOf(SlowServer::Call call, FtpProbe& probe, const std::string& upload) {
    Internet& internet = probe.internet();
    if (call == SlowServer::Call::kPut) {
      return internet.putFile(probe.session(), upload, "x", Internet::kTransferBinary);
    }
    if (call == SlowServer::Call::kFolder) {
      return internet.currentDirectory(probe.session()).has_value();
    }
    Internet::FindData entry;
    return internet.findFirst(probe.session(), "*.*", entry) != 0;
  }

  const SlowServer& server_;
  std::shared_ptr<FtpProbe> probe_;
  SteadyClock::time_point begin_ = SteadyClock::now();
  std::future<Outcome> result_;
};

}  // namespace

std::string askTimeLimits(const Note& note, milliseconds limit) {
  using Call = SlowServer::Call;
  const FtpTimeLimits limits{limit, limit};
  const milliseconds pause = limit / 3;
  const SlowServer servers[] = {
      {"あいさつしない",
       Call::kConnect,
       ScriptedFtpServer::kGreeting,
       {FtpFault::kStall},
       limits.answer},
      {"PWDに答えない", Call::kFolder, "PWD", {FtpFault::kStall}, limits.answer},
      {"返事が終わらない",
       Call::kFolder,
       "PWD",
       {FtpFault::kEndlessReply, "257-and\r\n", pause},
       limits.exchange()},
      {"一覧が途中で止まる",
       Call::kList,
       "LIST",
       {.kind = FtpFault::kStallTransfer, .bytes = 10},
       limits.silence()},
      {"一覧が終わらない",
       Call::kList,
       "LIST",
       {FtpFault::kEndlessListing, "-rw-r--r-- 1 a b 1 Jan 01  2024 x\r\n", pause},
       limits.exchange()},
      {"受信が途中で止まる",
       Call::kPut,
       "STOR",
       {.kind = FtpFault::kStallTransfer, .bytes = 10},
       limits.silence()},
      {"データのポートが答えない", Call::kList, "PASV", {FtpFault::kSilentPort}, limits.connect},
  };
  note("求めた制限: 接続 " + seconds(limits.connect) + "、返事 " + seconds(limits.answer) +
       "、転送の沈黙 " + seconds(limits.silence()) + "、1回の呼び出し " +
       seconds(limits.exchange()));
  const ScratchFolder folder;
  const std::string upload = folder.add("upload.bin", std::string(kUpload, 'x'));
  std::vector<std::unique_ptr<SlowCall>> calls;
  for (const SlowServer& server : servers) {
    calls.push_back(std::make_unique<SlowCall>(server, limit, upload));
  }
  const auto inTime = std::count_if(calls.begin(), calls.end(),
                                    [&](const auto& call) { return call->finish(note); });
  return std::to_string(calls.size()) + "通りのうち" + std::to_string(inTime) +
         "通りが、予定の時間(その1.5倍まで)に戻りました。";
}

}  // namespace karvel
