// A parser with a small drafting language, and texts in that language.

#ifndef BENCH_DRAFTINGPARSER_H_
#define BENCH_DRAFTINGPARSER_H_

#include <string>

#include "parser/YcluiParser.h"

// Words with an argument of each type, plain words with abbreviations, alternatives, sequences, a
// repeated part and the indefinite word ";". Commands are counted and do nothing.
class DraftingParser final : public YcluiParser {
 public:
  DraftingParser();
  long commands() const { return commands_; }

 private:
  long commands_ = 0;

  YWord evaluate(const char* text) override;
};

// A drawing as somebody would type it, comments included; always the same for a size.
struct DraftingText {
  // Exactly `bytes` long: newlines fill what follows the last whole command.
  explicit DraftingText(long bytes);

  std::string text;
  int tokens = 0;
  long commands = 0;
};

#endif  // BENCH_DRAFTINGPARSER_H_
