#include "terminal/YcluiOfferList.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "terminal/YcluiCells.h"

namespace {

constexpr std::size_t Gap = 2;  // between columns
// Whether there are help texts is decided by so many offers.
constexpr std::size_t Sample = 40;

// Whether each byte is a column.
bool IsPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char byte) { return byte >= ' ' && byte < 0x7F; });
}

std::size_t WidthOf(std::string_view text) {
  return IsPlain(text) ? text.size() : YcluiCells(text).width();
}

// A row of so many columns, which takes no more, and of each text the first line.
class RowText {
 public:
  explicit RowText(std::size_t width) : left_(width) {}

  void add(std::string_view text, YcluiStyle style = {}) {
    text = text.substr(0, text.find('\n'));
    const std::size_t end = IsPlain(text) ? std::min(text.size(), left_) : fitting(text);
    left_ -= end < text.size() ? left_ : WidthOf(text);
    text_.add(text.substr(0, end), style);
  }
  YcluiStyledText take() { return std::move(text_); }

 private:
  YcluiStyledText text_;
  std::size_t left_;

  std::size_t fitting(std::string_view text) const {
    std::size_t end = 0;
    for (const YcluiCell& cell : YcluiCells(text)) {
      if (cell.column + cell.width <= left_) end = cell.end;
    }
    return end;
  }
};

const char* HeadingOf(YcluiOffers::Group group) {
  switch (group) {
    case YcluiOffers::Group::Anywhere:
      return "anywhere:";
    case YcluiOffers::Group::Alias:
      return "aliases:";
    default:
      return nullptr;
  }
}

}  // namespace

void YcluiOfferList::open(bool selects) {
  isOpen_ = true;
  selects_ = selects;
  selected_ = firstRow_ = 0;
  rows_.clear();
  widest_ = measured_ = 0;
  hasHelp_ = false;
  for (std::size_t i = 0; i < std::min(Sample, offers_.count()) && !hasHelp_; ++i) {
    hasHelp_ = !offers_.help(i).empty();
  }
}

void YcluiOfferList::next() {
  selected_ = selected_ + 1 < offers_.count() ? selected_ + 1 : 0;
}

void YcluiOfferList::previous() {
  selected_ = (selected_ == 0 ? offers_.count() : selected_) - 1;
}

void YcluiOfferList::rowDown() {
  selected_ = std::min(selected_ + columns_, offers_.count() - 1);
}

void YcluiOfferList::rowUp() {
  selected_ -= std::min(selected_, columns_);
}

// Adds the row that begins with the offer `next`, or its heading, and moves `next` on. False after
// the last offer.
bool YcluiOfferList::addRow(std::size_t& next) {
  if (next >= offers_.count()) return false;
  const YcluiOffers::Group group = offers_.at(next).group;
  const bool beginsGroup = next == 0 || offers_.at(next - 1).group != group;
  const bool isHeaded = !rows_.empty() && rows_.back().heading != nullptr;
  const char* heading = HeadingOf(group);
  if (beginsGroup && !isHeaded && heading != nullptr) {
    rows_.push_back({heading, next, 0});
    return true;
  }
  Row row{nullptr, next, 0};
  while (row.count < columns_ && next < offers_.count() && offers_.at(next).group == group) {
    ++row.count;
    ++next;
  }
  rows_.push_back(row);
  return true;
}

void YcluiOfferList::measure(std::size_t count) {
  for (; measured_ < std::min(count, offers_.count()); ++measured_) {
    widest_ = std::max(widest_, WidthOf(offers_.at(measured_).name));
  }
}

std::size_t YcluiOfferList::columnsFor(std::size_t width) const {
  return hasHelp_ ? 1 : std::max<std::size_t>(1, (width + Gap - 1) / (widest_ + Gap));
}

// Makes the rows up to the one with the selection and those that are shown after it.
void YcluiOfferList::layOut(std::size_t width, std::size_t room) {
  // A longer name makes fewer columns, so that no more names than these can be shown.
  measure(selected_ + 1);
  measure(selected_ + 1 + room * columnsFor(width));
  columns_ = columnsFor(width);
  rows_.clear();
  std::size_t next = 0;
  while (next <= selected_ && addRow(next)) {
  }
  const std::size_t row = rows_.empty() ? 0 : rows_.size() - 1;
  if (row < firstRow_) firstRow_ = row;
  if (row >= firstRow_ + room) firstRow_ = row + 1 - room;
  while (rows_.size() < firstRow_ + room && addRow(next)) {
  }
}

std::vector<YcluiStyledText> YcluiOfferList::rows(std::size_t width, std::size_t room,
                                                  const YcluiColours& colours) {
  std::vector<YcluiStyledText> texts;
  layOut(width, room);
  const bool isCut = !rows_.empty() && rows_.back().first + rows_.back().count < offers_.count();
  const bool countsRest = isCut && room > 1;
  if (countsRest) layOut(width, --room);
  std::size_t end = 0;
  for (std::size_t i = firstRow_; i < std::min(rows_.size(), firstRow_ + room); ++i) {
    texts.push_back(textOf(rows_[i], width, colours));
    end = rows_[i].first + rows_[i].count;
  }
  if (countsRest && end < offers_.count()) {
    RowText left(width);
    left.add("and " + std::to_string(offers_.count() - end) + " more",
             colours.of(YcluiTextKind::ListHelp));
    texts.push_back(left.take());
  }
  return texts;
}

// Long help texts are cut at the end of the row.
YcluiStyledText YcluiOfferList::textOf(const Row& row, std::size_t width,
                                       const YcluiColours& colours) const {
  const YcluiStyle helpStyle = colours.of(YcluiTextKind::ListHelp);
  RowText text(width);
  if (row.heading != nullptr) text.add(row.heading, helpStyle);
  const std::size_t column = hasHelp_ ? std::min(widest_, width / 2) : widest_;
  for (std::size_t i = row.first; i < row.first + row.count; ++i) {
    const char* name = offers_.at(i).name;
    const bool isSelected = selects_ && i == selected_;
    text.add(name, isSelected ? colours.of(YcluiTextKind::ListSelected) : YcluiStyle());
    const std::string help = hasHelp_ ? offers_.help(i) : std::string();
    const bool isLast = i + 1 == row.first + row.count;
    const std::size_t used = WidthOf(name);
    if (!isLast || !help.empty()) text.add(std::string(std::max(column, used) - used + Gap, ' '));
    if (!help.empty()) text.add(help, helpStyle);
  }
  return text.take();
}
