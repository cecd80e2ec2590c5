#include "bench/DraftingParser.h"

#include <iterator>
#include <random>

#include "tests/support/words.h"

namespace {

struct Word {
  const char* name;
  const char* abbreviation;
  YcluiValueType type;
};

constexpr Word Words[] = {
    {"layer:", nullptr, YcluiValueString}, {"rectangle:", nullptr, YcluiValuePoint},
    {"to:", nullptr, YcluiValuePoint},     {"circle:", nullptr, YcluiValuePoint},
    {"radius:", nullptr, YcluiValueFloat}, {"polyline", "pol", YcluiValueNone},
    {"at:", nullptr, YcluiValuePoint},     {"close", "cl", YcluiValueNone},
    {"text:", nullptr, YcluiValueString},  {"weight:", nullptr, YcluiValueInteger},
    {"show", "sh", YcluiValueNone},        {"hide", nullptr, YcluiValueNone},
    {"grid", nullptr, YcluiValueNone},     {"axes", "ax", YcluiValueNone},
    {"redraw", "re", YcluiValueNone},      {"undo", nullptr, YcluiValueNone},
};

constexpr const char* Syntax =
    "(layer: {(layer \"$0[0]\")} | weight: {(weight $0[0])} | redraw {(redraw)} | undo {(undo $p)}"
    " | rectangle: to: {(rectangle $0[0] $1[0])} | circle: radius: {(circle $0[0] $$[0])}"
    " | text: at: {(text \"$0[0]\" $1[0])} | polyline (at:)* close {(polyline $1[0] $-1[0])}"
    " | (show | hide) (grid {(view \"$0\" \"$$\")} | axes {(view \"$0\" \"$$\")}))";

struct Command {
  const char* form;  // a "%" is replaced by a number
  int tokens;
  long commands;
};

constexpr Command Commands[] = {
    {"# the % th room, by the window\n", 0, 0},
    {"layer: \"walls %\"\n", 1, 1},
    {"rectangle: %,% to: %,%\n", 2, 1},
    {"circle: %,% radius: %.5\n", 2, 1},
    {"polyline at: %,% at: %,% at: %,% at: %,% close\n", 6, 1},
    {"text: 'a \"quoted\" word' at: %,%\n", 2, 1},
    {"weight: %\n", 1, 1},
    {"show grid hide ax\n", 4, 2},
    {"undo redraw sh axes undo hide grid re\n", 8, 6},
    {"pol at: -%,% cl undo undo sh grid\n", 7, 4},
};

std::string Filled(const char* form, std::minstd_rand& numbers) {
  std::string text;
  for (; *form != '\0'; ++form) {
    text += *form == '%' ? std::to_string(numbers() % 100) : std::string(1, *form);
  }
  return text;
}

}  // namespace

DraftingParser::DraftingParser() {
  for (const Word& word : Words) {
    if (word.type == YcluiValueNone) {
      lex()->addKeyword(word.name, word.abbreviation, 0);
    } else {
      lex()->addKeyword(word.name, 1, &word.type, 0);
    }
  }
  const std::uint32_t mark = lex()->addKeyword(';', 0);
  setSyntaxGraph(SyntaxOf(*lex(), Syntax).release());
  addIndefiniteNode(new YcluiSyntaxNode(mark));
}

YWord DraftingParser::evaluate(const char* text) {
  if (*text == '(') ++commands_;
  return 1;
}

DraftingText::DraftingText(long bytes) {
  std::minstd_rand numbers(1);
  const auto length = static_cast<std::size_t>(bytes);
  text.reserve(length);
  for (std::size_t i = 0;; ++i) {
    const Command& command = Commands[i % std::size(Commands)];
    const std::string line = Filled(command.form, numbers);
    if (text.size() + line.size() > length) break;
    text += line;
    tokens += command.tokens;
    commands += command.commands;
  }
  text.resize(length, '\n');
}
