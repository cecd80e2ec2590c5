#include "terminal/YcluiShow.h"

#include <utility>

void YcluiShow(YcluiLineEditor& editor, YcluiScreen& screen) {
  YcluiPicture picture = editor.picture();
  if (screen.showsRows()) {
    editor.addRows(picture, screen.width(), screen.rowsBeside(picture));
  } else if (editor.hasRows()) {
    YcluiPicture rows;
    editor.addRows(rows, screen.width(), screen.height());
    for (const YcluiStyledText& row : rows.rows) screen.print(row);
    editor.dropRows();
  }
  screen.show(std::move(picture));
}
