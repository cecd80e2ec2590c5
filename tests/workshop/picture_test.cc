// Diagrams of fragments that are made here, without a script.

#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <vector>

#include "lex/YcluiLex.h"
#include "parser/YcluiHelp.h"
#include "parser/YcluiParser.h"
#include "workshop/CluiCommands.h"
#include "workshop/CluiDiagram.h"
#include "workshop/CluiGrammar.h"
#include "workshop/CluiVocabulary.h"

namespace {

using Kind = CluiFragment::Kind;

CluiFragment Part(Kind kind, std::vector<CluiFragment> parts) {
  CluiFragment fragment;
  fragment.kind = kind;
  fragment.parts = std::move(parts);
  return fragment;
}
CluiFragment Seq(std::vector<CluiFragment> parts) {
  return Part(Kind::Sequence, std::move(parts));
}
CluiFragment OneOf(std::vector<CluiFragment> parts) {
  return Part(Kind::Choice, std::move(parts));
}
CluiFragment AnyOf(std::vector<CluiFragment> parts) {
  return Part(Kind::Repetition, std::move(parts));
}
CluiFragment Word(std::uint32_t id) {
  CluiFragment fragment = Part(Kind::Word, {});
  fragment.tokenId = id;
  return fragment;
}
CluiFragment Priority(int priority) {
  CluiFragment fragment = Part(Kind::Priority, {});
  fragment.priority = priority;
  return fragment;
}

class Picture : public testing::Test {
 protected:
  YcluiParser parser;
  std::uint32_t a = parser.lex()->addKeyword("alpha", "al", 0);
  std::uint32_t b = parser.lex()->addKeyword("<b>&\"'", nullptr, 0);
  std::uint32_t at = 0;

  Picture() {
    const YcluiValueType types[] = {YcluiValueFloat, YcluiValueString};
    at = parser.lex()->addKeyword("at:", 2, types, 0);
    parser.help().setArgument(at, 1, "X", "to the right");
    parser.help().setArgument(at, 3, "MORE", "if wanted");
  }

  std::vector<CluiCommand> commandsOf(const CluiFragment& syntax) {
    grammar_.syntax = syntax;
    vocabulary_ = std::make_unique<CluiVocabulary>(parser);
    return CluiCommandsOf(grammar_, *vocabulary_);
  }
  std::string pictureOf(const CluiFragment& syntax) {
    std::vector<CluiCommand> commands = commandsOf(syntax);
    return CluiDiagramOf(commands);
  }

 private:
  CluiGrammar grammar_;
  std::unique_ptr<CluiVocabulary> vocabulary_;
};

TEST_F(Picture, CommandsAreTheAlternativesOfTheOutermostChoice) {
  const CluiFragment code = Part(Kind::Code, {});
  const struct {
    CluiFragment syntax;
    const char* expected;  // name and line of each command
  } cases[] = {
      {Word(a), "alpha: alpha; "},
      {OneOf({Word(a), code, OneOf({Word(at), code, Seq({OneOf({Word(a)})})})}),
       "alpha: alpha; at:: at: X, string [, MORE]; alpha: alpha; "},
      {OneOf({Seq({Seq({Word(a), code}), Seq({Word(a), OneOf({Word(a), Word(at)})})})}),
       "alpha alpha: alpha alpha (alpha | at: X, string [, MORE]); "},
      {Seq({Word(a), AnyOf({OneOf({Word(a), Word(a)})}), Word(a)}),
       "alpha: alpha [alpha | alpha]... alpha; "},
      {Seq({Word(a), OneOf({Word(a), Seq({})})}), "alpha: alpha [alpha]; "},
      {AnyOf({Word(a)}), "[alpha]...: [alpha]...; "},
      {Seq({Word(99999), AnyOf({})}), "(no word has the id 99999): (no word has the id 99999) ; "},
  };
  for (const auto& each : cases) {
    std::string found;
    for (const CluiCommand& command : commandsOf(each.syntax)) {
      found += command.name + ": " + CluiTrackLine(command.track, 200) + "; ";
    }
    EXPECT_EQ(found, each.expected);
  }
}

TEST_F(Picture, TextsAreEscapedAndMarksAreDrawn) {
  const std::string picture = pictureOf(Seq({Priority(200), Word(a), Word(b)}));
  EXPECT_NE(picture.find("<tspan class=\"short\">al</tspan>pha"), std::string::npos);
  EXPECT_NE(picture.find(">priority 200</text>"), std::string::npos);
  EXPECT_NE(picture.find(">&lt;b&gt;&amp;&quot;&#39;</text>"), std::string::npos);
  EXPECT_EQ(picture.find("<b>"), std::string::npos);
}

// Choices that were joined one by one, as loops of scripts do, and sequences in sequences.
TEST_F(Picture, DeepNestingIsDrawn) {
  CluiFragment choice = Word(a);
  for (int i = 0; i < 5000; ++i) {
    std::vector<CluiFragment> parts(1, Word(a));
    parts.push_back(std::move(choice));
    choice = OneOf(std::move(parts));
  }
  EXPECT_EQ(commandsOf(choice).size(), 5001U);
  CluiFragment mixed = Word(a);
  for (int i = 0; i < 500; ++i) mixed = Seq({Word(a), AnyOf({std::move(mixed)})});
  EXPECT_NE(pictureOf(mixed).find("\u2026"), std::string::npos);
}

CluiFragment RandomFragment(std::mt19937& random, const std::vector<std::uint32_t>& words,
                            int depth) {
  if (depth == 0 || random() % 4 == 0) return Word(words[random() % words.size()]);
  std::vector<CluiFragment> parts;
  for (std::uint32_t i = random() % 7; i > 0; --i) {
    if (random() % 10 == 0) parts.push_back(Priority(static_cast<int>(random() % 200)));
    parts.push_back(RandomFragment(random, words, depth - 1));
  }
  return Part(static_cast<Kind>(3 + random() % 3), std::move(parts));
}

struct Box {
  int left, top, right, bottom;
};

std::vector<Box> BoxesOf(const std::string& picture) {
  static const std::regex rect(
      "<rect x=\"(-?\\d+)\" y=\"(-?\\d+)\" width=\"(\\d+)\" height=\"(\\d+)\"");
  std::vector<Box> boxes;
  for (std::sregex_iterator i(picture.begin(), picture.end(), rect), end; i != end; ++i) {
    const int x = std::stoi((*i)[1]);
    const int y = std::stoi((*i)[2]);
    boxes.push_back({x, y, x + std::stoi((*i)[3]), y + std::stoi((*i)[4])});
  }
  return boxes;
}

TEST_F(Picture, BoxesAreInThePictureAndDoNotOverlap) {
  std::mt19937 random(1);
  std::size_t all = 0;
  for (int round = 0; round < 400; ++round) {
    const CluiFragment syntax = RandomFragment(random, {a, b, at}, 4);
    const std::string picture = pictureOf(syntax);
    std::smatch size;
    ASSERT_TRUE(std::regex_search(picture, size, std::regex("viewBox=\"0 0 (\\d+) (\\d+)\"")));
    const std::vector<Box> boxes = BoxesOf(picture);
    all += boxes.size();
    for (const Box& box : boxes) {
      ASSERT_GE(box.left, 0) << round;
      ASSERT_GE(box.top, 0) << round;
      ASSERT_LE(box.right, std::stoi(size[1])) << round;
      ASSERT_LE(box.bottom, std::stoi(size[2])) << round;
      for (const Box& other : boxes) {
        if (&other == &box) break;
        ASSERT_TRUE(box.right <= other.left || other.right <= box.left || box.bottom <= other.top ||
                    other.bottom <= box.top)
            << picture;
      }
    }
  }
  EXPECT_GT(all, 4000U);
}

}  // namespace
