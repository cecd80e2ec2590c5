#include "terminal/YcluiScreen.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "terminal/YcluiCells.h"
#include "terminal/YcluiWrap.h"

namespace {

constexpr char NewRow[] = "\r\n";
// Columns between two changes that are rather written again than skipped.
constexpr std::size_t SmallGap = 4;

std::string Repeated(const std::string& text, std::size_t count) {
  std::string repeated;
  for (std::size_t i = 0; i < count; ++i) repeated += text;
  return repeated;
}

// One column further by `one`, or so many by `by`: the shorter way; empty when there is none.
std::string Moves(const std::string& one, const std::string& by, std::size_t count) {
  std::string moves = YcluiCapabilities::With(by, count);
  if (one.empty() || (!moves.empty() && moves.size() <= one.size() * count)) return moves;
  return Repeated(one, count);
}

void TakeShorter(std::string& best, std::string other) {
  if (!other.empty() && (best.empty() || other.size() < best.size())) best = std::move(other);
}

void MarkUnit(const std::vector<YcluiColumn>& columns, std::size_t column,
              std::vector<bool>& marks) {
  if (columns.empty()) return;
  while (column > 0 && columns[column].width == 0) --column;
  const std::size_t width = std::max<std::size_t>(columns[column].width, 1);
  for (std::size_t i = 0; i < width; ++i) marks[column + i] = true;
}

// Which columns of a row have to be written. Blanks are, too: they move with the others when the
// window changes.
std::vector<bool> Changes(const std::vector<YcluiColumn>& now, const YcluiRow* before) {
  std::vector<bool> changes(now.size(), before == nullptr);
  for (std::size_t i = 0; before != nullptr && i < now.size(); ++i) {
    if (i >= before->columns.size() || now[i] != before->columns[i]) MarkUnit(now, i, changes);
  }
  return changes;
}

}  // namespace

YcluiScreen::YcluiScreen(const YcluiCapabilities& capabilities, const std::string& encoding)
    : capabilities_(capabilities), pen_(capabilities, encoding) {
  setSize(capabilities.width, capabilities.height);
}

// --- Sizes

// A terminal that wraps at once scrolls when its last column is written, and one that cannot go up
// could not return: there the last column stays free.
void YcluiScreen::setSize(int width, int height) {
  width_ = static_cast<std::size_t>(std::max(width, 1));
  height_ = static_cast<std::size_t>(std::max(height, 1));
  const bool avoidsEdge = (capabilities_.wraps && !capabilities_.wrapsLate) || !showsRows();
  columns_ = avoidsEdge && width_ > 1 ? width_ - 1 : width_;
}

void YcluiScreen::resize(int width, int height) {
  setSize(width, height);
  if (!drawn_) return;
  const std::size_t above = std::min(rowAfterReflow(), height_ - 1);
  output_ += '\r';
  at_ = {above, 0};
  erase();
}

// The rows between the beginning of what is shown and the cursor, when the terminal has laid it out
// anew for the present width.
std::size_t YcluiScreen::rowAfterReflow() const {
  std::size_t row = 0;
  std::size_t column = 0;
  for (std::size_t i = 0;; ++i) {
    const std::vector<YcluiColumn>& columns = shown_.rows[i].columns;
    const std::size_t end = i == at_.row ? std::min(at_.column, columns.size()) : columns.size();
    const auto step = [&](std::size_t width) {
      if (column > 0 && column + width > width_) ++row, column = 0;
      column += width;
    };
    for (std::size_t k = 0; k < end; ++k) step(columns[k].width);
    if (i == at_.row) {
      if (end == at_.column) step(end < columns.size() ? columns[end].width : 1);
      return row;
    }
    if (!shown_.rows[i].continues) ++row, column = 0;
  }
}

bool YcluiScreen::showsRows() const {
  return !capabilities_.up.empty() && !capabilities_.clearToEnd.empty();
}

std::size_t YcluiScreen::rowsBeside(const YcluiPicture& picture) const {
  const std::size_t rows = layOut(picture).rows.size();
  return std::max(rows < height_ ? height_ - rows : 0, height_ / 2);
}

YcluiLayout YcluiScreen::layOut(const YcluiPicture& picture) const {
  if (!showsRows()) return YcluiLayout::InOneRow(picture, columns_);
  YcluiLayout layout = YcluiLayout::Of(picture, columns_);
  if (goesOnInNextRow()) return layout;
  for (YcluiRow& row : layout.rows) row.continues = false;
  return layout;
}

// --- What is on the screen

void YcluiScreen::show(YcluiPicture picture) {
  picture_ = std::move(picture);
  wanted_ = changed_ = true;
}

void YcluiScreen::hide() {
  erase();
  wanted_ = false;
}

void YcluiScreen::leave() {
  if (!wanted_) return;
  picture_.cursor = YcluiLayout::NoCursor;  // at the end of a full row it would need one more
  picture_.hint.clear();
  picture_.rows.clear();
  draw(true);
  output_ += shown_.rows.back().columns.empty() ? "\r" : NewRow;
  wanted_ = drawn_ = false;
}

void YcluiScreen::giveWay() {
  hide();
  othersWrote_ = true;
}

void YcluiScreen::forget() {
  wanted_ = drawn_ = false;
  othersWrote_ = true;
}

void YcluiScreen::clear() {
  if (capabilities_.clearScreen.empty()) return;
  output_ += capabilities_.clearScreen;
  drawn_ = othersWrote_ = false;
  changed_ = true;
}

std::string YcluiScreen::takeOutput() {
  if (wanted_ && changed_) draw(false);
  return std::exchange(output_, std::string());
}

// Blanks to the edge stay in an empty row, and lead from one that has something into the next.
void YcluiScreen::beginFreshRow() {
  if (!std::exchange(othersWrote_, false) || !capabilities_.wraps) return;
  output_.append(capabilities_.wrapsLate ? width_ : width_ - 1, ' ');
  output_ += '\r';
  if (showsRows()) output_ += capabilities_.clearToEnd;
}

void YcluiScreen::print(const YcluiStyledText& text) {
  erase();
  beginFreshRow();
  const std::string& bytes = text.text();
  for (std::size_t begin = 0; begin < bytes.size();) {
    const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
    printLine(text, begin, end);
    begin = end + 1;
  }
}

// "\n" is never part of a character, so a text can be cut there.
void YcluiScreen::printLine(const YcluiStyledText& text, std::size_t begin, std::size_t end) {
  const YcluiCells cells(std::string_view(text.text()).substr(begin, end - begin));
  for (const YcluiWrappedRow& row : YcluiWrap::Rows(cells, width_)) {
    std::size_t column = 0;
    for (std::size_t i = row.begin; i < row.end; ++i) {
      const bool isTab = cells[i].character == '\t';
      const std::size_t width =
          isTab ? YcluiWrap::TabStop - column % YcluiWrap::TabStop : cells[i].width;
      pen_.set(text.styleAt(begin + cells[i].begin), output_);
      if (isTab) output_.append(width, ' ');
      if (!isTab) pen_.write(cells[i].text, width, output_);
      column += width;
    }
    pen_.set({}, output_);
    output_ += NewRow;
  }
}

void YcluiScreen::erase() {
  changed_ = true;
  if (!std::exchange(drawn_, false)) return;
  goTo({0, 0});
  if (showsRows()) {
    output_ += capabilities_.clearToEnd;
  } else {
    output_.append(shown_.rows[0].columns.size(), ' ') += '\r';
  }
}

// --- Drawing

// With `whole`, all rows are drawn, and the first ones scroll out of the window. The cursor is in
// the last one then.
void YcluiScreen::draw(bool whole) {
  YcluiLayout next = layOut(picture_);
  if (!whole) next.cut(height_);
  if (next.rows.size() > height_) erase();
  if (!drawn_) {
    beginFreshRow();
    shown_.rows.clear();
    at_ = {};
  }
  const std::vector<YcluiRow> before = std::exchange(shown_, std::move(next)).rows;
  for (std::size_t row = 0; row < shown_.rows.size(); ++row) drawRow(row, before);
  pen_.set({}, output_);
  if (before.size() > shown_.rows.size()) {
    goTo({shown_.rows.size(), 0});
    output_ += capabilities_.clearToEnd;
  }
  const std::size_t last = shown_.rows.size() - 1;
  if (!whole) {
    goTo({shown_.row, shown_.column});
  } else if (at_.row != last) {
    goTo({last, 0});
  }
  drawn_ = true;
  changed_ = false;
}

// Where a row goes on in the next one, the terminal itself wraps: then it lays out both anew when
// the window changes, and copies them as one line.
void YcluiScreen::drawRow(std::size_t row, const std::vector<YcluiRow>& before) {
  const YcluiRow& now = shown_.rows[row];
  const YcluiRow* old = row < before.size() ? &before[row] : nullptr;
  const auto continued = [](const std::vector<YcluiRow>& rows, std::size_t index) {
    return index < rows.size() && rows[index].continues;
  };
  const bool isWrapping =
      row > 0 && continued(shown_.rows, row - 1) && at_ == Position{row - 1, columns_};
  std::vector<bool> changes = Changes(now.columns, old);
  if (now.continues != continued(before, row) && now.columns.size() == columns_) {
    MarkUnit(now.columns, now.columns.size() - 1, changes);
  }
  if (isWrapping) MarkUnit(now.columns, 0, changes);

  for (std::size_t begin = 0; begin < changes.size();) {
    if (!changes[begin]) {
      ++begin;
      continue;
    }
    std::size_t end = begin;
    for (std::size_t i = begin; i < changes.size() && i < end + SmallGap; ++i) {
      if (changes[i]) end = i + 1;
    }
    if (begin == 0 && isWrapping) at_ = {row, 0};
    goTo({row, begin});
    put(row, begin, end);
    begin = end;
  }
  if (old != nullptr) clearTail(row, old->columns.size());
}

// Removes what a row had after its present end, blanks too: when the window changes, they count.
void YcluiScreen::clearTail(std::size_t row, std::size_t before) {
  const std::size_t end = shown_.rows[row].columns.size();
  if (before <= end) return;
  goTo({row, end});
  pen_.set({}, output_);
  if (!capabilities_.clearToLineEnd.empty()) {
    output_ += capabilities_.clearToLineEnd;
  } else {
    output_.append(before - end, ' ');
    at_.column = before;
  }
}

void YcluiScreen::put(std::size_t row, std::size_t begin, std::size_t end) {
  const std::vector<YcluiColumn>& columns = shown_.rows[row].columns;
  for (std::size_t i = begin; i < end; ++i) {
    if (columns[i].width > 2 && i + columns[i].width < columns_) {
      putJoined(row, i);
    } else if (columns[i].width > 0) {
      pen_.set(columns[i].style, output_);
      pen_.write(columns[i].text, columns[i].width, output_);
    }
  }
  at_ = {row, end};
}

// Some terminals show joined emoji as one of two columns. The cursor is set before and after them,
// so that only blanks follow there.
void YcluiScreen::putJoined(std::size_t row, std::size_t column) {
  const YcluiColumn& unit = shown_.rows[row].columns[column];
  const std::size_t end = column + unit.width;
  pen_.set({}, output_);
  output_.append(unit.width, ' ');
  output_ += across(row, end, column);
  pen_.set(unit.style, output_);
  pen_.write(unit.text, unit.width, output_);
  pen_.set({}, output_);
  output_ += '\r' + across(row, 0, end);
}

bool YcluiScreen::hasJoined(std::size_t row, std::size_t from, std::size_t to) const {
  if (row >= shown_.rows.size()) return false;
  const std::vector<YcluiColumn>& columns = shown_.rows[row].columns;
  to = std::min(to, columns.size());
  return from < to && std::any_of(columns.begin() + static_cast<std::ptrdiff_t>(from),
                                  columns.begin() + static_cast<std::ptrdiff_t>(to),
                                  [](const YcluiColumn& column) { return column.width > 2; });
}

// After the last column terminals differ in where the cursor is; at the start of a row it is sure.
void YcluiScreen::goTo(Position to) {
  if (at_ == to) return;
  pen_.set({}, output_);
  if (at_.column >= columns_) {
    output_ += '\r';
    at_.column = 0;
  }
  if (at_.row > to.row) output_ += upward(at_.row - to.row);
  if (at_.row < to.row) {
    output_ += Repeated(NewRow, to.row - at_.row);
    at_.column = 0;
  }
  output_ += across(to.row, at_.column, to.column);
  at_ = to;
}

std::string YcluiScreen::upward(std::size_t count) const {
  return Moves(capabilities_.up, capabilities_.upBy, count);
}

// The shortest way between two columns of a row. REQUIRES: the row is as it should be up to `to`
std::string YcluiScreen::across(std::size_t row, std::size_t from, std::size_t to) {
  if (from == to) return {};
  std::string best;
  if (from > to) {
    best = Moves(capabilities_.left, capabilities_.leftBy, from - to);
    TakeShorter(best, '\r' + across(row, 0, to));
  } else {
    best = Moves(capabilities_.right, capabilities_.rightBy, to - from);
    const bool isShorter = to - from < best.size() && !hasJoined(row, from, to);
    if (best.empty() || isShorter) TakeShorter(best, rewritten(row, from, to));
    if (best.empty()) return '\r' + rewritten(row, 0, to);
  }
  TakeShorter(best, YcluiCapabilities::With(capabilities_.toColumn, to));
  return best;
}

// The units between two columns once more; empty when the first one is in the middle of a unit.
std::string YcluiScreen::rewritten(std::size_t row, std::size_t from, std::size_t to) {
  if (row >= shown_.rows.size()) return std::string(to - from, ' ');
  const std::vector<YcluiColumn>& columns = shown_.rows[row].columns;
  if (from < columns.size() && columns[from].width == 0) return {};
  std::string text;
  for (std::size_t i = from; i < to; ++i) {
    if (i >= columns.size()) {
      text += ' ';
    } else if (columns[i].width > 0) {
      pen_.set(columns[i].style, text);
      pen_.write(columns[i].text, columns[i].width, text);
    }
  }
  pen_.set({}, text);
  return text;
}
