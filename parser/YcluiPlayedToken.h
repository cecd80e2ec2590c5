// A token of a line that is being played.

#ifndef PARSER_YCLUIPLAYEDTOKEN_H_
#define PARSER_YCLUIPLAYEDTOKEN_H_

#include <cstdint>

// Filled by YcluiParser::playedToken. A text is one line of the file, or several when a string
// contains ends of lines, or a piece of a line after a pause.
struct YcluiPlayedToken {
  const char* file;      // full name of the file
  long line;             // number of the line, from 1, in which the text begins
  std::uint64_t number;  // number of the text, from 1, among all that this parser has played
  const char* text;      // the text as it is in the file
  long offset;           // offset in `text`, in bytes, at which the token begins; the text's length
                         // or more for a token of text that a command appended
};

#endif  // PARSER_YCLUIPLAYEDTOKEN_H_
