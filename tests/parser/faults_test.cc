// What the file system may do to a log and to a playback.

#include <sys/stat.h>
#include <unistd.h>

#include <clocale>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>

#include "gtest/gtest.h"
#include "tests/common/file_faults.h"
#include "tests/parser/CommandLine.h"

namespace {

namespace fs = std::filesystem;

constexpr char Words[] = "go box:/ii say:/s inner stop";
constexpr char Syntax[] = "( go{go} | box:{box} | say:{$0[0]} | inner{inner} | stop{stop} )";

// Records while it is typed into, plays a file in a file, pauses and goes on, and records again.
// Whether an operation failed, and whether nothing was said of it.
struct Outcome {
  bool hasFailed, isGood;
};
Outcome RunAll() {
  bool isGood = true;
  CommandLine line(Words, Syntax);
  const auto codes = YErr.count();
  const auto all = [&](const char* steps) {
    line.trace("answer");
    line.perform(steps);
    isGood = isGood && line.told().find("(0)") == std::string::npos;
  };
  all("^log log; go; box: 1,2; say: 'a b'; ^on run(inner) ^reset & ^play inner.txt; go");
  line.at["run(stop)"] = [&] { line.pausePlayback(); };
  line.nestStyle(YcluiLogNestPlain);
  all("^play outer.txt; go; ^continue; go; ^shut; ^append log; go; ^shut");
  isGood = isGood && line.playbackReadErrors() == 0 && YErr.count() == codes;
  const bool hasFailed = FailFileOperation(-1);
  // Whatever it was, the parser is usable.
  line.perform("^shut; ^shut; ^continue; ^exhaust; ^reset");
  line.told();
  line.trace("run answer");
  line.perform("^log after; go; ^shut");
  EXPECT_EQ(line.told(), "log(1) run(go) shut(1)");
  // It goes with a file that is read ahead.
  FailFileOperation(2);  // the stream goes back to where it was read
  line.perform("^pause; ^play outer.txt");
  return {hasFailed, isGood};
}

TEST(FileFaults, NoLineIsLostWithoutAWord) {
  WriteFile("outer.txt", "go say:\"x\" \ninner go \nstop \nbox:3,4 \n" + std::string(9000, '\n') +
                             "say:\"end\" \n");
  WriteFile("inner.txt", "say:\"in\" \ngo \n");
  FailFileOperation(-1);
  ASSERT_TRUE(RunAll().isGood);
  const std::string full = ReadFile("log");
  ASSERT_NE(full.find("say:\"end\""), std::string::npos);
  for (const FileFault fault : {FileFault::Once, FileFault::ForGood, FileFault::Partly}) {
    int index = 0;
    for (Outcome outcome = {true, true}; outcome.hasFailed && index < 1000; ++index) {
      FailFileOperation(index, fault);
      outcome = RunAll();
      EXPECT_TRUE(ReadFile("log") == full || !outcome.isGood) << index;
    }
    EXPECT_GT(index, 30);
  }
}

// A file that is being logged to is known under each of its names.
TEST(FileFaults, OneFileUnderManyNames) {
  const fs::path before = fs::current_path();
  const fs::path folder = fs::path(PathOf("names"));
  fs::create_directories(folder / "\xE8\xA1\xA8");  // this name in the encoding of the locale
  fs::current_path(folder);
  fs::create_directory_symlink("\xE8\xA1\xA8", "linked");
  std::setlocale(LC_CTYPE, "C.UTF-8");
  CommandLine line(Words, Syntax);
  line.trace("err answer");
  line.perform("^log \x95\x5C//log; go");
  EXPECT_EQ(line.told(), "log(1)");
  fs::create_symlink("\xE8\xA1\xA8/log", "logged");
  for (const char* name :
       {"./\x95\x5C/log", "\x95\x5C/../linked/.//log", "./logged", "linked/log"}) {
    line.perform(std::string("^play ") + name);
    EXPECT_EQ(line.told(), "err(2077/2) play(0)") << name;
  }
  fs::current_path("linked");
  line.perform("^play ./log; ^play ../logged; ^shut; ^play ./log");
  EXPECT_EQ(line.told(), "err(2077/2) play(0) err(2077/2) play(0) shut(1) play(1)");
  EXPECT_NE(ReadFile("./log").find("go \n"), std::string::npos);
  std::setlocale(LC_CTYPE, "C");
  fs::current_path(before);
}

TEST(FileFaults, FilesThatCannotBeOpened) {
  WriteFile("plain", "go\n");
  const std::string names[] = {
      "no/where",
      PathOf("plain") + "/x",
      "/",
      "",
      "/proc/self/exe",
      std::string(300, 'x'),
      PathOf("plain") + "/" + std::string(5000, 'y'),
  };
  for (const std::string& name : names) {
    CommandLine line(Words, Syntax);
    line.trace("run err answer");
    line.perform("go");
    EXPECT_EQ(line.startLogging(name.c_str(), 1), 0u) << name;
    line.perform("go; ^log after; ^shut; ^play plain");
    EXPECT_EQ(line.told(), "run(go) err(2079/3) err(2079/2) run(go) log(1) shut(1) run(go) play(1)")
        << name;
  }
}

// What the name stands for is opened once.
TEST(FileFaults, FilesThatChangeWhilePlayed) {
  const struct {
    std::function<void()> change;
    const char* told;
  } cases[] = {
      {[] { fs::remove(PathOf("played")); }, "run(inner) run(go) run(box) play(1)"},
      {[] { WriteFile("other", "stop"), fs::rename(PathOf("other"), PathOf("played")); },
       "run(inner) run(go) run(box) play(1)"},
      {[] { std::ofstream(PathOf("played"), std::ios::app) << "stop\nstop\n"; },
       "run(inner) run(go) run(box) run(stop) run(stop) play(1)"},
      {[] { fs::resize_file(PathOf("played"), 6); }, "run(inner) run(go) play(1)"},
  };
  for (const auto& c : cases) {
    // The rest is not in the buffer yet.
    WriteFile("played", "inner\ngo" + std::string(9000, ' ') + "\nbox: 1,2\n");
    CommandLine line(Words, Syntax);
    line.trace("run err answer");
    line.at["run(inner)"] = c.change;
    line.perform("^play played");
    EXPECT_EQ(line.told(), c.told);
  }
}

TEST(FileFaults, AnyBytesAreALog) {
  std::minstd_rand random(5);
  const std::string tails[] = {"", "\x95", "say:\"open", "\\", "say:'\x95", "${", "box:1"};
  for (const std::string& tail : tails) {
    std::string junk;
    for (int i = 0; i < 50000; ++i) junk += static_cast<char>(random() >> 7);
    WriteFile("junk", junk + "\n" + std::string(200000, 'x') + tail);
    CommandLine line(Words, Syntax);
    EXPECT_EQ(line.playbackFromLog(PathOf("junk").c_str()), 1u);
    line.perform("^drop; ^exhaust; ^reset");
    line.trace("run answer");
    line.perform("^pause; ^play junk; ^continue; ^drop; ^exhaust; ^reset; go");
    EXPECT_NE(line.told().find("reset(1) run(go)"), std::string::npos);
  }
}

}  // namespace
