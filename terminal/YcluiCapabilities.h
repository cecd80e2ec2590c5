// What the terminal can do, as terminfo says.

#ifndef TERMINAL_YCLUICAPABILITIES_H_
#define TERMINAL_YCLUICAPABILITIES_H_

#include <string>
#include <string_view>
#include <vector>

#include "foundation/YTypes.h"

// A text is empty when the terminal has no such thing. All are ready to be written, without the
// delays that some descriptions contain, but for those that end in "By" and `toColumn`: With fills
// in their number.
struct YQRT_API YcluiCapabilities {
  bool wraps = false;           // goes on in the next row after the last column
  bool wrapsLate = false;       // but only when another character follows
  std::string up, left, right;  // by one, in the same column or row
  std::string upBy, leftBy, rightBy;
  std::string toColumn;        // of the same row, from 0
  std::string clearToLineEnd;  // from the cursor on
  std::string clearToEnd;      // from the cursor to the end of the screen
  std::string clearScreen;     // all of it, with the cursor at its beginning
  std::string ring;            // the bell
  std::string bold, dim, underline;
  std::string plain;                  // ends these and the colour
  std::vector<std::string> colours;   // of the text: none, 8 or 16; none where NO_COLOR is set
  bool underlineHasNoColour = false;  // an underlined text cannot have a colour as well
  bool dimHasNoColour = false;
  std::string begin;  // to be written before keys are read
  std::string end;    // and when that is over
  int width = 80;     // of a terminal that does not report its size
  int height = 24;

  // Of the terminal that TERM names; the poorest one when terminfo does not know it.
  static YcluiCapabilities Read();
  static std::string With(const std::string& capability, std::size_t number);
};

#endif  // TERMINAL_YCLUICAPABILITIES_H_
