// Why a word was refused, in words.

#ifndef PROGRAM_CLUIREFUSAL_H_
#define PROGRAM_CLUIREFUSAL_H_

#include <string>
#include <vector>

#include "program/CluiLine.h"
#include "program/text/CluiEncoding.h"

class YcluiParser;
class YcluiToken;

// What is known of a refused word.
struct CluiRefused {
  const YcluiToken* token = nullptr;
  bool offered = false;   // it was read whole and came before the syntax
  unsigned int code = 0;  // what it pushed onto the error manager, 0 for nothing
  bool inside = false;    // the command under way began before the line that is being fed
};

class CluiRefusal {
 public:
  explicit CluiRefusal(CluiEncoding& encoding) : encoding_(encoding) {}

  // Another input begins.
  void restart() { compared_ = 0; }

  // The message for a word that the outermost text holds at `spot` of `line`, the one that is being
  // fed or played. The spot is moved to the literal at fault where that can be told. A word out of
  // a nested text has the spot of what stands for that text.
  std::wstring explain(YcluiParser& parser, const CluiLine& line, const CluiRefused& refused,
                       CluiSpot& spot);
  // Moves the spot of a word to argument `index`, from 1, if the word stands there.
  static void moveToArgument(YcluiParser& parser, const CluiLine& line, const YcluiToken& token,
                             int index, CluiSpot& spot);

 private:
  // How many unknown words of an input are compared with the dictionary; a large file of words of
  // another language must not cost its length times the dictionary's.
  static constexpr std::size_t ComparedAtMost = 200;

  CluiEncoding& encoding_;
  const CluiLine* line_ = nullptr;  // of the word that is explained
  std::size_t compared_ = 0;

  std::wstring explainUnknown(YcluiParser& parser, const char* word);
  std::wstring explainMisplaced(YcluiParser& parser, const std::wstring& word, bool inside);
  std::wstring waitingLine(const YcluiParser& parser) const;
  std::wstring explainArgument(YcluiParser& parser, const CluiRefused& refused, CluiSpot& spot);
  std::wstring explainNested(YcluiParser& parser, const CluiRefused& refused) const;
  std::wstring explainForm(YcluiParser& parser, const CluiRefused& refused, const CluiSpot& spot);
  std::wstring brokenText(const std::wstring& word, std::size_t line, const CluiSpot& spot) const;
};

#endif  // PROGRAM_CLUIREFUSAL_H_
