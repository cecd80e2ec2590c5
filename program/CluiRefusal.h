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
  CluiSpot fault;         // where it could not be read, see YcluiParser::lastFaultOffset
};

class CluiRefusal {
 public:
  explicit CluiRefusal(CluiEncoding& encoding) : encoding_(encoding) {}

  // Another input begins.
  void restart() { compared_ = 0; }

  // The message for a word that the outermost text holds at `spot`, and which failed in `line`, the
  // one that is being fed or played. The spot is replaced where the message is about another one. A
  // word out of a nested text has the spot of what it was read in place of.
  std::wstring explain(YcluiParser& parser, const CluiLine& line, const CluiRefused& refused,
                       CluiSpot& spot);

 private:
  // How many unknown words of an input are compared with the dictionary; a large file of words of
  // another language must not cost its length times the dictionary's.
  static constexpr std::size_t ComparedAtMost = 200;

  CluiEncoding& encoding_;
  std::size_t compared_ = 0;

  std::wstring explainUnknown(YcluiParser& parser, const char* word);
  std::wstring explainMisplaced(YcluiParser& parser, const std::wstring& word, bool inside);
  std::wstring waitingLine(const YcluiParser& parser) const;
  std::wstring explainFault(YcluiParser& parser, const CluiLine& line, const CluiRefused& refused,
                            CluiSpot& spot) const;
  std::wstring faultText(const YcluiParser& parser, const YcluiToken& token, unsigned int code,
                         const std::string& found) const;
};

#endif  // PROGRAM_CLUIREFUSAL_H_
