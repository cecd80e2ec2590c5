// The parser, the input that it reads, and the position in that input.

#ifndef PROGRAM_CLUIREADING_H_
#define PROGRAM_CLUIREADING_H_

#include <cstdint>
#include <string>

#include "program/CluiLine.h"
#include "program/CluiReport.h"

class YcluiParser;
struct YcluiPlayedToken;

// Where the lexer started a token; identifies the token until the next one starts.
struct CluiTokenStart {
  std::uint32_t offset = 0;
  int depth = -1;  // the number of suspended texts; -1 for no token

  bool operator==(const CluiTokenStart&) const = default;
};

class CluiReading {
 public:
  explicit CluiReading(CluiEncoding& encoding) : line_(encoding), playedLine_(encoding) {}

  // Null before the language is loaded and at the end of the run.
  YcluiParser* parser() const { return parser_; }
  void setParser(YcluiParser* parser) { parser_ = parser; }
  // False when a command has deleted the parser.
  bool isAlive() const;

  // The user's name for the input, empty for typed words.
  const std::string& input() const { return input_; }
  void setInput(const std::string& name) { input_ = name; }
  // The input is a recording; `fullName` is the parser's name for it.
  void setPlayedFile(const std::string& fullName) { playedName_ = fullName; }

  // The line that is being fed.
  CluiLine& line() { return line_; }

  // All that follow but place() and tokenStart() REQUIRE a parser.

  // The character at which the last token starts; its line is 0 for a token of a playback that
  // comes from text appended by a command.
  CluiSpot spot();
  // The same for an argument or a fault of that token, given the offset that the parser returns.
  CluiSpot spotAt(int offset);
  // The line of a spot, fed or played.
  CluiLine& lineOf(const CluiSpot& spot);
  // The spot with the user's name of the file, and line and column from 1.
  CluiPlace placeOf(const CluiSpot& spot) const;
  // The position of the last token, or in the script while the language is loaded.
  CluiPlace place();
  CluiTokenStart tokenStart() const;

  // Whether the last token is from a playback and not from the line that is fed.
  bool isPlayed() const;
  // Whether the recording being played is the input itself, and not one that a command plays.
  bool isPlayingInput() const;
  CluiPlace playbackPlace() const;

 private:
  YcluiParser* parser_ = nullptr;
  std::string input_;
  std::string playedName_;
  CluiLine line_;
  // A playback feeds the parser itself. The text of its last reported token is kept here; it has
  // several lines when a string contains line ends.
  CluiLine playedLine_;
  std::string playedFile_;  // the full name
  std::uint64_t playedNumber_ = 0;

  bool findPlayed(const YcluiPlayedToken& token, CluiSpot& spot);
  bool isInPlayed(const CluiSpot& spot) const { return spot.text == &playedLine_.text(); }
  std::string nameOfPlayed(const std::string& file) const;
};

#endif  // PROGRAM_CLUIREADING_H_
