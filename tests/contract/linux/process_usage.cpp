#include "contract/process_usage.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace karvel {

ProcessUsage ProcessUsage::now() {
  std::size_t pages = 0;
  std::ifstream statm("/proc/self/statm");
  statm >> pages >> pages;
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return {pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)),
          static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors)))};
}

}  // namespace karvel
