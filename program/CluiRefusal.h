// Explains why a word was refused.

#ifndef PROGRAM_CLUIREFUSAL_H_
#define PROGRAM_CLUIREFUSAL_H_

#include <string>
#include <vector>

#include "program/CluiLine.h"
#include "program/text/CluiEncoding.h"
#include "program/text/CluiMessages.h"

class YcluiParser;
class YcluiToken;

struct CluiRefused {
  const YcluiToken* token = nullptr;
  bool offered = false;   // the lexer read the token whole, and the syntax refused it
  unsigned int code = 0;  // the code that it pushed onto the error manager, 0 for none
  bool inside = false;    // the current command began before the line that is being fed
  CluiSpot fault;         // of YcluiParser::lastFaultOffset
};

// The text of the input that is not read because of an invalid argument.
enum class CluiSkipped { Nothing, Line, BothLines };

class CluiRefusal {
 public:
  explicit CluiRefusal(CluiEncoding& encoding) : encoding_(encoding) {}

  // Another input begins.
  void restart() { compared_ = 0; }

  // The message for a word at `spot` of the outermost text; `line` is the one being fed or played.
  // A word of a nested text has the spot of the word that the text replaces. Moves `spot` to the
  // fault when the lexer could not read the word.
  std::wstring explain(YcluiParser& parser, const CluiLine& line, const CluiRefused& refused,
                       CluiSpot& spot);

  // The same in short, without the word and without suggestions.
  std::wstring reason(YcluiParser& parser, const CluiRefused& refused) const;

  // What is lost with the word: the rest of its line, or also the line that was fed with it.
  CluiSkipped skipped(YcluiParser& parser, const CluiRefused& refused) const;

 private:
  // How many unknown words of an input are compared with the dictionary. It bounds the cost of a
  // large file whose words are all unknown.
  static constexpr std::size_t ComparedAtMost = 200;

  CluiEncoding& encoding_;
  std::size_t compared_ = 0;

  std::wstring explainUnknown(YcluiParser& parser, const char* word);
  CluiPossible possibleWords(YcluiParser& parser) const;
  std::wstring explainMisplaced(YcluiParser& parser, const std::wstring& word, bool inside);
  std::wstring waitingLine(const YcluiParser& parser) const;
  std::wstring explainFault(YcluiParser& parser, const CluiLine& line, const CluiRefused& refused,
                            CluiSpot& spot) const;
  std::wstring faultText(const YcluiParser& parser, const YcluiToken& token, unsigned int code,
                         const std::string& found) const;
};

#endif  // PROGRAM_CLUIREFUSAL_H_
