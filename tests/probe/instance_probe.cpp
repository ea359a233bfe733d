// Another process that wants a program folder: instance_probe FOLDER
// Ends at once, without any clean-up, and tells by its exit code whether it got the folder.

#include <cstdlib>

#include "contract/ports.h"

int main(int argc, char** argv) {
  if (argc != 2) return EXIT_FAILURE;
  const auto instance = karvel::makeInstance();
  constexpr int kAcquired = 10;
  constexpr int kRefused = 20;
  std::_Exit(instance->acquire(argv[1]) ? kAcquired : kRefused);
}
