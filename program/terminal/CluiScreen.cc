#include "program/terminal/CluiScreen.h"

#include <algorithm>
#include <utility>

#include "program/text/CluiWidth.h"
#include "program/text/CluiWrap.h"

namespace {

constexpr char NewRow[] = "\r\n";

bool IsControl(wchar_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

}  // namespace

CluiScreen::CluiScreen(const CluiCapabilities& capabilities, CluiEncoding& encoding)
    : capabilities_(capabilities), encoding_(encoding) {
  resize(capabilities.width, capabilities.height);
}

void CluiScreen::resize(int width, int height) {
  width_ = static_cast<std::size_t>(std::max(width, 2));
  height_ = static_cast<std::size_t>(std::max(height, 2));
  if (hidden_) return;
  cursor_ = placeOf(shown_.size());
  hide();
}

int CluiScreen::rowsAboveLine() const {
  const std::size_t rows = placeOf(shown_.size()).row + 1;
  return rows < height_ ? static_cast<int>(height_ - rows) : 1;
}

// --- Where characters stand

// Moves behind the character. One that does not fit into the row stands in the next one.
void CluiScreen::step(Place& place, wchar_t c) const {
  const auto width = static_cast<std::size_t>(CluiWidthOf(c));
  if (place.column + width > width_) place = {place.row + 1, 0};
  place.column += width;
}

// The place behind so many characters.
CluiScreen::Place CluiScreen::placeOf(std::size_t character) const {
  Place place;
  for (std::size_t i = 0; i < character; ++i) step(place, shown_[i]);
  return place;
}

// The first character of a row, or of the first one behind it.
std::size_t CluiScreen::characterAt(std::size_t row) const {
  Place place;
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    step(place, shown_[i]);
    if (place.row >= row) return i;
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

// Keeps so many characters and draws what follows them.
void CluiScreen::change(const std::wstring& text, std::size_t same) {
  const bool appends = same == shown_.size();
  std::size_t from = same;
  const Place end = cursor_;
  if (!appends) {
    // The rows above the screen are lost; the line then gets all of the screen anew.
    const std::size_t top = end.row + 1 > height_ ? end.row + 1 - height_ : 0;
    const std::size_t row = top > 0 ? top : placeOf(same).row;
    goToRow(row);
    if (row == top) from = 0;
    if (row > top) from = characterAt(row);
    output_ += capabilities_.clearToEnd;
    cursor_ = {row, 0};
  }
  shown_ = text;
  if (from == 0) {
    const std::size_t rows = placeOf(shown_.size()).row + 1;
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
  const Place end = placeOf(shown_.size());
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
    piece += IsControl(shown_[i]) ? L'?' : shown_[i];
  }
  write();
  if (coloured && promptEnd_ >= shown_.size()) output_ += capabilities_.plain;
  settleAtEdge();
}

// Behind the last column terminals differ in where the cursor is; at the start of a row it is sure.
void CluiScreen::settleAtEdge() {
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

// Blanks to the edge stay in an empty row, and lead from one that has something into the next.
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

void CluiScreen::giveWay() {
  hide();
  othersWrote_ = true;
}

void CluiScreen::print(const std::wstring& text) {
  hide();
  beginFreshRow();
  std::wstring safe = text;
  std::replace_if(
      safe.begin(), safe.end(), [](wchar_t c) { return c != L'\n' && c != L'\t' && IsControl(c); },
      L'?');
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
