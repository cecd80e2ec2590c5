// What is being read: the parser, the input, and the position in it.

#ifndef PROGRAM_CLUIREADING_H_
#define PROGRAM_CLUIREADING_H_

#include <cstdint>
#include <string>

#include "program/CluiLine.h"
#include "program/CluiPlayed.h"
#include "program/CluiReport.h"

class YcluiParser;

// Where the lexer started a token: the same for everything that happens to that token.
struct CluiTokenStart {
  std::uint32_t offset = 0;
  int depth = -1;  // how many texts are suspended; -1 for no token

  bool operator==(const CluiTokenStart&) const = default;
};

class CluiReading {
 public:
  explicit CluiReading(CluiEncoding& encoding) : line_(encoding), played_(encoding) {}

  // Null until the language is loaded, and at the end of the run.
  YcluiParser* parser() const { return parser_; }
  void setParser(YcluiParser* parser) { parser_ = parser; }
  // A command can delete the parser.
  bool isAlive() const;

  // The user's name for the input, empty for words that are typed.
  const std::string& input() const { return input_; }
  void setInput(const std::string& name) { input_ = name; }
  // That input is a recording, with this full name as the parser has it.
  void setPlayedFile(const std::string& fullName) { playedName_ = fullName; }

  // The line that is fed.
  CluiLine& line() { return line_; }

  // REQUIRES, but for place() and tokenStart(): a parser.

  // The character at which the last token starts. Without a line, for a token of a playback that
  // cannot be attributed to one.
  CluiSpot spot();
  // The same for an argument or a fault of that token, given the offset that the parser returns.
  CluiSpot spotAt(int offset);
  // The line that a spot is in, fed or played.
  CluiLine& lineOf(const CluiSpot& spot);
  // A spot as the user knows it.
  CluiPlace placeOf(const CluiSpot& spot) const;
  // The position of the last token; while the language is loaded, that in the script.
  CluiPlace place();
  CluiTokenStart tokenStart() const;

  // Whether the last token is from a playback, which gives its texts to the parser itself, and not
  // from the line that is fed.
  bool isPlayed() const;
  // Whether the recording that is the input is being played, and not one that it or a line names.
  bool isPlayingInput() const;
  CluiPlace playbackPlace() const;

 private:
  YcluiParser* parser_ = nullptr;
  std::string input_;
  std::string playedName_;
  CluiLine line_;
  CluiPlayed played_;

  std::string nameOfPlayed(const std::string& file) const;
};

#endif  // PROGRAM_CLUIREADING_H_
