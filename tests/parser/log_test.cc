// Log files, logging and playback.

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <thread>

#include "foundation/YCharacters.h"
#include "gtest/gtest.h"
#include "parser/YcluiLogFile.h"
#include "tests/parser/CommandLine.h"

namespace {

const std::string OldOpening =
    "#\n# This command log file was written by Orven KV-7300 system.\n#\n";
const std::string Mark = "# encoding: UTF-8\n#\n";
const std::string Opening = YEncoding::IsDoubleByte() ? OldOpening : OldOpening + Mark;
const std::string Closing = "\n#\n# stop logging\n#\n";

TEST(LogFile, AFailedWriteIsReportedOnce) {
  YcluiLogFile full("/dev/full");
  ASSERT_EQ(full.open("w"), 1u);
  std::setvbuf(full, nullptr, _IONBF, 0);
  EXPECT_LT(std::fputs("text", full), 0);
  EXPECT_EQ(full.close(), 0u);
  EXPECT_EQ(full.close(), 1u);
}

TEST(Logging, WritesTokensAndEndsOfCommands) {
  const std::string wide = YCharacters::BytesFromUtf8("\u30BD");  // in Shift_JIS with a backslash
  const std::pair<std::string, std::string> cases[] = {
      {"go", Opening + "go \n"},
      {"go box 1,; 2 unknown play go; ^shut", Opening + "go \nbox1,2 play go \n" + Closing},
      {"two ${v}=1 # c\nlost; ^dummy d; say 'a\"b\\\\c'; ^shut",
       Opening + "go \ngo \nsay\"a\"b\\c\" \n" + Closing},
      {"all 1,0.5, 3,4, " + wide + "; ^reset", Opening + "all1,0.5,3,4,\"" + wide + "\" \n\n"},
      {"box 1,2; ^push; go; ^pop; ^write hand", Opening + "box1,2 go \n\nhand"},
      {"go; ^shut; ^append log; ^shut", Opening + "go \n" + Closing + Opening + Closing},
      {"go; ^shut; ^log log", Opening},
      // How a playback is logged.
      {"^play two; play", Opening + "play \n"},
      {"^pause; ^play lines; ^continue; go", Opening + "go \n"},
      {"^play outer", Opening},
      {"^nest 1; ^play two; play", Opening + "go \ngo \nplay \ngo \ngo \n"},
      {"^nest 2; ^play two; play", Opening + "# go \ngo \nplay \ngo \ngo \n"},
  };
  WriteFile("two", "go go");
  WriteFile("lines", "go\ngo\n");
  WriteFile("outer", "play\ngo\n");
  for (const auto& [steps, file] : cases) {
    CommandLine line("go box/ii say/s all/ifps play lost two->go_go",
                     "( go | box go | say | all | play{play} | lost )");
    line.perform("^log log; ^on run(play) ^reset & ^play two");
    line.perform(steps);
    EXPECT_EQ(ReadFile("log"), file) << steps;
  }
}

TEST(Logging, BreaksLongLines) {
  CommandLine line("go", "go");
  const std::string most(1024, 'x');
  line.perform("^log log; ^write " + most + "; ^write; ^write y; ^write " + most + "; go");
  EXPECT_EQ(ReadFile("log"), Opening + most + "y\n" + most + "go\n \n");
}

TEST(Logging, TheDestructorClosesAllFiles) {
  WriteFile("open", "go\ngo\n");
  const int free = dup(0);
  close(free);
  CommandLine("go", "go").perform("^pause; ^play open; ^log open");
  const int freeNow = dup(0);
  close(freeNow);
  EXPECT_EQ(freeNow, free);
}

TEST(Playback, ReadsLines) {
  // The file, the texts given to interpret, and those given after a pause in the first line.
  const char* const cases[][3] = {
      {"", "[]", ""},
      {"go\n\n# c\nstop", "[go][][# c][stop]", "[# c\n][stop]"},
      {"say 'it\nsay", "[say 'it][say]", "[say]"},
      {"a\nb \"x\ny\" c\nd", "[a][b \"x\ny\" c][d]", "[b \"x\n][y\" c\n][d]"},
      {"# \"\n\"b\nc", "[# \"\n\"b][c]", "[c]"},
      {"a\nb\\\nc\nd", "[a][b\\\nc][d]", "[b\\\n][c\n][d]"},
      {"\"a\\\"b\"\nc", "[\"a\\\\\\\"b\"][c]", "[c]"},
      {"x\n\"\\\\\"\\n\n", "[x][\"\\\\\\\\\"\\n][]", "[\"\\\\\"\\n\n]"},
      {"ends in \\", "[ends in \\]", ""},
  };
  // A trail byte with the value of a backslash; lead bytes without a trail byte.
  const char* const inShiftJis[][3] = {
      {"\"\x83\x5C\"\nb", "[\"\x83\x5C\"][b]", "[b]"},
      {"\x83\nb\xFF\"\n\"\n\x83", "[\x83][b\xFF\"\n\"][\x83]", "[b\xFF\"\n][\"\n][\x83]"},
  };
  const auto play = [](const char* const(&row)[3]) {
    const auto& [file, lines, resumed] = row;
    WriteFile("lines", file);
    CommandLine line("go", "go");
    line.perform("^play lines");
    EXPECT_EQ(line.texts, lines);
    line.perform("^pause; ^play lines");
    line.texts.clear();
    line.perform("^continue");
    EXPECT_EQ(line.texts, resumed) << file;
    EXPECT_EQ(line.isPlaybackRun(), 0u);
  };
  for (const auto& row : cases) play(row);
  if (YEncoding::IsDoubleByte()) std::for_each(inShiftJis, std::end(inShiftJis), play);
  CommandLine line("go", "go");
  WriteFile("lines", "go\n" + std::string(2000, 'x') + "\n");
  line.perform("^pause; ^play lines; ^continue; ^play /");
  const std::string full(1023, 'x');
  EXPECT_EQ(line.texts, "[go][" + full + "][" + full.substr(46) + "\n][]")
      << "a file that cannot be read counts as empty";
}

// Logs as processes with the one and the other encoding leave them, and files written by hand.
TEST(Playback, RefusesTextOfTheOtherEncoding) {
  enum { Neither = 0, ShiftJis = 1, Utf8 = 2, Both = 3 };
  const std::string wide = "say \"\x83\x5C\"\n";
  const std::string accented = "say \"\u00E9\"\n";
  const std::string twoBytes = "say \"\xC3\xB1\"\n";  // characters in both encodings
  const struct {
    std::string file;
    int readers;
  } rows[] = {
      {"say a\n", Both},
      {OldOpening + "say a\n", Both},
      {OldOpening + Mark + "say a\n", Both},
      {OldOpening + twoBytes, ShiftJis},
      {OldOpening + Mark + twoBytes + "say \"\xFF\"\n", Utf8},
      {"go " + OldOpening + twoBytes, ShiftJis},  // the first log was not closed
      {OldOpening + "go\n" + Closing + OldOpening + Mark + accented, Utf8},
      {OldOpening + Mark + accented + Closing + OldOpening + twoBytes, Neither},
      {OldOpening + Mark + "go\n" + Closing + OldOpening + wide, ShiftJis},
      {OldOpening + "go\n" + Mark + twoBytes, ShiftJis},  // not the mark, but a comment
      {accented, Both},                                   // by hand
      {wide, ShiftJis},
      {"go\n\xE8\xA1", ShiftJis},
  };
  for (const auto& row : rows) {
    WriteFile("other", row.file);
    const bool isRead = (row.readers & (YEncoding::IsDoubleByte() ? ShiftJis : Utf8)) != 0;
    CommandLine line("go say/s", "( go | say )");
    const std::uint64_t before = YErr.count();
    EXPECT_EQ(line.playbackFromLog("other"), isRead ? 1U : 0U) << row.file;
    EXPECT_EQ(line.texts.empty(), !isRead) << row.file;
    EXPECT_EQ(line.startLogging("other", 1), isRead ? 1U : 0U) << row.file;
    if (!isRead) {
      EXPECT_EQ(YErr.code(0), YErrOtherEncoding);
      EXPECT_EQ(YErr.count(), before + 2);
      EXPECT_EQ(ReadFile("other"), row.file);
    }
    line.shutLogging();
    EXPECT_EQ(line.playbackFromLog("other"), isRead ? 1U : 0U) << row.file;
  }
}

// What can be read only once is played up to such text.
TEST(Playback, EndsBeforeTextOfTheOtherEncoding) {
  if (YEncoding::IsDoubleByte()) GTEST_SKIP();
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  std::thread writer([] { WriteFile("pipe", "go\nsay \x83\x5C\ngo\n"); });
  CommandLine line("go", "go");
  EXPECT_EQ(line.playbackFromLog("pipe"), 0U);
  writer.join();
  EXPECT_EQ(line.texts, "[go]");
  EXPECT_EQ(YErr.code(0), YErrOtherEncoding);
}

TEST(Playback, ReportsItsPosition) {
  const std::string odd = YEncoding::IsDoubleByte() ? "\xFF" : "x";
  WriteFile("places", "go \"two\nlines\"\nstop" + odd + "\n\nstop\n");
  CommandLine line("go stop", "( go | stop{stop} )");
  const auto place = [&] {
    return std::to_string(line.playbackLine()) + "+" + std::to_string(line.playbackPosition());
  };
  std::string inside;
  const auto insideOf = [&](const char* step) {
    line.at["run(stop)"] = [&] { inside = place(); };
    line.perform(step);
    return std::exchange(inside, "");
  };
  line.perform("^pause; ^play places");
  EXPECT_EQ(place(), "1+15") << "a string contains the first end of line";
  EXPECT_EQ(insideOf("^continue"), "5+27");
  EXPECT_EQ(place(), "0+0");
  EXPECT_EQ(insideOf("^play places"), "5+27")
      << "the byte after 0xFF is read twice and counted once";
}

}  // namespace
