#include "bench/terminal/LargeParser.h"

#include "parser/YcluiHelp.h"

namespace {

constexpr int Words = 10000;

// The digits of the number are the consonants.
std::string WordOf(int number) {
  constexpr const char* Consonants = "kstnhmyrwg";
  std::string word;
  int divisor = Words / 10;
  for (const char vowel : {'a', 'e', 'i', 'o'}) {
    word += {Consonants[number / divisor % 10], vowel};
    divisor /= 10;
  }
  return word;
}

}  // namespace

LargeParser::LargeParser() {
  auto* syntax = new YcluiSyntaxGraph;
  for (int i = 0; i < Words; ++i) {
    words_.push_back(WordOf(i) + (i % 10 == 0 ? ":" : ""));
    syntax->insertOr(new YcluiSyntaxNode(add(words_.back()), "run"));
  }
  setSyntaxGraph(syntax);
}

std::uint32_t LargeParser::add(const std::string& word) {
  const bool hasArgument = word.back() == ':';
  const YcluiValueType type = YcluiValueInteger;
  const std::uint32_t id = hasArgument ? lex()->addKeyword(word.c_str(), 1, &type, 0)
                                       : lex()->addKeyword(word.c_str(), nullptr, 0);
  help().setText(id, ("what can be done with " + word).c_str());
  if (hasArgument) {
    help().setArgument(id, 1, "COUNT", "how often");
    help().setRange(id, 1, 1, 100);
  }
  return id;
}

YWord LargeParser::evaluate(const char*) {
  ++commands_;
  return 1;
}
