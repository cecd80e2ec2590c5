// Lines that fit a screen.

#ifndef TERMINAL_YCLUIWRAP_H_
#define TERMINAL_YCLUIWRAP_H_

#include <cstddef>
#include <vector>

#include "foundation/YTypes.h"
#include "terminal/YcluiCells.h"

// A part of a line, as indices of its units.
struct YcluiWrappedRow {
  std::size_t begin;
  std::size_t end;
};

class YQRT_API YcluiWrap {
 public:
  static constexpr std::size_t TabStop = 8;

  // Breaks a line that is wider than the screen: at a blank, which is in no row then, or beside a
  // wide character, as Japanese is written without blanks, but not before a closing character nor
  // after an opening one. A part without such a point is one row, however long.
  static std::vector<YcluiWrappedRow> Rows(const YcluiCells& line, std::size_t width);
};

#endif  // TERMINAL_YCLUIWRAP_H_
