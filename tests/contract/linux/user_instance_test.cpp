#include "platform/linux/system/user_instance.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include "contract/scratch_folder.h"

namespace karvel {
namespace {

TEST(UserInstance, ALockOfSomebodyElsesOnTheFolderIsNone) {
  const ScratchFolder folder;
  const FileDescriptor reader(open(folder.path().c_str(), O_RDONLY | O_DIRECTORY));
  ASSERT_EQ(flock(reader.get(), LOCK_EX | LOCK_NB), 0);
  EXPECT_TRUE(UserInstance().acquire(folder.path()));
}

}  // namespace
}  // namespace karvel
