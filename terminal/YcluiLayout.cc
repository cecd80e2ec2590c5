#include "terminal/YcluiLayout.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "terminal/YcluiCells.h"

namespace {

constexpr std::size_t NoCursor = YcluiLayout::NoCursor;

void Append(const YcluiCell& cell, YcluiStyle style, std::vector<YcluiColumn>& columns) {
  columns.push_back({cell.text, style, cell.width});
  for (std::size_t i = 1; i < cell.width; ++i) columns.push_back({{}, style, 0});
}

// Builds the rows from top to bottom.
class Writer {
 public:
  Writer(YcluiLayout& layout, std::size_t width) : layout_(layout), width_(width) { newRow(); }

  // The cursor is set before the unit at the offset, which may be the end.
  void add(const YcluiStyledText& text, std::size_t cursor = NoCursor) {
    const YcluiCells cells{std::string_view(text.text())};
    for (const YcluiCell& cell : cells) {
      addCell(cell, text.styleAt(cell.begin), cursor);
    }
    if (cursor == NoCursor || cursor < cells.bytes()) return;
    makeRoom(1);
    setCursor();
  }
  void newRow() {
    finish();
    layout_.rows.emplace_back();
  }
  // A row that continues another one is never empty: a blank makes the terminal go on there.
  void finish() {
    const std::size_t count = layout_.rows.size();
    if (count < 2 || !layout_.rows[count - 2].continues || !columns().empty()) return;
    columns().push_back({U" ", {}, 1});
  }

 private:
  YcluiLayout& layout_;
  std::size_t width_;

  std::vector<YcluiColumn>& columns() { return layout_.rows.back().columns; }
  void setCursor() {
    layout_.row = layout_.rows.size() - 1;
    layout_.column = columns().size();
  }
  void makeRoom(std::size_t room) {
    if (columns().size() + room <= width_) return;
    while (columns().size() < width_) columns().push_back({U" ", {}, 1});
    layout_.rows.back().continues = true;
    newRow();
  }
  // The end of a row has room for the cursor but shows nothing.
  void addCell(const YcluiCell& cell, YcluiStyle style, std::size_t cursor) {
    const bool endsRow = cell.character == U'\n';
    YcluiCell shown = cell;
    if (!endsRow && shown.width > width_) shown.text = U"?";
    if (endsRow || shown.width > width_) shown.width = 1;
    makeRoom(shown.width);
    if (cursor >= cell.begin && cursor < cell.end) setCursor();
    if (endsRow) {
      newRow();
    } else {
      Append(shown, style, columns());
    }
  }
};

std::vector<YcluiColumn> ColumnsOf(const YcluiStyledText& text) {
  std::vector<YcluiColumn> columns;
  for (const YcluiCell& cell : YcluiCells(std::string_view(text.text()))) {
    Append(cell, text.styleAt(cell.begin), columns);
  }
  return columns;
}

}  // namespace

YcluiLayout YcluiLayout::Of(const YcluiPicture& picture, std::size_t width) {
  YcluiLayout layout;
  Writer writer(layout, width);
  writer.add(picture.prompt);
  writer.add(picture.line, picture.cursor);
  writer.add(picture.hint);
  writer.finish();
  const std::size_t ofLine = layout.rows.size();
  for (const YcluiStyledText& row : picture.rows) {
    writer.newRow();
    writer.add(row);
  }
  writer.finish();
  layout.below = layout.rows.size() - ofLine;
  return layout;
}

YcluiLayout YcluiLayout::InOneRow(const YcluiPicture& picture, std::size_t width) {
  std::vector<YcluiColumn> all = ColumnsOf(picture.prompt);
  const std::size_t cursor =
      all.size() + YcluiCells(std::string_view(picture.line.text())).columnOf(picture.cursor);
  for (YcluiColumn& column : ColumnsOf(picture.line)) all.push_back(std::move(column));

  // Moves by half of the row, so that most keys leave the beginning where it is.
  const std::size_t step = std::max<std::size_t>(width / 2, 1);
  std::size_t first = cursor < width ? 0 : (cursor - width) / step * step + step;
  while (first < cursor && all[first].width == 0) ++first;
  std::size_t last = std::min(first + width, all.size());
  while (last > first && last < all.size() && all[last].width == 0) --last;

  YcluiLayout layout;
  layout.rows.emplace_back();
  for (std::size_t i = first; i < last; ++i) layout.rows[0].columns.push_back(std::move(all[i]));
  layout.column = cursor - first;
  return layout;
}

void YcluiLayout::cut(std::size_t height) {
  if (rows.size() <= height) return;
  const std::size_t ofLine = rows.size() - below;
  const std::size_t left = height > ofLine ? height - ofLine : 0;
  below = std::min(below, std::max(left, height / 2));
  const std::size_t room = std::min(height - below, ofLine);

  const std::size_t after = std::min(ofLine - 1 - row, (room - 1) / 2);
  const std::size_t first = row + after + 1 > room ? row + after + 1 - room : 0;
  const auto begin = rows.begin();
  const auto at = [begin](std::size_t index) { return begin + static_cast<std::ptrdiff_t>(index); };
  rows.erase(at(ofLine + below), rows.end());
  rows.erase(at(first + room), at(ofLine));
  rows.erase(begin, at(first));
  rows[room - 1].continues = false;
  rows.back().continues = false;
  row -= first;
}
