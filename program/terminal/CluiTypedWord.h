// A word that is being typed, and what the parser would make of it.

#ifndef PROGRAM_TERMINAL_CLUITYPEDWORD_H_
#define PROGRAM_TERMINAL_CLUITYPEDWORD_H_

#include <cstddef>
#include <string>

#include "parser/YcluiPreview.h"
#include "terminal/YcluiColours.h"
#include "terminal/YcluiOffers.h"
#include "terminal/YcluiStyledText.h"

// A comma at the start of the word may separate its first argument from the one before. The lexer
// accepts no comma there, so it is read as a blank, which keeps all offsets.
class CluiTypedWord {
 public:
  // The parser must outlive its use.
  explicit CluiTypedWord(const YcluiParser& parser) : parser_(parser), preview_(parser) {}
  CluiTypedWord(const YcluiParser& parser, const std::string& word, bool mayBeginWithComma)
      : CluiTypedWord(parser) {
    read(word, mayBeginWithComma);
  }
  CluiTypedWord(const CluiTypedWord&) = delete;
  CluiTypedWord& operator=(const CluiTypedWord&) = delete;

  // Takes another word, for the parser as it is now.
  void read(const std::string& word, bool mayBeginWithComma);

  // The word without such a comma, as it can be sent.
  const std::string& text() const { return text_; }

  // After a comma that is the whole word, an argument must follow, too.
  YcluiTextEnding ending() const;
  // The quote that is open at the end. REQUIRES: ending() == YcluiEndsInQuote
  char openQuote() const;
  // Finds what can be put in at the end.
  void find(YcluiOffers& offers) { offers.find(preview_, text_, text_.size()); }
  // Adds the word, as it was typed, in colours.
  void paint(const YcluiColours& colours, YcluiStyledText& to);

 private:
  const YcluiParser& parser_;
  std::string word_;
  std::string text_;
  YcluiPreview preview_;
  bool isComma_ = false;

  std::size_t unfinished();
};

#endif  // PROGRAM_TERMINAL_CLUITYPEDWORD_H_
