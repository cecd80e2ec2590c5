// Random commands in random languages: the playback of their log has the same effects.

#include <cmath>
#include <map>
#include <random>
#include <sstream>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"
#include "gtest/gtest.h"
#include "tests/parser/CommandLine.h"

namespace {

// In Shift_JIS with a second byte that is a backslash or a brace, and with a single byte.
const std::string Wide = YCharacters::BytesFromUtf8("\u8868");
const std::string Wide2 = YCharacters::BytesFromUtf8("\u30DC");
const std::string Narrow = YCharacters::BytesFromUtf8("\uFF71");

using Random = std::mt19937;

// A number below `count`, the same with every compiler.
unsigned Below(Random& random, unsigned count) {
  return static_cast<unsigned>(random() % count);
}

struct Word {
  std::string shortest;
  std::vector<YcluiValueType> types;
};

// A parser for the language of the seed, which records the commands that run.
class Speaker : public YcluiParser {
 public:
  explicit Speaker(unsigned seed) {
    Random random(seed);
    for (unsigned i = 0; i < 12; ++i) addWord(random, i);
    auto* syntax = new YcluiSyntaxGraph;
    for (unsigned id = 10; id < 22; ++id) {  // commands of two words
      YcluiSyntaxGraph command;
      command.insertAnd(new YcluiSyntaxNode(10 + Below(random, 12), "run $0 $$[0] $$[2] $-1#"));
      command.insertAnd(new YcluiSyntaxNode(id));
      syntax->insertOr(&command);
    }
    lex()->addKeyword("in", nullptr, 1);
    lex()->addKeyword("out", nullptr, 2);
    lex()->addKeyword("anywhere", nullptr, 3);
    syntax->insertOr(new YcluiSyntaxNode(1, "in"));
    syntax->insertOr(new YcluiSyntaxNode(2, "out"));
    setSyntaxGraph(syntax);
    addIndefiniteNode(new YcluiSyntaxNode(3, "anywhere $-1"));
    setAlias("al", "in out anywhere");
    interpret(YCharacters::BytesFromUtf8("${n}=12 ${s}=\"a \u8868 b\"").c_str());
  }

  std::vector<std::string> events;
  std::map<std::string, Word> words;

 private:
  void addWord(Random& random, unsigned index) {
    static const std::string syllables[] = {"ka", Wide, "ro", Wide2, "x9", Narrow};
    Word word;
    word.shortest = std::string(1, static_cast<char>('b' + index)) + "q";
    std::string name = word.shortest + syllables[Below(random, 6)] + syllables[Below(random, 6)];
    for (unsigned i = Below(random, 4); i > 0; --i) {
      word.types.push_back(YcluiValueType(1 + Below(random, 4)));
    }
    if (word.types.empty()) {
      lex()->addKeyword(name.c_str(), word.shortest.c_str(), 10 + index);
    } else {
      word.shortest = name += ":";
      const int count = static_cast<int>(word.types.size());
      lex()->addKeyword(name.c_str(), count, word.types.data(), 10 + index);
    }
    words[name] = word;
  }

  YWord evaluate(const char* text) override {
    events.push_back(std::string(text) + " <- " + currentToken()->wholeString());
    for (int i = 1; i < currentToken()->argc(); ++i) {
      events.back() += " " + std::to_string((*currentToken())[i]->tag);
    }
    if (events.back().starts_with("in ")) pushFrame();
    if (events.back().starts_with("out ")) popFrame(), reset();
    return 1;
  }
};

// Texts in that language: words that are possible, some that are not, and values of all types in
// all spellings.
class Speech {
 public:
  explicit Speech(unsigned seed) : random_(seed), listener_(seed) {
    for (int i = 0; i < 300; ++i) {
      say(nextWord());
      if (Below(random_, 3) == 0) say("\n"), texts.emplace_back();
    }
  }

  std::vector<std::string> texts = {""};

 private:
  Random random_;
  Speaker listener_;

  void say(const std::string& text) {
    texts.back() += text;
    listener_.interpret(text.c_str());
  }

  std::string nextWord() {
    const char* const others[] = {"anywhere ",
                                  "# a \"comment\"\n",
                                  "zz: 1,'a b',q ",
                                  "al ",
                                  "unknown ",
                                  "${x}=5 ${x}[1]=3\n",
                                  "in ",
                                  "out "};
    if (Below(random_, 5) == 0) return others[Below(random_, 8)];
    YString_Array words;
    const int count = listener_.completionList("", words);
    if (count == 0) return "out ";
    const std::string name = words[static_cast<int>(random_() % count)].buffer;
    if (listener_.words.count(name) == 0) return "in ";
    const Word& word = listener_.words[name];
    std::string text = Below(random_, 2) == 0 ? name : word.shortest;
    if (Below(random_, 2) == 0) text[1] = 'Q';
    for (std::size_t i = 0; i < word.types.size(); ++i) {
      const char* const separators[] = {",", ", ", " ,\t", ",\n"};
      if (i > 0) text += separators[Below(random_, 4)];
      text += value(word.types[i]);
    }
    return text + " ";
  }

  std::string value(YcluiValueType type) {
    const std::string number = std::to_string(static_cast<std::int32_t>(random_()));
    if (type == YcluiValuePoint) return number + ", " + std::to_string(Below(random_, 99));
    if (type == YcluiValueInteger) return Below(random_, 4) == 0 ? "${n}" : number;
    if (type == YcluiValueFloat) return real();
    return string();
  }
  std::string real() {
    std::ostringstream text;
    text.precision(17);
    text << std::ldexp(static_cast<std::int32_t>(random_()),
                       static_cast<int>(Below(random_, 1800)) - 950);
    return Below(random_, 2) == 0 ? text.str() : std::to_string(Below(random_, 99)) + ".50";
  }
  std::string string() {
    static const std::string pieces[] = {"a",   " ",     ",",  ":",    ";",  "#",    "'",
                                         "$ ",  "{",     Wide, "1",    "}",  "Z",    "\xFF",
                                         Wide2, "\x83 ", "\t", Narrow, "\n", "\\\"", "\\\\"};
    const char quote = Below(random_, 2) == 0 ? '"' : '\'';
    if (Below(random_, 8) == 0) return "\x83\\b";
    if (Below(random_, 8) == 0) return "\"a ${s} ${n}\"";
    std::string text(1, quote);
    for (unsigned i = Below(random_, 9); i > 0; --i) {
      for (const char* p = pieces[Below(random_, 21)].c_str(); *p != '\0'; ++p) {
        const bool isTrail = YEncoding::IsDoubleByte() && *p == '\\' &&
                             (text.back() == '\x95' || text.back() == '\x83');
        if ((*p == quote || *p == '\\') && !isTrail) text += '\\';
        text += *p;
      }
    }
    return text + quote;
  }
};

TEST(RoundTrip, APlaybackRunsTheSameCommands) {
  std::size_t spoken = 0;
  for (unsigned seed = 1; seed <= 30; ++seed) {
    SCOPED_TRACE(seed);
    const Speech speech(seed);
    Speaker first(seed);
    ASSERT_EQ(first.startLogging("first", 0), 1u);
    for (const std::string& text : speech.texts) first.interpret(text.c_str());
    ASSERT_EQ(first.shutLogging(), 1u);
    spoken += first.events.size();
    Speaker second(seed);
    second.nestStyle(YcluiLogNestPlain);
    ASSERT_EQ(second.startLogging("second", 0), 1u);
    EXPECT_EQ(second.playbackFromLog("first"), 1u);
    ASSERT_EQ(second.shutLogging(), 1u);
    EXPECT_EQ(second.events, first.events);
    EXPECT_EQ(ReadFile("second"), ReadFile("first"));
  }
  EXPECT_GT(spoken, 3000u);
}

}  // namespace
