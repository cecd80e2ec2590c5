// The pieces of a previewed text. Internal to the preview.

#ifndef PARSER_YCLUIPIECES_H_
#define PARSER_YCLUIPIECES_H_

#include <string_view>
#include <vector>

#include "foundation/YMemory.h"
#include "parser/YcluiPreview.h"
#include "parser/YcluiTrial.h"

// Divides a text into pieces by what a trial finds in it.
class YcluiPieces {
 public:
  // Ends with the trial at the end of the text.
  void read(YcluiTrial& trial, const YcluiTrialState& before, std::string_view text);

  int count() const { return static_cast<int>(pieces_.size()); }
  const YcluiPiece& at(int index) const { return pieces_[static_cast<std::size_t>(index)]; }
  // See YcluiPreview.
  int indexAt(std::uint32_t offset) const;
  YcluiTextEnding ending() const { return ending_; }
  // Whether the text ends where the lexer misses an argument, or the rest of one.
  bool missesArgument() const { return missesArgument_; }

 private:
  using Kind = YcluiPieceKind;

  std::vector<YcluiPiece, YAllocator<YcluiPiece>> pieces_;
  std::string_view text_;
  std::size_t end_ = 0;  // of the pieces so far
  long shift_ = 0;       // what the offsets of the lexer have in front of the text
  int alias_ = -1;       // the piece of the last alias or variable of the text
  YcluiTextEnding ending_ = YcluiEndsWhole;
  bool missesArgument_ = false;
  YcluiTrial::Step step_;  // the present one

  void addToken(const YcluiTrial& trial);
  void addExpanded();
  void addWord(const YcluiTrial& trial);
  void addArguments(const YcluiTrial& trial);
  void addFault(const YcluiTrial& trial);
  void addGap(long end);
  void addRest(const YcluiTrial& trial);
  YcluiPiece* add(long begin, long end, Kind kind, int argument);
  Kind kindOfWord(const YcluiTrial& trial) const;
  Kind kindOfArgument(const YcluiTrial& trial, int index, long begin) const;
  YcluiTextEnding endingAtFault(const YcluiTrial& trial) const;
};

// The type of an argument of the token, from 1; YcluiValueString after the declared ones.
YcluiValueType YcluiTypeOfArgument(const YcluiLex& lexer, const YcluiToken& token, int index);

#endif  // PARSER_YCLUIPIECES_H_
