// The line being typed, on the screen.

#ifndef PROGRAM_TERMINAL_CLUISCREEN_H_
#define PROGRAM_TERMINAL_CLUISCREEN_H_

#include <string>

#include "program/terminal/CluiCapabilities.h"
#include "program/text/CluiEncoding.h"

// A prompt and a line behind it, in as many rows as they need, with the cursor at the end. Nothing
// is written from here: what has to go to the terminal is collected, and is no more than what has
// changed. When others have written, the next thing to be shown begins in a row of its own,
// wherever they left the cursor.
//
// Of a line that is longer than the screen, the rows at the end are kept right.
class CluiScreen {
 public:
  CluiScreen(const CluiCapabilities& capabilities, CluiEncoding& encoding);

  // The window has another size now, and a line that ran over its edge has been laid out anew.
  void resize(int width, int height);
  int width() const { return static_cast<int>(width_); }
  // How many rows can be printed so that all of them and the line are on the screen; at least 1.
  int rowsAboveLine() const;

  // Makes the screen show these, the line shown if it was hidden.
  void show(const std::wstring& prompt, const std::wstring& line);
  // Takes the line from the screen. The cursor is left where it began.
  void hide();
  // Leaves the line where it is, and the cursor at the start of the row below it.
  void leave();
  bool isHidden() const { return hidden_; }

  // A text above the line, which is hidden then: any number of lines, with their ends. Lines that
  // are too long are broken at blanks.
  void print(const std::wstring& text);
  // Clears all of the screen.
  void clear();
  void ring() { output_ += capabilities_.ring; }
  // Hides the line, for others to write behind what has been written so far.
  void giveWay();
  // The same, when they have done so already.
  void forget() { hidden_ = othersWrote_ = true; }

  // What is to be written, which is then taken as written.
  std::string takeOutput();

 private:
  struct Place {
    std::size_t row = 0;
    std::size_t column = 0;  // the width of the screen: behind the last one
  };

  const CluiCapabilities& capabilities_;
  CluiEncoding& encoding_;
  std::size_t width_;
  std::size_t height_;
  bool hidden_ = true;
  bool othersWrote_ = true;    // since it was shown or something printed
  std::wstring shown_;         // prompt and line
  std::size_t promptEnd_ = 0;  // how much of it is the prompt
  Place cursor_;
  std::string output_;

  bool canErase() const { return !capabilities_.up.empty() && !capabilities_.clearToEnd.empty(); }
  void step(Place& place, wchar_t c) const;
  Place placeOf(std::size_t character) const;
  std::size_t characterAt(std::size_t row) const;
  void goToRow(std::size_t row);
  void beginFreshRow();
  void drawFrom(std::size_t character);
  void settleAtEdge();
  void change(const std::wstring& text, std::size_t same);
  void changeInPlace(const std::wstring& text);
};

#endif  // PROGRAM_TERMINAL_CLUISCREEN_H_
