#include <gtest/gtest.h>

#include "platform/windows/internet/wininet_internet.h"

namespace karvel {
namespace {

TEST(WininetEntry, IsTakenFromWhatTheLibraryFound) {
  WIN32_FIND_DATAA found{};
  found.dwFileAttributes = FILE_ATTRIBUTE_DIRECTORY;
  // 2024-01-15 09:05:59.9999999
  found.ftLastWriteTime = {static_cast<DWORD>(133497831599999999), 133497831599999999 >> 32};
  found.nFileSizeHigh = 1;
  found.nFileSizeLow = 0x80000000;
  std::fill(std::begin(found.cFileName), std::end(found.cFileName), 'x');

  Internet::FindData entry = findDataOf(found);
  EXPECT_TRUE(entry.folder);
  EXPECT_EQ(entry.time, (DateTime{2024, 1, 15, 9, 5, 59}));
  EXPECT_EQ(entry.size, 6442450944U);
  EXPECT_EQ(entry.name, std::string(sizeof found.cFileName, 'x')) << "without a NUL at its end";

  found.dwFileAttributes |= FILE_ATTRIBUTE_READONLY;
  EXPECT_FALSE(findDataOf(found).folder);
}

}  // namespace
}  // namespace karvel
