#include "platform/windows/system/crash_dump.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "contract/scratch_folder.h"

namespace karvel {
namespace {

TEST(CrashDumpDeathTest, KeepsTheLastThree) {
  const ScratchFolder folder("dumps");
  for (const auto* name : {"karvel-200101-000000.dmp", "karvel-200102-000000.dmp",
                           "karvel-200103-000000.dmp", "somebody-elses.dmp"}) {
    folder.add(name, "");
  }
  // The process that dies runs this test, too, in a folder of its own.
  constexpr const char* kVariable = "KARVEL_DUMP_FOLDER";
  if (std::getenv(kVariable) == nullptr) _putenv_s(kVariable, folder.path().c_str());
  EXPECT_DEATH(
      {
        writeDumpOnCrash(std::getenv(kVariable));
        std::abort();
      },
      "");
  _putenv_s(kVariable, "");
  EXPECT_EQ(folder.entryCount(), 4U);
  EXPECT_FALSE(folder.has("karvel-200101-000000.dmp"));
  EXPECT_TRUE(folder.has("somebody-elses.dmp"));
  std::uintmax_t size = 0;
  for (const auto& file : std::filesystem::directory_iterator(folder.path())) {
    size += file.file_size();
  }
  EXPECT_GT(size, 4096U) << "the new one alone has content";
}

}  // namespace
}  // namespace karvel
