// What a user sees of the line that is being edited.

#ifndef TERMINAL_YCLUIPICTURE_H_
#define TERMINAL_YCLUIPICTURE_H_

#include <cstddef>
#include <vector>

#include "terminal/YcluiStyledText.h"

// An end of line in any of the texts begins a new row.
struct YcluiPicture {
  YcluiStyledText prompt;
  YcluiStyledText line;
  std::size_t cursor = 0;             // an offset in the line
  YcluiStyledText hint;               // after the line
  std::vector<YcluiStyledText> rows;  // below it: a list, a message
};

#endif  // TERMINAL_YCLUIPICTURE_H_
