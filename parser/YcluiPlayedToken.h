// A token of a line that is being played.

#ifndef PARSER_YCLUIPLAYEDTOKEN_H_
#define PARSER_YCLUIPLAYEDTOKEN_H_

#include <cstdint>

struct YcluiPlayedToken {
  const char* file;      // the full name
  long line;             // of the file, from 1, in which the text begins
  std::uint64_t number;  // of the text, among all that this parser has played
  const char* text;      // as the file has it
  long offset;           // in the text, where the token begins; at its length or after it for a
                         // token of text that a command appended
};

#endif  // PARSER_YCLUIPLAYEDTOKEN_H_
