#include "platform/instance.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "contract/ports.h"
#include "contract/scratch_folder.h"

namespace karvel {
namespace {

constexpr int kAcquired = 10;
constexpr int kRefused = 20;

/// Lets another process try for the folder, and then die without any clean-up. The tests run in
/// the folder of their executables.
int exitCodeOfProbe(const std::string& folder) {
  const std::string probe =
      (std::filesystem::path(".") / "instance_probe").make_preferred().string();
  const int status = std::system((probe + " \"" + folder + '"').c_str());
  return status > 0xFF ? status >> 8 : status;
}

TEST(InstanceContract, OneProcessHoldsAFolderAtATime) {
  const ScratchFolder folder("one");
  const ScratchFolder other("two");
  EXPECT_EQ(exitCodeOfProbe(folder.path()), kAcquired);
  {
    const auto instance = makeInstance();
    EXPECT_TRUE(instance->acquire(folder.path())) << "the process before has crashed";
    EXPECT_EQ(exitCodeOfProbe(folder.path()), kRefused);
    EXPECT_EQ(exitCodeOfProbe(other.path()), kAcquired);
  }
  EXPECT_EQ(exitCodeOfProbe(folder.path()), kAcquired);
}

TEST(InstanceContract, LeavesNothingInTheFolder) {
  const ScratchFolder folder;
  const auto instance = makeInstance();
  EXPECT_TRUE(instance->acquire(folder.path()));
  EXPECT_FALSE(makeInstance()->acquire(folder.path()));
  EXPECT_EQ(folder.entryCount(), 0U);
}

}  // namespace
}  // namespace karvel
