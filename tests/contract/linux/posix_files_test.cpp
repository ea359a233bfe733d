#include "platform/linux/system/posix_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "contract/linux/file_size_limit.h"
#include "contract/scratch_folder.h"

namespace karvel {
namespace {

TEST(PosixFiles, RefusesAPipeInsteadOfWaitingForIt) {
  const ScratchFolder folder;
  const std::string pipe = folder.path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  PosixFiles files;
  EXPECT_FALSE(files.readPieces(pipe, [](std::string_view) {}));
  EXPECT_FALSE(files.write(pipe, "x"));
  EXPECT_FALSE(files.append(pipe, "x"));
  EXPECT_FALSE(files.copy(pipe, folder.path("copy")));
  EXPECT_FALSE(files.copy(folder.add("file", "x"), pipe));
}

TEST(PosixFiles, ACopyThatDoesNotFitLeavesNoHalfFile) {
  const ScratchFolder folder;
  const std::string source = folder.add("source", std::string(600'000, 'x'));
  const FileSizeLimit limit(300'000);
  EXPECT_FALSE(PosixFiles().copy(source, folder.path("target")));
  EXPECT_FALSE(folder.has("target"));
  EXPECT_FALSE(PosixFiles().write(folder.path("written"), std::string(600'000, 'x')));
}

TEST(PosixFiles, ACopyOntoItselfUnderAnotherNameKeepsTheContent) {
  const ScratchFolder folder;
  const std::string file = folder.add("file", "content");
  const std::string hardLink = folder.path("hard link");
  ASSERT_EQ(::link(file.c_str(), hardLink.c_str()), 0);
  EXPECT_FALSE(PosixFiles().copy(file, hardLink));
  EXPECT_EQ(ScratchFolder::content(file), "content");
}

TEST(PosixFiles, WritesNothingThroughALink) {
  const ScratchFolder folder;
  PosixFiles files;
  for (const std::string name : {"dangling", "planted"}) {
    const std::string victim = folder.path("victim of " + name);
    if (name == "planted") folder.add("victim of planted", "old");
    const std::string link = folder.path(name);
    ASSERT_EQ(symlink(victim.c_str(), link.c_str()), 0);
    EXPECT_FALSE(files.append(link, "new"));
    EXPECT_TRUE(files.copy(folder.add("source", "copied"), link));
    EXPECT_EQ(ScratchFolder::content(link), "copied");
    ASSERT_TRUE(files.remove(link));
    ASSERT_EQ(symlink(victim.c_str(), link.c_str()), 0);
    EXPECT_TRUE(files.write(link, "written"));
    EXPECT_EQ(ScratchFolder::content(link), "written");
  }
  EXPECT_FALSE(folder.has("victim of dangling"));
  EXPECT_EQ(ScratchFolder::content(folder.path("victim of planted")), "old");
}

}  // namespace
}  // namespace karvel
