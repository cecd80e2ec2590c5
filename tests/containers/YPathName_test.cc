#include "platform/containers/YPathName.h"

#include <gtest/gtest.h>

#include <clocale>
#include <filesystem>
#include <string>

#include "tests/support/WorkingFolder.h"

namespace {

namespace fs = std::filesystem;

// A working folder with files and links; names are UTF-8.
class YPathNameTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(std::setlocale(LC_CTYPE, "C.utf8"), nullptr);
    for (const char* name : {"dir", "dir/sub", "\u8868", "\u00E9"}) fs::create_directory(name);
    WriteFile("dir/file", "x");
    fs::create_symlink("dir/sub", "link");
    fs::create_symlink("dir/file", "filelink");
    fs::create_symlink("../link/new", "dir/tonew");
    fs::create_symlink(top_ + "/dir/tonew", "tonew");
    fs::create_symlink("loop", "loop");
    fs::create_symlink("\u00E9", "accent");
  }
  void TearDown() override { std::setlocale(LC_CTYPE, "C"); }

  // The path after expand and pack. The top folder is written as "@" in both paths.
  std::string packed(std::string path) const {
    if (path[0] == '@') path.replace(0, 1, top_);
    YPathName name(path.c_str());
    name.expand();
    name.pack();
    std::string text = name.path.buffer;
    if (text.compare(0, top_.size(), top_) == 0) text.replace(0, top_.size(), "@");
    return text;
  }

  WorkingFolder folder_;
  std::string top_ = folder_.path;
};

TEST_F(YPathNameTest, OneNameForAllSpellings) {
  const char* const rows[][2] = {
      {"", ""},
      {"./dir//../new", "@/new"},
      {"filelink", "@/dir/file"},
      {"link/new", "@/dir/sub/new"},
      {"link/../file", "@/dir/file"},
      {"tonew", "@/dir/sub/new"},  // a link to a file that does not exist yet
      {"dir/tonew", "@/dir/sub/new"},
      {"dir/sub/", "@/dir/sub"},
      {"~", "@/~"},
      {"/", "/"},
      {"//new-at-top", "/new-at-top"},
      // The folder cannot be resolved: only doubled slashes and single dots are removed.
      {"none//./x", "@/none/x"},
      {"none/../x", "@/none/../x"},
      {"new/", "@/new/"},
      {"new/.", "@/new/"},
      {"dir/file/", "@/dir/file/"},
      {"loop", "@/loop"},
      {"loop/x", "@/loop/x"},
      // Names in the encoding of texts, and one with a character that it lacks.
      {"\x95\x5C/../\x95\x5C//\x83\x5C", "@/\x95\x5C/\x83\x5C"},
      {"\x81\x81\xB1", "@/\x81\x81\xB1"},
      {"\x85\x5C\x80", "@/\x85\x5C\x80"},
      {"accent/./new", "@/accent/new"},
  };
  for (const auto& [given, tidied] : rows) EXPECT_EQ(packed(given), tidied) << given;
  fs::current_path("\u8868");
  EXPECT_EQ(packed("x"), "@/\x95\x5C/x");
}

TEST_F(YPathNameTest, WorkingFolderWithoutAName) {
  fs::current_path("\u00E9");
  EXPECT_EQ(packed(".//new"), "new");
  EXPECT_EQ(packed("../dir/sub"), "@/dir/sub");
  fs::remove(fs::current_path());
  EXPECT_EQ(packed("new"), "new");
  fs::create_directory(top_ + "/\u00E9");
}

}  // namespace
