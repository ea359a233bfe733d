#include "platform/files.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "contract/ports.h"
#include "contract/scratch_folder.h"

namespace karvel {
namespace {

using std::string_literals::operator""s;

class FilesContract : public ::testing::Test {
 protected:
  std::string addReadOnly(std::string_view name, std::string_view content) const {
    const std::string path = folder.add(name, content);
    EXPECT_TRUE(files->setAttributes(path, Files::kReadOnly));
    return path;
  }

  [[nodiscard]] std::optional<std::string> read(const std::string& path) const {
    std::string content;
    const auto take = [&content](std::string_view piece) { content.append(piece); };
    return files->readPieces(path, take) ? std::optional(content) : std::nullopt;
  }

  const ScratchFolder folder;
  const std::unique_ptr<Files> files = makeFiles();
};

TEST_F(FilesContract, TakesNamesOfAllKinds) {
  // The second byte of 表, ソ and 能 is a backslash in code page 932; 😀 has no place in it at all.
  for (const std::string name : {"表.dat", "ソ能", "with blanks in it", "한글.txt", "😀"}) {
    const std::string path = folder.path(name);
    EXPECT_FALSE(files->exists(path)) << name;
    EXPECT_TRUE(files->write(path, "content")) << name;
    EXPECT_TRUE(folder.has(name)) << name;
    EXPECT_TRUE(files->exists(path)) << name;
    EXPECT_EQ(read(path), "content") << name;
    EXPECT_TRUE(files->remove(path)) << name;
    EXPECT_FALSE(folder.has(name)) << name;
  }
}

TEST_F(FilesContract, ReadsAndRemovesNothingButFiles) {
  for (const std::string& path :
       {folder.path(), folder.path("missing"), folder.path("missing folder/file"), ""s}) {
    EXPECT_EQ(files->exists(path), path == folder.path()) << path;
    EXPECT_EQ(read(path), std::nullopt) << path;
    EXPECT_FALSE(files->remove(path)) << path;
  }
}

TEST_F(FilesContract, ReadsABigFileInPieces) {
  std::string content(700'001, 'x');
  for (std::size_t i = 0; i < content.size(); i += 997) content[i] = static_cast<char>(i);
  std::string read;
  std::size_t largest = 0;
  EXPECT_TRUE(files->readPieces(folder.add("big", content), [&](std::string_view piece) {
    largest = std::max(largest, piece.size());
    read.append(piece);
  }));
  EXPECT_TRUE(read == content);
  EXPECT_LE(largest, 256U * 1024U);
}

TEST_F(FilesContract, WritesBytesInPlaceOfTheContentOrBehindIt) {
  const std::string path = folder.path("file");
  EXPECT_TRUE(files->append(path, "something long\r\n"));
  EXPECT_TRUE(files->append(path, ""));
  EXPECT_TRUE(files->append(path, "more"));
  EXPECT_EQ(read(path), "something long\r\nmore");
  for (const std::string& content : {"a\r\nb\n\x1A\0\xFF end"s, "\xEF\xBB\xBFx"s, ""s}) {
    EXPECT_TRUE(files->write(path, content));
    EXPECT_EQ(ScratchFolder::content(path), content);
    EXPECT_EQ(read(path), content);
  }
}

TEST_F(FilesContract, WritesNoReadOnlyFileAndNoFolder) {
  const std::string readOnly = addReadOnly("read only", "old");
  for (const std::string& path :
       {readOnly, folder.addFolder("a folder"), folder.path("missing folder/file"), ""s}) {
    EXPECT_FALSE(files->write(path, "new")) << path;
    EXPECT_FALSE(files->append(path, "new")) << path;
    EXPECT_FALSE(files->copy(folder.add("source", "new"), path)) << path;
  }
  EXPECT_EQ(ScratchFolder::content(readOnly), "old");
}

TEST_F(FilesContract, RemovesWhatMatchesAPattern) {
  const std::vector<std::string> gone = {"a.txt", "B.TXT", "表 1.txt", ".txt", "c.d.TxT"};
  const std::vector<std::string> kept = {"a.txtx", "b.txt.bak", "txt", "ctxt", "d.tx"};
  for (const auto& names : {gone, kept}) {
    for (const std::string& name : names) folder.add(name, "x");
  }
  addReadOnly("read only.txt", "x");
  folder.addFolder("folder.txt");

  files->removeMatching(folder.path(), "*.txt");

  for (const std::string& name : gone) EXPECT_FALSE(folder.has(name)) << name;
  for (const std::string& name : kept) EXPECT_TRUE(folder.has(name)) << name;
  EXPECT_TRUE(folder.has("read only.txt"));
  EXPECT_TRUE(folder.has("folder.txt"));
  files->removeMatching(folder.path("missing"), "*.txt");
}

TEST_F(FilesContract, CopiesContentOverAnExistingFile) {
  const std::string content(600'000, 'y');
  const std::string source = addReadOnly("source", content);
  const std::string target = folder.add("能.txt", std::string(900'000, 'z'));
  EXPECT_TRUE(files->copy(source, target));
  EXPECT_TRUE(files->copy(source, target)) << "the copy is not read-only";
  EXPECT_TRUE(ScratchFolder::content(target) == content);
  EXPECT_TRUE(ScratchFolder::content(source) == content);
}

TEST_F(FilesContract, AFailedCopyLeavesTheTargetAsItWas) {
  const std::string target = folder.add("target", "old");
  EXPECT_FALSE(files->copy(folder.path("missing"), target));
  EXPECT_FALSE(files->copy(folder.path(), target));
  EXPECT_FALSE(files->copy(target, target)) << "onto itself";
  EXPECT_EQ(ScratchFolder::content(target), "old");
  EXPECT_FALSE(files->copy(folder.path("missing"), folder.path("new")));
  EXPECT_FALSE(folder.has("new"));
}

TEST_F(FilesContract, RenamesOverAnOrdinaryFileAlone) {
  const std::string from = folder.add("能.part", "new");
  for (const std::string& to : {addReadOnly("read only", "old"), folder.addFolder("a folder")}) {
    EXPECT_FALSE(files->rename(from, to)) << to;
  }
  EXPECT_EQ(ScratchFolder::content(folder.path("read only")), "old");
  for (const std::string& to : {folder.add("old", "old"), folder.path("表.txt")}) {
    folder.add("能.part", "new");
    EXPECT_TRUE(files->rename(from, to)) << to;
    EXPECT_EQ(ScratchFolder::content(to), "new");
    EXPECT_FALSE(folder.has("能.part"));
  }
  EXPECT_FALSE(files->rename(from, folder.path("missing")));
}

TEST_F(FilesContract, TellsAndSetsAttributes) {
  const std::string path = folder.add("file", "x");
  EXPECT_EQ(files->attributes(path), Files::kNormal);
  EXPECT_TRUE(files->setAttributes(path, Files::kReadOnly));
  EXPECT_EQ(files->attributes(path), Files::kReadOnly);
  EXPECT_FALSE(files->remove(path));
  EXPECT_TRUE(files->setAttributes(path, Files::kNormal));
  EXPECT_EQ(files->attributes(path), Files::kNormal);
  EXPECT_EQ(files->attributes(folder.path()), Files::kDirectory);
  EXPECT_EQ(files->attributes(folder.path("missing")), std::nullopt);
  EXPECT_FALSE(files->setAttributes(folder.path("missing"), Files::kNormal));
}

}  // namespace
}  // namespace karvel
