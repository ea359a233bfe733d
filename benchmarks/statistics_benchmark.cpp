// From reception files to the delivered table, without a disk.

#include <benchmark/benchmark.h>

#include <sstream>
#include <string>

#include "fakes/shop_world.h"
#include "sample_receptions.h"
#include "text/path.h"

namespace karvel {
namespace {

constexpr const char* kDay = "240115";
constexpr int kDesks = 6;

std::string receptions(int count) {
  std::ostringstream text;
  sample::writeReceptions(text, sample::receptionsOfDay(count, 1));
  return text.str();
}

void putDesk(ShopWorld& shop, int desk, const std::string& content) {
  const std::string name = kDay + ("_" + std::to_string(desk)) + ".tmp";
  shop.files.files[joinPath(ShopWorld::path("temp"), name)].content = content;
}

void readDesk(benchmark::State& state) {
  ShopWorld shop;
  const std::string content = receptions(static_cast<int>(state.range(0)));
  putDesk(shop, 1, content);
  FakeProfile profile(shop.files);
  IniRedWrt settings(profile, shop.files, shop.clock);
  DeskReader reader(shop.files, settings, ShopWorld::kFolder);
  for (auto _ : state) benchmark::DoNotOptimize(reader.Read_DeskFile(kDay, 1));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(content.size()));
}
BENCHMARK(readDesk)->Arg(300)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

/// A whole unattended send run of a shop with six desks into its output folder.
void sendDay(benchmark::State& state) {
  ShopWorld shop;
  shop.setTicket("TASHIN INFOMATION", "SHINSATSU", std::to_string(kDesks - 1));
  for (int desk = 1; desk <= kDesks; ++desk) putDesk(shop, desk, receptions(300));
  shop.start();
  for (auto _ : state) {
    shop.form().TimerCount = 1800;
    shop.tick();
    shop.files.written.clear();
  }
  if (shop.content(ShopWorld::outPath("00345_240115.txt")).empty()) {
    state.SkipWithError("nothing was delivered");
  }
}
// The run log grows with every run.
BENCHMARK(sendDay)->Iterations(1000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace karvel
