// A terminal of a few rows with all that has scrolled out of it.

#ifndef TESTS_TERMINAL_EMULATOR_H_
#define TESTS_TERMINAL_EMULATOR_H_

#include <cstddef>
#include <string>
#include <vector>

// It knows the sequences of the capabilities below it, and lays rows that ran over the edge out
// anew when its width changes.
class Emulator {
 public:
  struct Cell {
    std::u32string text = U" ";  // empty: the right part of a wide character
    std::string style;           // SGR parameters in the order in which they came
    bool operator==(const Cell&) const = default;
  };
  struct Row {
    std::vector<Cell> cells;
    bool wrapped = false;  // the next row goes on where this one is full
  };

  Emulator(std::size_t width, std::size_t height, bool wraps = true, bool wrapsLate = true)
      : width_(width), height_(height), wraps_(wraps), wrapsLate_(wrapsLate), rows_(1) {}

  void write(const std::string& output);
  // `slack` chooses which rows are in the window then. Returns where the row `mark` is, which is at
  // the beginning of a line.
  std::size_t resize(std::size_t width, std::size_t height, std::size_t slack, std::size_t mark);

  // Without blanks at its end; empty for a row that is not there.
  std::vector<Cell> cells(std::size_t index) const;
  std::string text(std::size_t index) const;
  std::size_t size() const { return rows_.size(); }
  std::size_t top() const { return top_; }
  bool isBehindEdge() const { return pending_; }

  std::size_t row = 0, column = 0;

 private:
  std::size_t width_, height_;
  bool wraps_, wrapsLate_;
  std::vector<Row> rows_;
  std::size_t top_ = 0;
  bool pending_ = false;  // the last column was written, and the next character wraps
  std::string style_;

  void escape(char kind, const std::string& parameters);
  void put(char32_t c);
  void down();
  void nextRow();
  void cutOffAbove();
  void erase(Row& of, std::size_t from);
  Cell& cell(std::size_t index);
};

#endif  // TESTS_TERMINAL_EMULATOR_H_
