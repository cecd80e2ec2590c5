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

  // Starts again without a text. Words that were added or deleted since count from now on.
  // REQUIRES: it shares with a lexer.
  void begin() { beginTrial(*shared_); }
  // Discards the variables of its own.
  void forgetVariables() { forgetOwnVariables(); }

  // Of an open token: what its strings with variable forms have of the bytes that they may have
  // together. The one of a lexer in the middle of a token lets this one go on with it.
  static std::size_t ExpandedIn(const YcluiLex& lexer) { return YcluiLex::ExpandedIn(lexer); }
  void setExpanded(std::size_t bytes) { YcluiLex::setExpanded(bytes); }

 private:
  const YcluiLex* shared_;
};

#endif  // LEX_YCLUITRIALLEX_H_
