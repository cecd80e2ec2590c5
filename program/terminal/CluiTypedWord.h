// A word that is being typed, and what the parser would make of it.

#ifndef PROGRAM_TERMINAL_CLUITYPEDWORD_H_
#define PROGRAM_TERMINAL_CLUITYPEDWORD_H_

#include <cstddef>
#include <string>

#include "parser/YcluiPreview.h"
#include "terminal/YcluiOffers.h"

class CluiTypedWord {
 public:
  // The parser must outlive it. A comma at the start of the word separates arguments if it may and
  // the open token of the parser has one.
  CluiTypedWord(const YcluiParser& parser, const std::string& word, bool mayBeginWithComma);
  CluiTypedWord(const CluiTypedWord&) = delete;
  CluiTypedWord& operator=(const CluiTypedWord&) = delete;

  // The word without such a comma, as it can be sent.
  const std::string& text() const { return text_; }

  // Whether arguments of the parser's open token have been read.
  static bool EndsInArgument(const YcluiParser& parser);

  // After a comma that is the whole word, an argument must follow, too.
  YcluiTextEnding ending() const;
  // Whether it ends in a comment.
  bool endsInComment() const;
  // The quote that is open at the end. REQUIRES: ending() == YcluiEndsInQuote
  char openQuote() const;
  // Finds what can be put in at the end.
  void find(YcluiOffers& offers) { offers.find(preview_, text_, text_.size()); }

 private:
  std::string text_;
  bool isComma_ = false;
  YcluiPreview preview_;
};

#endif  // PROGRAM_TERMINAL_CLUITYPEDWORD_H_
