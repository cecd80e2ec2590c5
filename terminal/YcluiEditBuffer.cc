#include "terminal/YcluiEditBuffer.h"

#include <algorithm>
#include <utility>

// --- Positions

std::size_t YcluiEditBuffer::offsetOf(std::size_t index) const {
  return index < cells_.size() ? cells_[index].begin : text_.size();
}

std::size_t YcluiEditBuffer::wordBegin() const {
  std::size_t i = index();
  while (i > 0 && !YcluiCells::IsOfWord(cells_[i - 1].character)) --i;
  while (i > 0 && YcluiCells::IsOfWord(cells_[i - 1].character)) --i;
  return offsetOf(i);
}

std::size_t YcluiEditBuffer::wordEnd() const {
  std::size_t i = index();
  while (i < cells_.size() && !YcluiCells::IsOfWord(cells_[i].character)) ++i;
  while (i < cells_.size() && YcluiCells::IsOfWord(cells_[i].character)) ++i;
  return offsetOf(i);
}

std::size_t YcluiEditBuffer::spaceBefore() const {
  std::size_t i = index();
  while (i > 0 && YcluiCells::IsSpace(cells_[i - 1].character)) --i;
  while (i > 0 && !YcluiCells::IsSpace(cells_[i - 1].character)) --i;
  return offsetOf(i);
}

bool YcluiEditBuffer::moveTo(std::size_t offset) {
  offset = std::min(offset, text_.size());
  if (!cells_.isBetween(offset)) offset = cells_[cells_.indexAt(offset) - 1].begin;
  if (offset == cursor_) return false;
  cursor_ = offset;
  series_ = Series::None;
  return true;
}

bool YcluiEditBuffer::left() {
  return cursor_ > 0 && moveTo(offsetOf(index() - 1));
}

bool YcluiEditBuffer::right() {
  return !isAtEnd() && moveTo(offsetOf(index() + 1));
}

// --- Changes

// The one function that changes the text. The cursor is after the bytes then.
void YcluiEditBuffer::exchange(std::size_t offset, std::size_t length, std::string_view bytes) {
  text_.replace(offset, length, bytes);
  cells_ = YcluiCells(std::string_view(text_));
  cursor_ = offsetOf(cells_.indexAt(offset + bytes.size()));
}

// A step of its own. The caller sets the series.
void YcluiEditBuffer::change(std::size_t begin, std::size_t end, std::string_view bytes) {
  done_.push_back({begin, text_.substr(begin, end - begin), std::string(bytes), cursor_});
  if (done_.size() > MostUndoSteps) done_.pop_front();
  undone_.clear();
  exchange(begin, end - begin, bytes);
  series_ = Series::None;
}

bool YcluiEditBuffer::continuesTyping(const YcluiCells& typed) const {
  if (series_ != Series::Typing || typed.size() != 1) return false;
  if (done_.back().offset + done_.back().inserted.size() != cursor_) return false;
  return !YcluiCells::IsSpace(cells_[index() - 1].character) ||
         YcluiCells::IsSpace(typed[0].character);
}

bool YcluiEditBuffer::insert(std::string_view bytes) {
  if (bytes.empty()) return false;
  const YcluiCells typed(bytes);
  if (continuesTyping(typed)) {
    done_.back().inserted += bytes;
    exchange(cursor_, 0, bytes);
  } else {
    change(cursor_, cursor_, bytes);
  }
  series_ = typed.size() == 1 ? Series::Typing : Series::None;
  return true;
}

bool YcluiEditBuffer::replace(std::size_t begin, std::size_t end, std::string_view bytes) {
  end = offsetOf(cells_.indexAt(std::min(std::max(begin, end), text_.size())));
  begin = std::min(begin, text_.size());
  if (!cells_.isBetween(begin)) begin = cells_[cells_.indexAt(begin) - 1].begin;
  if (std::string_view(text_).substr(begin, end - begin) == bytes) return false;
  change(begin, end, bytes);
  return true;
}

bool YcluiEditBuffer::set(std::string_view bytes) {
  return replace(0, text_.size(), bytes) || end();
}

void YcluiEditBuffer::begin(std::string_view text) {
  YcluiKillRing kills = std::move(kills_);
  *this = YcluiEditBuffer();
  kills_ = std::move(kills);
  exchange(0, 0, text);
}

bool YcluiEditBuffer::eraseLeft() {
  if (cursor_ == 0) return false;
  change(offsetOf(index() - 1), cursor_, {});
  return true;
}

bool YcluiEditBuffer::eraseRight() {
  if (isAtEnd()) return false;
  change(cursor_, offsetOf(index() + 1), {});
  return true;
}

bool YcluiEditBuffer::kill(std::size_t begin, std::size_t end) {
  if (begin == end) return false;
  const std::string_view killed = std::string_view(text_).substr(begin, end - begin);
  if (series_ != Series::Killing) {
    kills_.add(killed);
  } else if (begin == cursor_) {
    kills_.append(killed);
  } else {
    kills_.prepend(killed);
  }
  change(begin, end, {});
  series_ = Series::Killing;
  return true;
}

bool YcluiEditBuffer::yank() {
  if (kills_.size() == 0) return false;
  yankBegin_ = cursor_;
  yanked_ = 0;
  change(cursor_, cursor_, kills_[0]);
  series_ = Series::Yanking;
  return true;
}

bool YcluiEditBuffer::yankPop() {
  if (series_ != Series::Yanking || kills_.size() < 2) return false;
  const std::size_t end = yankBegin_ + kills_[yanked_].size();
  yanked_ = (yanked_ + 1) % kills_.size();
  change(yankBegin_, end, kills_[yanked_]);
  series_ = Series::Yanking;
  return true;
}

bool YcluiEditBuffer::transpose() {
  if (cursor_ == 0 || cells_.size() < 2) return false;
  const std::size_t second = std::min(index(), cells_.size() - 1);
  const YcluiCell& before = cells_[second - 1];
  const YcluiCell& after = cells_[second];
  const std::string exchanged = text_.substr(after.begin, after.end - after.begin) +
                                text_.substr(before.begin, before.end - before.begin);
  change(before.begin, after.end, exchanged);
  return true;
}

// --- Back and forth

bool YcluiEditBuffer::undo() {
  if (done_.empty()) return false;
  undone_.push_back(std::move(done_.back()));
  done_.pop_back();
  const Step& step = undone_.back();
  exchange(step.offset, step.inserted.size(), step.removed);
  cursor_ = step.cursor;
  series_ = Series::None;
  return true;
}

bool YcluiEditBuffer::redo() {
  if (undone_.empty()) return false;
  done_.push_back(std::move(undone_.back()));
  undone_.pop_back();
  const Step& step = done_.back();
  exchange(step.offset, step.removed.size(), step.inserted);
  series_ = Series::None;
  return true;
}
