#include "program/terminal/CluiScreen.h"

#include <algorithm>
#include <utility>

#include "program/text/CluiWidth.h"
#include "program/text/CluiWrap.h"

namespace {

constexpr char NewRow[] = "\r\n";

}  // namespace

CluiScreen::CluiScreen(const CluiCapabilities& capabilities, CluiEncoding& encoding)
    : capabilities_(capabilities), encoding_(encoding) {
  resize(capabilities.width, capabilities.height);
}

void CluiScreen::resize(int width, int height) {
  width_ = static_cast<std::size_t>(std::max(width, 2));
  height_ = static_cast<std::size_t>(std::max(height, 2));
  if (hidden_) return;
  cursor_ = positionOf(shown_.size());
  hide();
}

int CluiScreen::rowsAboveLine() const {
  const std::size_t rows = positionOf(shown_.size()).row + 1;
  return rows < height_ ? static_cast<int>(height_ - rows) : 1;
}

// --- Positions of characters

// Moves past the character. One that does not fit into the row is in the next one.
void CluiScreen::step(Position& position, wchar_t c) const {
  const auto width = static_cast<std::size_t>(CluiWidthOf(c));
  if (position.column + width > width_) position = {position.row + 1, 0};
  position.column += width;
}

// The position after so many characters.
CluiScreen::Position CluiScreen::positionOf(std::size_t character) const {
  Position position;
  for (std::size_t i = 0; i < character; ++i) step(position, shown_[i]);
  return position;
}

// The first character in the row or in a later one.
std::size_t CluiScreen::characterAt(std::size_t row) const {
  Position position;
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    step(position, shown_[i]);
    if (position.row >= row) return i;
  }
  return shown_.size();
}

// --- Changing what is shown

void CluiScreen::show(const std::wstring& prompt, const std::wstring& line) {
  std::wstring text = prompt + line;
  if (hidden_) {
    beginFreshRow();
    hidden_ = false;
    shown_.clear();
    cursor_ = {};
    promptEnd_ = prompt.size();
    return change(text, 0);
  }
  std::size_t same = static_cast<std::size_t>(
      std::mismatch(shown_.begin(), shown_.end(), text.begin(), text.end()).first - shown_.begin());
  if (promptEnd_ != prompt.size()) same = 0;
  promptEnd_ = prompt.size();
  if (same == shown_.size() && same == text.size()) return;
  if (same == shown_.size() || canErase()) return change(text, same);
  changeInPlace(text);
}

// Keeps the first `same` characters and draws what follows them.
void CluiScreen::change(const std::wstring& text, std::size_t same) {
  const bool appends = same == shown_.size();
  std::size_t from = same;
  const Position end = cursor_;
  if (!appends) {
    // Rows that have scrolled off the screen cannot be changed; the rest is drawn from the top.
    const std::size_t top = end.row + 1 > height_ ? end.row + 1 - height_ : 0;
    const std::size_t row = top > 0 ? top : positionOf(same).row;
    goToRow(row);
    if (row == top) from = 0;
    if (row > top) from = characterAt(row);
    output_ += capabilities_.clearToEnd;
    cursor_ = {row, 0};
  }
  shown_ = text;
  if (from == 0) {
    const std::size_t rows = positionOf(shown_.size()).row + 1;
    cursor_ = {};
    if (rows > height_) {
      cursor_.row = rows - height_;
      from = characterAt(cursor_.row);
    }
  }
  drawFrom(from);
}

// For a terminal that cannot erase.
void CluiScreen::changeInPlace(const std::wstring& text) {
  const std::size_t before = cursor_.column;
  const bool oneRow = cursor_.row == 0;
  shown_ = text;
  const Position end = positionOf(shown_.size());
  output_ += oneRow && end.row == 0 ? "\r" : NewRow;
  cursor_ = {};
  drawFrom(0);
  if (!oneRow || end.row > 0 || before <= end.column) return;
  output_.append(before - end.column, ' ').append("\r");
  cursor_ = {};
  drawFrom(0);
}

void CluiScreen::drawFrom(std::size_t character) {
  const bool coloured = character < promptEnd_ && !capabilities_.colour.empty();
  std::wstring piece;
  const auto write = [&] {
    output_ += encoding_.toUser(piece);
    piece.clear();
  };
  if (coloured) output_ += capabilities_.colour;
  for (std::size_t i = character; i < shown_.size(); ++i) {
    if (coloured && i == promptEnd_) {
      write();
      output_ += capabilities_.plain;
    }
    const std::size_t row = cursor_.row;
    step(cursor_, shown_[i]);
    if (cursor_.row > row && !capabilities_.wraps) piece += L"\r\n";
    piece += CluiIsControl(shown_[i]) ? L'?' : shown_[i];
  }
  write();
  if (coloured && promptEnd_ >= shown_.size()) output_ += capabilities_.plain;
  wrapAtEdge();
}

// Terminals differ in where the cursor is after the last column, so it is moved to the next row.
void CluiScreen::wrapAtEdge() {
  if (cursor_.column < width_) return;
  if (!capabilities_.wraps) {
    output_ += NewRow;
  } else if (capabilities_.wrapsLate) {
    output_ += " \r";
  }
  cursor_ = {cursor_.row + 1, 0};
}

void CluiScreen::goToRow(std::size_t row) {
  output_ += '\r';
  for (std::size_t i = cursor_.row; i > row; --i) output_ += capabilities_.up;
  cursor_ = {row, 0};
}

// Writes a screen width of blanks: from the start of a row they end in that row, from any other
// column in the next one.
void CluiScreen::beginFreshRow() {
  if (!std::exchange(othersWrote_, false) || !capabilities_.wraps) return;
  output_.append(capabilities_.wrapsLate ? width_ : width_ - 1, ' ');
  output_ += '\r';
  if (canErase()) output_ += capabilities_.clearToEnd;
}

void CluiScreen::hide() {
  if (hidden_) return;
  hidden_ = true;
  if (!canErase()) {
    output_ += NewRow;
    return;
  }
  goToRow(cursor_.row + 1 > height_ ? cursor_.row + 1 - height_ : 0);
  output_ += capabilities_.clearToEnd;
}

void CluiScreen::leave() {
  if (hidden_) return;
  hidden_ = true;
  if (cursor_.column > 0) output_ += NewRow;
}

void CluiScreen::hideForOthers() {
  hide();
  othersWrote_ = true;
}

void CluiScreen::print(const std::wstring& text) {
  hide();
  beginFreshRow();
  std::wstring safe = text;
  std::replace_if(
      safe.begin(), safe.end(),
      [](wchar_t c) { return c != L'\n' && c != L'\t' && CluiIsControl(c); }, L'?');
  output_ += encoding_.toUser(CluiWrapped(safe, width_));
  if (!safe.empty() && safe.back() != L'\n') output_ += '\n';
}

void CluiScreen::clear() {
  if (capabilities_.clearScreen.empty()) return;
  hidden_ = true;
  output_ += capabilities_.clearScreen;
}

std::string CluiScreen::takeOutput() {
  return std::exchange(output_, std::string());
}
