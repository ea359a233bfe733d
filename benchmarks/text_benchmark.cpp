#include <benchmark/benchmark.h>

#include <string>

#include "text/code_page.h"
#include "text/numeric_value.h"

namespace karvel {
namespace {

std::string repeated(const std::string& text, int count) {
  std::string whole;
  for (int i = 0; i < count; ++i) whole += text;
  return whole;
}

/// A row of a table, so many times.
std::string tableRows(std::int64_t count) {
  return repeated(
      "2024/01/15\t09:05:07\t12\t北陸グループ\t00345\t能登表町店\t1\t総合受付\t293\t27\r\n",
      static_cast<int>(count));
}

void encode(benchmark::State& state) {
  const std::string text = tableRows(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(toCodePage932(text));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(encode)->Arg(1)->Arg(1000);

void decode(benchmark::State& state) {
  const std::string bytes = toCodePage932(tableRows(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(fromCodePage932(bytes));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK(decode)->Arg(1)->Arg(1000);

/// Characters without a counterpart, alone and between others.
void encodeUnmappable(benchmark::State& state) {
  const std::string text = repeated(state.range(0) == 0 ? "\u00E9" : "\u00E9能", 20'000);
  for (auto _ : state) benchmark::DoNotOptimize(toCodePage932(text));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(encodeUnmappable)->Arg(0)->Arg(1);

void decodeIllFormed(benchmark::State& state) {
  const std::string bytes = repeated(state.range(0) == 0 ? "\x81\x20" : "\x81\x20\x94\x5C", 20'000);
  for (auto _ : state) benchmark::DoNotOptimize(fromCodePage932(bytes));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK(decodeIllFormed)->Arg(0)->Arg(1);

void readNumber(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(numericValue("00345"));
}
BENCHMARK(readNumber);

}  // namespace
}  // namespace karvel
