#include <benchmark/benchmark.h>

#include <string>

#include "fakes/shop_world.h"
#include "ftp/remote_listing.h"

namespace karvel {
namespace {

/// One refresh of the remote listing; its cost follows what the folder holds.
void refreshListing(benchmark::State& state) {
  ShopWorld shop;
  shop.start();
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    shop.internet.folders["/"]["00345_" + std::to_string(240000 + i) + ".txt"] = "x";
  }
  McWinFTP clsFtp(shop.internet, [](std::int32_t, const std::string&) {});
  clsFtp.OpenSession();
  RemoteListing listing(shop.form(), clsFtp);
  for (auto _ : state) {
    listing.Ftp_ListFiles();
    shop.internet.calls.clear();
  }
  if (!listing.findFile("00345_240000.txt")) state.SkipWithError("the listing is not complete");
  state.SetComplexityN(state.range(0));
}
BENCHMARK(refreshListing)
    ->Arg(10)
    ->Arg(1000)
    ->Arg(10'000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oN);

}  // namespace
}  // namespace karvel
