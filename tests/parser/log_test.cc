// Log files, logging and playback.

#include <unistd.h>

#include "foundation/YErr.h"
#include "gtest/gtest.h"
#include "tests/parser/CommandLine.h"

namespace {

const std::string Opening = "#\n# This command log file was written by Orven KV-7300 system.\n#\n";
const std::string Closing = "\n#\n# stop logging\n#\n";

TEST(LogFile, NamesAndStreams) {
  const std::string path = PathOf("file");
  NewErrors();
  YcluiLogFile file(path.c_str());
  EXPECT_EQ(file.close(), 1u);
  EXPECT_EQ(file.open("w"), 1u);
  const std::size_t folder = path.rfind('/');
  YcluiLogFile same((path.substr(0, folder) + "/.//" + path.substr(folder + 1)).c_str());
  EXPECT_TRUE(same == file && same.isOpenning() == 0);
  EXPECT_STREQ(same.filename(), file.filename());
  file.putString("12345");
  {
    YcluiLogFile copy(file);
    EXPECT_EQ(copy.lineLength(), 0);
    copy = file;
    EXPECT_EQ(copy.lineLength(), 5);
  }
  EXPECT_GE(std::fputs("text", file), 0) << "a copy has gone and left the stream open";
  file.putString(nullptr);
  EXPECT_EQ(file.lineLength(), 0);
  EXPECT_EQ(file.close(), 1u);
  EXPECT_EQ(ReadFile(path), "text");
  EXPECT_EQ(NewErrors(), "");
  YcluiLogFile nowhere((path + "/none").c_str());
  EXPECT_TRUE(nowhere.open("r") == 0 && nowhere.isOpenning() == 0);
  EXPECT_EQ(NewErrors(), "2079/3");
}

// What cannot be written shows at the closing, and the file can be used on.
TEST(LogFile, FailedWritesAreRemembered) {
  YcluiLogFile full("/dev/full");
  ASSERT_EQ(full.open("w"), 1u);
  std::FILE* stream = full;
  std::setvbuf(stream, nullptr, _IONBF, 0);
  EXPECT_LT(std::fputs("text", stream), 0);
  NewErrors();
  EXPECT_EQ(full.close(), 0u);
  EXPECT_EQ(NewErrors(), "2080/3");
  EXPECT_EQ(full.isOpenning(), 1u);
  EXPECT_EQ(full.close(), 1u);
}

TEST(Logging, WritesWhatCame) {
  const std::string path = PathOf("written");
  CommandLine line("go box/ii say/s move all/ifps", "( go | box go | say | move move | all )");
  line.addIndefinite("help");
  line.setAlias("both", "go go");
  EXPECT_EQ(line.shutLogging(), 0u);
  EXPECT_EQ(line.writeToLog("x"), 0u);
  EXPECT_EQ(line.startLogging(path.c_str(), 0), 1u);
  EXPECT_EQ(ReadFile(path), Opening);
  NewErrors();
  EXPECT_EQ(line.startLogging(PathOf("other").c_str(), 0), 0u);
  EXPECT_EQ(NewErrors(), "2078/2");
  line.interpret("go box 1,");
  line.interpret("2 unknown move go");
  line.interpret("both ${v}=1 # comment\nsay 'a\"b\\\\c'");
  line.interpret("all 1,0.5, 3,4, \x83\x5C");
  line.pushDummyToken("dummy");
  line.reset();
  line.interpret("box 1,2");
  line.pushFrame();
  line.interpret("go");
  line.popFrame();
  line.writeToLog("(by hand)");
  line.writeToLog(nullptr);
  EXPECT_EQ(line.shutLogging(), 1u);
  const std::string body =
      "go \nbox1,2 move go \ngo \ngo \nsay\"a\"b\\c\" \nall1,0.5,3,4,\"\x83\x5C\" \n\n"
      "box1,2 go \n\n(by hand)";
  EXPECT_EQ(ReadFile(path), Opening + body + Closing);
  line.startLogging(path.c_str(), 1);
  line.shutLogging();
  EXPECT_EQ(ReadFile(path), Opening + body + Closing + Opening + Closing);
  line.startLogging(path.c_str(), 0);
  line.shutLogging();
  EXPECT_EQ(ReadFile(path), Opening + Closing);
}

TEST(Logging, BreaksLongLines) {
  const std::string path = PathOf("long");
  CommandLine line("go", "go");
  line.startLogging(path.c_str(), 0);
  const std::string most(1024, 'x');
  line.writeToLog(most.c_str());
  line.writeToLog("");
  line.writeToLog("y");
  line.writeToLog(most.c_str());
  line.writeToLog("\n");
  line.shutLogging();
  EXPECT_EQ(ReadFile(path), Opening + most + "y\n" + most + "\n\n" + Closing);
}

TEST(Logging, AFullDiskShowsAtTheEnd) {
  CommandLine line("go", "go");
  ASSERT_EQ(line.startLogging("/dev/full", 0), 1u);
  line.interpret("go");
  NewErrors();
  EXPECT_EQ(line.shutLogging(), 0u);
  EXPECT_EQ(NewErrors(), "2080/3");
  EXPECT_EQ(line.writeToLog("x"), 1u) << "the log is open still";
  EXPECT_EQ(line.startLogging((PathOf("no") + "/where").c_str(), 0), 0u);
  EXPECT_EQ(NewErrors(), "2078/2");
}

// Playing "go go" first from outside, then from a command.
TEST(Logging, NestStyles) {
  const struct {
    YcluiLogNestStyle style;
    const char* body;
  } cases[] = {
      {YcluiLogNestSilent, "play \n"},
      {YcluiLogNestPlain, "go \ngo \nplay \ngo \ngo \n"},
      {YcluiLogNestComment, "# go \ngo \nplay \ngo \ngo \n"},
  };
  WriteFile(PathOf("two"), "go go");
  for (const auto& c : cases) {
    CommandLine line("go play", "( go | play{play} )");
    line.startLogging(PathOf("nest").c_str(), 0);
    line.nestStyle(c.style);
    line.at["run(play)"] = [&] {
      line.reset();
      line.playbackFromLog(PathOf("two").c_str());
    };
    line.playbackFromLog(PathOf("two").c_str());
    line.interpret("play");
    line.shutLogging();
    std::string expected(Opening);
    expected.append(c.body).append(Closing);
    EXPECT_EQ(ReadFile(PathOf("nest")), expected) << c.style;
  }
}

struct Reading {
  const char* file;
  const char* lines;    // what interpret is given, one in brackets each
  const char* resumed;  // the same for what follows a pause behind the first line
};

TEST(Playback, ReadsLines) {
  const Reading cases[] = {
      {"", "[]", ""},
      {"go", "[go]", ""},
      {"go\n", "[go][]", ""},
      {"go\n\n# c\nstop", "[go][][# c][stop]", "[# c\n][stop]"},
      {"say 'it\nsay", "[say 'it][say]", "[say]"},
      {"a\nb \"x\ny\" c\nd", "[a][b \"x\ny\" c][d]", "[b \"x\n][y\" c\n][d]"},
      {"# \"\n\"b\nc", "[# \"\n\"b][c]", "[c]"},
      {"a\nb\\\nc\nd", "[a][b\\\nc][d]", "[b\\\n][c\n][d]"},
      {"\"a\\\"b\"\nc", "[\"a\\\\\\\"b\"][c]", "[c]"},
      {"x\n\"\\\\\"\\n\n", "[x][\"\\\\\\\\\"\\n][]", "[\"\\\\\"\\n\n]"},
      {"ends in \\", "[ends in \\]", ""},
      // A trail byte that looks like a backslash, a lead byte before no trail byte.
      {"\"\x83\x5C\"\nb", "[\"\x83\x5C\"][b]", "[b]"},
      {"\x83\nb\xFF\"\n\"\n\x83", "[\x83][b\xFF\"\n\"][\x83]", "[b\xFF\"\n][\"\n][\x83]"},
  };
  const auto bracketed = [](Texts& lines) {
    std::string all;
    for (const std::string& text : lines) all += "[" + text + "]";
    lines.clear();
    return all;
  };
  for (const Reading& c : cases) {
    const std::string path = PathOf("lines");
    WriteFile(path, c.file);
    CommandLine line("go", "go");
    line.trace("text");
    EXPECT_EQ(line.playbackFromLog(path.c_str()), 1u);
    EXPECT_EQ(bracketed(line.lines), c.lines);
    EXPECT_EQ(line.isPlaybackRun(), 0u);
    EXPECT_EQ(line.continuePlayback(), 0u);

    line.pausePlayback();
    EXPECT_EQ(line.playbackFromLog(path.c_str()), 1u);
    line.lines.clear();
    EXPECT_EQ(line.continuePlayback(), 1u);
    EXPECT_EQ(bracketed(line.lines), c.resumed) << c.file;
    line.pausePlayback();
    EXPECT_EQ(line.continuePlayback(), 1u) << "no file is left";
  }
  CommandLine line("go", "go");
  line.trace("text");
  WriteFile(PathOf("lines"), "go\n" + std::string(2000, 'x') + "\n");
  line.pausePlayback();
  line.playbackFromLog(PathOf("lines").c_str());
  line.continuePlayback();
  EXPECT_EQ(line.lines[1].size(), 1023u);
  EXPECT_EQ(line.lines[2].size(), 978u);
  EXPECT_EQ(line.playbackFromLog("/"), 1u) << "what cannot be read has ended";
}

// What a parser logged comes back as it was.
TEST(Playback, ALogGivesTheSameLogAgain) {
  CommandLine line("say:/s box:/ip", "( say:{$0[0]} | box:{$$[0] $$[1]} )");
  line.trace("run");
  line.startLogging(PathOf("first").c_str(), 0);
  const std::string told =
      line.feed("say: 'back\\\\\"slash' say: 'two\nlines' say: '\x83\x5C' say: '' box: -3, 4,5");
  line.shutLogging();
  line.startLogging(PathOf("second").c_str(), 0);
  line.nestStyle(YcluiLogNestPlain);
  line.playbackFromLog(PathOf("first").c_str());
  EXPECT_EQ(line.told(), told);
  line.shutLogging();
  EXPECT_EQ(ReadFile(PathOf("second")), ReadFile(PathOf("first")));
}

TEST(Playback, RefusesWhatIsInUse) {
  CommandLine line("go inner log self", "( go{go} | inner{inner} | log{log} | self{self} )");
  const std::string outer = PathOf("outer");
  const std::string inner = PathOf("inner");
  const std::string log = PathOf("log");
  WriteFile(outer, "inner\ngo\n");
  WriteFile(inner, "self\nlog\ngo");
  line.startLogging(log.c_str(), 0);
  YWord played = 0;
  YWord others = 0;
  line.at["run(inner)"] = [&] {
    line.reset();
    played = line.playbackFromLog(inner.c_str());
    EXPECT_EQ(line.isPlaybackRun(), 1u);
  };
  line.at["run(self)"] = [&] {
    others += line.playbackFromLog(outer.c_str()) + line.playbackFromLog(log.c_str());
  };
  line.at["run(log)"] = [&] {
    others += line.startLogging(inner.c_str(), 0) + line.startLogging(outer.c_str(), 0);
  };
  line.trace("run");
  NewErrors();
  EXPECT_EQ(line.playbackFromLog(outer.c_str()), 1u);
  EXPECT_EQ(line.told(), "run(inner) run(self) run(log) run(go) run(go)");
  EXPECT_EQ(NewErrors(), "2076/2 2077/2 2076/2 2078/2");
  EXPECT_EQ(played + others, 1u);
  EXPECT_EQ(line.playbackFromLog((outer + "/none").c_str()), 0u);
  EXPECT_EQ(NewErrors(), "2079/3 2079/2");
}

TEST(Playback, PausesAtALineAndGoesOn) {
  const std::string outer = PathOf("outer");
  const std::string inner = PathOf("inner");
  WriteFile(outer, "a inner b\n c\n");
  WriteFile(inner, " d stop e\n stop e\n d");
  const struct {
    const char* name;
    void (*atStop)(CommandLine&);
    Texts parts;  // of the playback and of each continuation
  } cases[] = {
      {"pause",
       [](CommandLine& line) { line.pausePlayback(); },
       {"a inner b d stop e", "stop e d c"}},
      {"pause again",
       [](CommandLine& line) {
         line.pausePlayback();
         line.at["run(stop)"] = [&line] { line.pausePlayback(); };
       },
       {"a inner b d stop e", "stop e", "d c"}},
      {"pause and go on at once",
       [](CommandLine& line) {
         line.reset();
         line.pausePlayback();
         line.continuePlayback();
       },
       {"a inner b d stop e stop e d c"}},
      {"pause, and another file",
       [](CommandLine& line) {
         line.reset();
         line.pausePlayback();
         line.playbackFromLog(PathOf("third").c_str());
       },
       {"a inner b d stop e a", "b stop e d c"}},
  };
  WriteFile(PathOf("third"), " a\n b");
  for (const auto& c : cases) {
    CommandLine line("a b c d e inner stop",
                     "( a{a} | b{b} | c{c} | d{d} | e{e} | inner{inner} | stop{stop} )");
    line.trace("run");
    line.at["run(inner)"] = [&] {
      line.reset();
      line.playbackFromLog(inner.c_str());
    };
    line.at["run(stop)"] = [&] { c.atStop(line); };
    line.playbackFromLog(outer.c_str());
    for (std::size_t i = 0; i < c.parts.size(); ++i) {
      std::string expected = "run(";
      for (const char letter : c.parts[i]) {
        expected += letter == ' ' ? std::string(") run(") : std::string(1, letter);
      }
      expected += ")";
      EXPECT_EQ(line.told(), expected) << c.name << " " << i;
      EXPECT_EQ(line.isPlaybackRun(), 0u) << c.name << " " << i;
      EXPECT_EQ(line.continuePlayback(), i + 1 < c.parts.size() ? 1u : 0u) << c.name << " " << i;
    }
  }
}

TEST(Playback, NestingIsBounded) {
  CommandLine line("next", "next{next}");
  line.trace("run");
  int level = 0;
  YWord last = 1;
  const auto path = [](int i) { return PathOf("nested" + std::to_string(i)); };
  std::function<void()> next = [&] {
    WriteFile(path(++level), "next\n");
    line.at["run(next)"] = next;
    line.reset();
    last = line.playbackFromLog(path(level).c_str());
  };
  next();
  EXPECT_EQ(level, YcluiParser::MostNestedPlaybacks + 1);
  EXPECT_EQ(YErr.code(0), YErrTooDeep);
  EXPECT_EQ(last, 1u) << "the outermost went on to its end";
  EXPECT_EQ(line.isPlaybackRun(), 0u);
}

TEST(Playback, AParserThatGoesClosesItsFiles) {
  WriteFile(PathOf("open"), "go\ngo\n");
  const int free = dup(0);
  close(free);
  {
    CommandLine line("go", "go");
    line.pausePlayback();
    line.playbackFromLog(PathOf("open").c_str());
    line.startLogging("/dev/full", 0);
    line.interpret("go");
  }
  const int freeNow = dup(0);
  close(freeNow);
  EXPECT_EQ(freeNow, free);
}

}  // namespace
