// A parser with a language of 10,000 words.

#ifndef BENCH_TERMINAL_LARGEPARSER_H_
#define BENCH_TERMINAL_LARGEPARSER_H_

#include <string>
#include <vector>

#include "parser/YcluiParser.h"

// Words of four syllables, of eight letters, all with help texts. Each is a command; every tenth
// one has an integer argument with a name and a range, and a colon at its end.
class LargeParser final : public YcluiParser {
 public:
  LargeParser();

  const std::vector<std::string>& words() const { return words_; }
  long commands() const { return commands_; }

 private:
  std::vector<std::string> words_;
  long commands_ = 0;

  std::uint32_t add(const std::string& word);
  YWord evaluate(const char* text) override;
};

#endif  // BENCH_TERMINAL_LARGEPARSER_H_
