// A picture in the rows and columns of a window.

#ifndef TERMINAL_YCLUILAYOUT_H_
#define TERMINAL_YCLUILAYOUT_H_

#include <cstddef>
#include <string>
#include <vector>

#include "foundation/YTypes.h"
#include "terminal/YcluiPicture.h"

// One column of a row. The columns after the first one of a wide unit have no text and width 0.
struct YcluiColumn {
  std::u32string text;
  YcluiStyle style;
  std::size_t width = 1;

  bool operator==(const YcluiColumn& other) const {
    return text == other.text && style == other.style && width == other.width;
  }
};

struct YcluiRow {
  std::vector<YcluiColumn> columns;  // at most the width of the window
  bool continues = false;            // the next row goes on where this one is full

  bool operator==(const YcluiRow& other) const {
    return columns == other.columns && continues == other.continues;
  }
};

struct YQRT_API YcluiLayout {
  static constexpr std::size_t NoCursor = static_cast<std::size_t>(-1);  // as that of a picture

  std::vector<YcluiRow> rows;  // at least one
  std::size_t below = 0;       // how many of them are the rows below the line
  std::size_t row = 0;         // of the cursor, whose column is always inside the window
  std::size_t column = 0;

  // In as many rows as the picture needs. No unit is split: what does not fit at the end of a row
  // is in the next one, and "?" replaces a unit that is wider than the window. REQUIRES: width > 0
  static YcluiLayout Of(const YcluiPicture& picture, std::size_t width);
  // In a single row: prompt and line alone, and of them the part around the cursor.
  static YcluiLayout InOneRow(const YcluiPicture& picture, std::size_t width);

  // Keeps at most `height` rows with that of the cursor. The rows below the line get what the line
  // leaves, and at least half of them if there are so many; of the line, what is below the cursor
  // gets up to half of its share before its first rows are dropped. REQUIRES: height > 0
  void cut(std::size_t height);
};

#endif  // TERMINAL_YCLUILAYOUT_H_
