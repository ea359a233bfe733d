// Reads one desk's reception file with the program's own reader: read_desk PROGRAM_FOLDER DAY DESK
// prints the figures in the order of the table, then seconds and peak memory in KiB.

#include <chrono>
#include <fstream>
#include <iostream>
#include <string>

#include "contract/ports.h"
#include "fakes/fake_clock.h"
#include "stats/desk_reader.h"

namespace {

void printFigures(const karvel::DeskFigures& figures) {
  std::cout << figures.handled << " " << figures.unhandled << " " << figures.mail << " "
            << figures.reservations;
  for (const int count : figures.band) std::cout << " " << count;
  std::cout << " " << figures.averageWait << " " << figures.longestWait << " "
            << figures.callInterval << "\n";
}

/// 0 where the system does not tell it in this way.
long peakMemoryKib() {
  std::ifstream status("/proc/self/status");
  const std::string label = "VmHWM:";
  for (std::string word; status >> word;) {
    if (word != label) continue;
    long kib = 0;
    status >> kib;
    return kib;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  const auto files = karvel::makeFiles();
  const auto profile = karvel::makeProfile();
  karvel::FakeClock clock;
  karvel::IniRedWrt settings(*profile, *files, clock);
  karvel::DeskReader reader(*files, settings, argv[1]);

  const auto begin = std::chrono::steady_clock::now();
  const karvel::DeskFigures figures = reader.Read_DeskFile(argv[2], std::stoi(argv[3]));
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
  printFigures(figures);
  std::cout << seconds.count() << " " << peakMemoryKib() << "\n";
}
