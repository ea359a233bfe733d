#include "platform/platform.h"

int main(int argc, char** argv) {
  const karvel::Platform platform = karvel::makePlatform(argc, argv);
  return platform.desktop ? 0 : 1;
}
