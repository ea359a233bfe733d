#include "platform/windows/system/win32_files.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "contract/scratch_folder.h"
#include "platform/windows/system/wide_text.h"
#include "platform/windows/system/win32_handle.h"

namespace karvel {
namespace {

constexpr auto kIgnore = [](std::string_view) {};
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// The file as another program has it open.
Win32Handle openElsewhere(const std::string& path, DWORD access, DWORD share) {
  HANDLE handle =
      CreateFileW(toWide(path).c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_NE(handle, INVALID_HANDLE_VALUE);
  return Win32Handle(handle);
}

TEST(Win32Files, ReadsAFileThatAnotherProgramIsWriting) {
  const ScratchFolder folder;
  const std::string path = folder.add("file", "content");
  const auto writer = openElsewhere(path, GENERIC_READ | GENERIC_WRITE, kShareAll);
  std::string content;
  EXPECT_TRUE(Win32Files().readPieces(path, [&](std::string_view piece) { content += piece; }));
  EXPECT_EQ(content, "content");
  EXPECT_TRUE(Win32Files().copy(path, folder.path("copy")));
}

TEST(Win32Files, LeavesALockedFileAlone) {
  const ScratchFolder folder;
  const std::string path = folder.add("a.txt", "content");
  {
    const auto owner = openElsewhere(path, GENERIC_READ, 0);
    Win32Files files;
    EXPECT_TRUE(files.exists(path));
    EXPECT_FALSE(files.readPieces(path, kIgnore));
    EXPECT_FALSE(files.write(path, "new"));
    EXPECT_FALSE(files.append(path, "new"));
    EXPECT_FALSE(files.remove(path));
    EXPECT_FALSE(files.copy(folder.add("source", "new"), path));
    files.removeMatching(folder.path(), "*.txt");
  }
  EXPECT_EQ(ScratchFolder::content(path), "content");
}

TEST(Win32Files, ACopyOntoItselfUnderAnotherSpellingKeepsTheContent) {
  const ScratchFolder folder;
  const std::string path = folder.add("file", "content");
  EXPECT_FALSE(Win32Files().copy(path, folder.path("FILE")));
  EXPECT_EQ(ScratchFolder::content(path), "content");
}

TEST(Win32Files, RewritingAHiddenFileKeepsItHidden) {
  const ScratchFolder folder;
  const std::string path = folder.add("file", "old");
  Win32Files files;
  const std::uint32_t hidden = Files::kHidden | Files::kSystem;
  ASSERT_TRUE(files.setAttributes(path, hidden));
  EXPECT_TRUE(files.write(path, "new"));
  EXPECT_TRUE(files.copy(folder.add("source", "newer"), path));
  EXPECT_EQ(ScratchFolder::content(path), "newer");
  EXPECT_EQ(files.attributes(path), hidden);
}

TEST(Win32Files, TakesNoDeviceForAFile) {
  Win32Files files;
  EXPECT_FALSE(files.readPieces("NUL", kIgnore));
  EXPECT_FALSE(files.write("NUL", "x"));
}

}  // namespace
}  // namespace karvel
