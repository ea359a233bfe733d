#include "platform/profile.h"

#include <gtest/gtest.h>

#include <string>

#include "contract/ports.h"
#include "contract/scratch_folder.h"
#include "text/code_page.h"

namespace karvel {
namespace {

using std::string_literals::operator""s;

constexpr std::size_t kBufferSize = 256;

class ProfileContract : public ::testing::Test {
 protected:
  [[nodiscard]] std::string valueIn(const std::string& content, const std::string& section,
                                    const std::string& key) const {
    return profile->read(section, key, folder.add("read.ini", content), kBufferSize);
  }

  /// The file's content after a write; a new file for each, so that no cache plays a part.
  [[nodiscard]] std::string written(const std::string& content, const std::string& section,
                                    const std::string& key, const std::string& value) {
    const std::string path = folder.add("write" + std::to_string(++files_) + ".ini", content);
    EXPECT_TRUE(profile->write(section, key, value, path));
    return ScratchFolder::content(path).value_or("no file");
  }

  const ScratchFolder folder;
  const std::unique_ptr<Profile> profile = makeProfile();

 private:
  int files_ = 0;
};

TEST_F(ProfileContract, FindsSectionsAndKeys) {
  const std::pair<std::string, std::string> cases[] = {
      {"[S]\r\nkey=value", "value"},
      {" \t[s]\t \r\n \tKey\t =\t value \t\r\n", "value"},
      {"[ S ]\r\nkey=value\r\n", "value"},
      {"[S]\r\nkey=a=b = c ; no comment\r\n", "a=b = c ; no comment"},
      {"[S]\r\n;key=comment\r\nkey=value\r\n", "value"},
      {"[S]\r\nkey=first\r\nKEY=second\r\n", "first"},
      {"[S]\r\nkey=first\r\n[T]\r\n[S]\r\nkey=second\r\n", "first"},
      {"[S]\r\na=1\r\n[T]\r\n[S]\r\nkey=second\r\n", ""},
      {"key=outside\r\n[S]\r\n\r\nkey=inside\r\n", "inside"},
      {"[S\r\nkey=value\r\n", ""},
  };
  for (const auto& [content, value] : cases) {
    EXPECT_EQ(valueIn(content, "S", "key"), value) << content;
  }
}

TEST_F(ProfileContract, TakesOnePairOfQuotesOffAValue) {
  const std::pair<std::string, std::string> cases[] = {
      {"'quoted'", "quoted"}, {" \" a \" ", " a "},     {"\"'mixed'\"", "'mixed'"},
      {"\"open", "\"open"},   {"\"other'", "\"other'"}, {"\"", "\""},
      {"a\"b\"", "a\"b\""},
  };
  for (const auto& [stored, value] : cases) {
    EXPECT_EQ(valueIn("[S]\r\nkey=" + stored + "\r\n", "S", "key"), value) << stored;
  }
}

// Characters whose second byte is "\", "[" or "]", and pairs of characters whose second bytes are
// the two cases of one letter.
constexpr const char* kHyou = "\x95\x5C";   // 表
constexpr const char* kSo = "\x83\x5C";     // ソ
constexpr const char* kOpen = "\x83\x5B";   // ゼ
constexpr const char* kClose = "\x83\x5D";  // ゾ
constexpr const char* kUpper = "\x83\x41";  // ァ, as "A"
constexpr const char* kLower = "\x83\x61";  // チ, as "a"

TEST_F(ProfileContract, TakesDoubleByteNamesCharacterByCharacter) {
  for (const std::string name : {kHyou, kSo, kOpen, kClose, kUpper, kLower}) {
    const std::string section = "[" + name + "]\r\n";
    EXPECT_EQ(valueIn("[x]\r\nk=0\r\n" + section + "k=1\r\n", name, "k"), "1") << name;
    EXPECT_EQ(valueIn("[S]\r\nx=0\r\n" + name + "=1\r\n", "S", name), "1") << name;
    EXPECT_EQ(valueIn("[S]\r\nk=" + name + "\r\n", "S", "k"), name) << name;
    EXPECT_EQ(written(section + "k=1\r\n", name, "k", name), section + "k=" + name + "\r\n");
    EXPECT_EQ(written("[S]\r\n" + name + "=1\r\n", "S", name, "2"), "[S]\r\n" + name + "=2\r\n");
  }
  const std::string both = "[S]\r\n"s + kUpper + "=upper\r\n" + kLower + "=lower\r\n";
  EXPECT_EQ(valueIn(both, "S", kUpper), "upper");
  EXPECT_EQ(valueIn(both, "S", kLower), "lower");
}

TEST_F(ProfileContract, CutsAValueToItsBuffer) {
  std::string kanji;
  for (int i = 0; i < 150; ++i) kanji += kHyou;
  const std::string path =
      folder.add("long.ini", "[S]\r\nkey=" + std::string(300, 'x') + "\r\nname=" + kanji + "\r\n");
  EXPECT_EQ(profile->read("S", "key", path, 256), std::string(255, 'x'));
  EXPECT_EQ(fromCodePage932(profile->read("S", "name", path, 256)),
            fromCodePage932(kanji.substr(0, 254)))
      << "half a character at the end";
  EXPECT_EQ(profile->read("S", "key", path, 1), "");
  EXPECT_EQ(profile->read("S", "key", path, 0), "");
}

TEST_F(ProfileContract, AMissingFileHasNoValues) {
  EXPECT_EQ(profile->read("S", "key", folder.path("missing.ini"), kBufferSize), "");
  EXPECT_EQ(profile->read("S", "key", folder.path("missing/x.ini"), kBufferSize), "");
  EXPECT_EQ(profile->read("S", "key", folder.path(), kBufferSize), "");
  EXPECT_FALSE(folder.has("missing.ini"));
}

TEST_F(ProfileContract, CreatesFileSectionAndKey) {
  const std::string path = folder.path("new.ini");
  EXPECT_TRUE(profile->write("S", "a", "1", path));
  EXPECT_EQ(ScratchFolder::content(path), "[S]\r\na=1\r\n");
  EXPECT_EQ(written("[S]\r\na=1\r\n", "S", "b", "2"), "[S]\r\na=1\r\nb=2\r\n");
  EXPECT_EQ(written("[S]\r\na=1\r\n[T]\r\nc=3\r\n", "S", "b", "2"),
            "[S]\r\na=1\r\nb=2\r\n[T]\r\nc=3\r\n");
  EXPECT_EQ(written("[S]\r\na=1\r\n", "T", "b", "2"), "[S]\r\na=1\r\n[T]\r\nb=2\r\n");
  EXPECT_EQ(written("[S]\r\na=1", "S", "b", "2"), "[S]\r\na=1\r\nb=2\r\n");
}

TEST_F(ProfileContract, KeepsEveryOtherLine) {
  const std::string before =
      "; a comment\r\nouter=0\r\n[S]\r\n; another\r\nno equals sign\r\n=no "
      "key\r\n\"q\"='value'\r\n";
  const std::string after = "same=1\r\nsame=2\r\n[T]\r\n[S]\r\na=other\r\n; the end\r\n";
  EXPECT_EQ(written(before + "a=1\r\n" + after, "S", "A", "2"), before + "a=2\r\n" + after);
}

TEST_F(ProfileContract, RefusesWhatCannotBeWritten) {
  const std::string path = folder.add("file.ini", "[S]\r\na=1\r\n");
  const auto files = makeFiles();
  ASSERT_TRUE(files->setAttributes(path, Files::kReadOnly));
  EXPECT_FALSE(profile->write("S", "a", "2", path));
  EXPECT_EQ(ScratchFolder::content(path), "[S]\r\na=1\r\n");
  ASSERT_TRUE(files->setAttributes(path, Files::kNormal));
  EXPECT_TRUE(profile->write("S", "a", "2", path));

  EXPECT_FALSE(profile->write("S", "a", "1", folder.path("missing folder/file.ini")));
  EXPECT_FALSE(profile->write("S", "a", "1", folder.addFolder("a folder")));
}

TEST_F(ProfileContract, TakesPathsBeyondItsCodePage) {
  const ScratchFolder korean("한글 😀");
  const std::string path = korean.path("새 파일.ini");
  EXPECT_EQ(profile->read("S", "a", path, kBufferSize), "");
  EXPECT_TRUE(profile->write("S", "a", "1", korean.path("karvel.hnb")));
  EXPECT_TRUE(korean.has("karvel.hnb"));
  korean.add("새 파일.ini", "[S]\r\na=1\r\n");
  EXPECT_TRUE(profile->write("S", "a", "2", path));
  EXPECT_EQ(profile->read("S", "a", path, kBufferSize), "2");
}

TEST_F(ProfileContract, SeesWhatOthersHaveWritten) {
  const std::string path = folder.path("shared.ini");
  for (const std::string value : {"1", "2", "3"}) {
    folder.add("shared.ini", "[S]\r\nown=0\r\nrequest=" + value + "\r\n");
    EXPECT_EQ(profile->read("S", "request", path, kBufferSize), value);
    EXPECT_TRUE(profile->write("S", "own", value, path));
  }
  EXPECT_EQ(ScratchFolder::content(path), "[S]\r\nown=3\r\nrequest=3\r\n");
}

}  // namespace
}  // namespace karvel
