// Draws the line being typed.

#ifndef PROGRAM_TERMINAL_CLUISCREEN_H_
#define PROGRAM_TERMINAL_CLUISCREEN_H_

#include <string>

#include "program/terminal/CluiCapabilities.h"
#include "program/text/CluiEncoding.h"

// A prompt and a line, in as many rows as they need, with the cursor at the end. Output is
// collected for the caller to write, and consists of the changes only. After other output, the line
// begins in a new row, wherever the cursor was left.
//
// Of a line that is longer than the screen, only the rows at its end are kept up to date.
class CluiScreen {
 public:
  CluiScreen(const CluiCapabilities& capabilities, CluiEncoding& encoding);

  // The window has a new size, and the terminal has wrapped the line anew.
  void resize(int width, int height);
  int width() const { return static_cast<int>(width_); }
  // The number of rows that fit on the screen together with the line; at least 1.
  int rowsAboveLine() const;

  // Draws the prompt and the line, or what has changed of them.
  void show(const std::wstring& prompt, const std::wstring& line);
  // Erases the line and leaves the cursor at its start.
  void hide();
  // Leaves the line on the screen and moves the cursor to the row below it.
  void leave();
  bool isHidden() const { return hidden_; }

  // Hides the line and prints a text of one or more lines, wrapped at blanks.
  void print(const std::wstring& text);
  // Clears the whole screen.
  void clear();
  void ring() { output_ += capabilities_.ring; }
  // Hides the line before output that does not go through this class.
  void hideForOthers();
  // Call after such output instead, when the line could not be hidden before it.
  void othersHaveWritten() { hidden_ = othersWrote_ = true; }

  // Returns the collected output, which the caller must write.
  std::string takeOutput();

 private:
  struct Position {
    std::size_t row = 0;     // from the first row of the line
    std::size_t column = 0;  // equal to the width after the last column
  };

  const CluiCapabilities& capabilities_;
  CluiEncoding& encoding_;
  std::size_t width_;
  std::size_t height_;
  bool hidden_ = true;
  bool othersWrote_ = true;    // since the last output of this class
  std::wstring shown_;         // prompt and line
  std::size_t promptEnd_ = 0;  // the length of the prompt in shown_
  Position cursor_;
  std::string output_;

  bool canErase() const { return !capabilities_.up.empty() && !capabilities_.clearToEnd.empty(); }
  void step(Position& position, wchar_t c) const;
  Position positionOf(std::size_t character) const;
  std::size_t characterAt(std::size_t row) const;
  void goToRow(std::size_t row);
  void beginFreshRow();
  void drawFrom(std::size_t character);
  void wrapAtEdge();
  void change(const std::wstring& text, std::size_t same);
  void changeInPlace(const std::wstring& text);
};

#endif  // PROGRAM_TERMINAL_CLUISCREEN_H_
