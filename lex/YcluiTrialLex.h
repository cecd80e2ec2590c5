// A lexer that tries texts.

#ifndef LEX_YCLUITRIALLEX_H_
#define LEX_YCLUITRIALLEX_H_

#include "lex/YcluiLex.h"

// Reads texts with the words and the variables of another lexer, and changes neither: variables
// that its texts set are seen by its own texts only. Internal to the library.
class YcluiTrialLex final : public YcluiLex {
 public:
  // `shared` must outlive it. For null, and without memory, it refuses every operation.
  explicit YcluiTrialLex(const YcluiLex* shared) : YcluiLex(shared, Trial()), shared_(shared) {}

  // Starts again without a text and without variables of its own. Words that were added or deleted
  // since count from now on.
  // REQUIRES: it shares with a lexer.
  void begin() { beginTrial(*shared_); }

 private:
  const YcluiLex* shared_;
};

#endif  // LEX_YCLUITRIALLEX_H_
