// The picture of the line that is being edited, on the screen of a terminal.

#ifndef TERMINAL_YCLUISCREEN_H_
#define TERMINAL_YCLUISCREEN_H_

#include <cstddef>
#include <string>
#include <vector>

#include "foundation/YEncoding.h"
#include "terminal/YcluiCapabilities.h"
#include "terminal/YcluiLayout.h"
#include "terminal/YcluiPen.h"
#include "terminal/YcluiPicture.h"

// Nothing is written from here: takeOutput returns what has to be written to the terminal, which is
// no more than what differs from what is on the screen. Several changes before one takeOutput cost
// as much as one. Rows end with "\r\n", whatever the terminal's driver makes of it.
//
// Of a picture that is higher than the window, rows around the cursor are shown. When others have
// written, the next thing to be shown begins in a row of its own, wherever they left the cursor.
//
// A terminal that cannot move the cursor up or erase has one row for the picture: prompt and line
// alone, of a long line the part around the cursor.
class YQRT_API YcluiScreen {
 public:
  // The capabilities must outlive the screen. `encoding` is that of the terminal.
  explicit YcluiScreen(const YcluiCapabilities& capabilities,
                       const std::string& encoding = YEncoding::OfLocale());
  YcluiScreen(const YcluiScreen&) = delete;
  YcluiScreen& operator=(const YcluiScreen&) = delete;

  // The window has another size now. Rows that ran over its edge are taken to have been laid out
  // anew by the terminal; the picture is shown again.
  void resize(int width, int height);
  std::size_t width() const { return width_; }
  std::size_t height() const { return height_; }
  // Whether hint and rows of a picture are shown. Where they are not, print them.
  bool showsRows() const;
  // How many rows below the line are seen if they are added to a picture without any: what it
  // leaves of the window, and at least half of that, since then only a part of the line is shown.
  std::size_t rowsBeside(const YcluiPicture& picture) const;

  // Makes the screen show this, from the next takeOutput on.
  void show(YcluiPicture picture);
  // Removes the picture from the screen. The cursor is left where it began.
  void hide();
  // Leaves prompt and line, all of them, where they are, without what follows them, and the cursor
  // at the start of the row after them.
  void leave();
  bool isHidden() const { return !wanted_; }

  // A text above the picture, which is shown again after it. The text has any number of lines,
  // whose ends count; lines that are too long are broken at blanks.
  void print(const YcluiStyledText& text);
  // Clears all of the screen, if the terminal can; the picture is shown at its top.
  void clear();
  void ring() { output_ += capabilities_.ring; }
  // Hides the picture, for others to write after what has been written so far.
  void giveWay();
  // The same, when they have done so already.
  void forget();

  // What is to be written, which is then taken as written.
  std::string takeOutput();

 private:
  struct Position {
    std::size_t row = 0;     // of the rows shown
    std::size_t column = 0;  // the number of columns in use: after the last one
    bool operator==(const Position& other) const {
      return row == other.row && column == other.column;
    }
  };

  const YcluiCapabilities& capabilities_;
  YcluiPen pen_;
  std::size_t width_ = 2;
  std::size_t height_ = 1;
  std::size_t columns_ = 2;  // in use
  YcluiPicture picture_;
  bool wanted_ = false;      // the picture is to be on the screen
  bool changed_ = false;     // it is not on the screen as it should be
  bool drawn_ = false;       // something of it is on the screen: `shown_`
  bool othersWrote_ = true;  // since something was drawn or printed
  YcluiLayout shown_;
  Position at_;  // where the terminal's cursor is
  std::string output_;

  bool goesOnInNextRow() const { return capabilities_.wraps && capabilities_.wrapsLate; }
  void setSize(int width, int height);
  YcluiLayout layOut(const YcluiPicture& picture) const;
  std::size_t rowAfterReflow() const;
  void beginFreshRow();
  void printLine(const YcluiStyledText& text, std::size_t begin, std::size_t end);
  void erase();
  void draw(bool whole);
  void drawRow(std::size_t row, const std::vector<YcluiRow>& before);
  void clearTail(std::size_t row, std::size_t before);
  void put(std::size_t row, std::size_t begin, std::size_t end);
  void putJoined(std::size_t row, std::size_t column);
  bool hasJoined(std::size_t row, std::size_t from, std::size_t to) const;
  void goTo(Position to);
  std::string upward(std::size_t count) const;
  std::string across(std::size_t row, std::size_t from, std::size_t to);
  std::string rewritten(std::size_t row, std::size_t from, std::size_t to);
};

#endif  // TERMINAL_YCLUISCREEN_H_
