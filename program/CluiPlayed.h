// The line that is being played, as its file has it.

#ifndef PROGRAM_CLUIPLAYED_H_
#define PROGRAM_CLUIPLAYED_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "program/CluiLine.h"

struct YcluiPlayedToken;

// A playback gives its texts to the parser itself. The one that a token is from is fetched when
// something is to be told of the token, and kept for the others of that text.
class CluiPlayed {
 public:
  explicit CluiPlayed(CluiEncoding& encoding) : line_(encoding) {}

  // The spot of a token; false for one of a text that a command has appended.
  bool find(const YcluiPlayedToken& token, CluiSpot& spot);
  bool has(const CluiSpot& spot) const { return spot.text == &line_.text(); }

  // Of the token found last: the full name of its file, and its text. That may be several lines of
  // the file, when a string runs over them.
  const std::string& file() const { return file_; }
  CluiLine& line() { return line_; }

 private:
  CluiLine line_;
  std::string file_;
  std::uint64_t number_ = 0;

  void fetch(const YcluiPlayedToken& token);
};

#endif  // PROGRAM_CLUIPLAYED_H_
