// From the bytes of a text to the cells of a screen.

#ifndef TERMINAL_YCLUICELLS_H_
#define TERMINAL_YCLUICELLS_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/YTypes.h"

// One display unit: a character with the combining marks after it, an emoji with its colour and
// those joined to it, a flag. Its width is the sum of its characters' widths, as the terminals
// count that go by the tables of the system. A byte that is part of no character is a unit of its
// own.
struct YcluiCell {
  std::u32string text;     // to be shown: "^A" for a control character, U+FFFD for a lone byte
  char32_t character = 0;  // the first one, as it is in the text
  std::size_t begin = 0;   // in bytes of the text
  std::size_t end = 0;
  std::size_t column = 0;  // in a row without an edge
  std::size_t width = 1;   // in columns, at least 1
};

// The units of a text, which is in the encoding inside the process. They cover it without gaps.
class YQRT_API YcluiCells {
 public:
  YcluiCells() = default;
  explicit YcluiCells(std::string_view bytes);
  // The same for characters, as YCharacters makes them of bytes.
  explicit YcluiCells(std::u32string_view characters);

  std::size_t size() const { return cells_.size(); }
  bool empty() const { return cells_.empty(); }
  const YcluiCell& operator[](std::size_t index) const { return cells_[index]; }
  auto begin() const { return cells_.begin(); }
  auto end() const { return cells_.end(); }

  std::size_t bytes() const { return cells_.empty() ? 0 : cells_.back().end; }
  std::size_t width() const {
    return cells_.empty() ? 0 : cells_.back().column + cells_.back().width;
  }
  // The index of the first unit that begins at the offset or after it; size() when there is none.
  std::size_t indexAt(std::size_t offset) const;
  // Whether the offset is that of a unit or of the end.
  bool isBetween(std::size_t offset) const;
  // The column at which the unit of the byte begins, or the width at the end of the text.
  std::size_t columnOf(std::size_t offset) const;

  // The columns that a character needs, in any locale: 0 for a combining mark, otherwise 1 or 2.
  static std::size_t WidthOf(char32_t character);
  static bool IsSpace(char32_t character);
  // Letters, digits and the underscore of any script.
  static bool IsOfWord(char32_t character);

 private:
  std::vector<YcluiCell> cells_;

  void add(char32_t character, std::size_t length);
};

#endif  // TERMINAL_YCLUICELLS_H_
