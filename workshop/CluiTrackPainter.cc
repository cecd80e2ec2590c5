#include "workshop/CluiTrackPainter.h"

#include <algorithm>

#include "workshop/CluiMarkup.h"
#include "workshop/CluiTrackLayout.h"
#include "workshop/CluiVocabulary.h"

namespace {

using Size = CluiTrackSize;

constexpr int R = Size::Radius;
constexpr int Margin = 4;      // around the track
constexpr int MarkWidth = 14;  // of the marks at both ends, with the track to the command

std::string Attribute(const char* name, int value) {
  return std::string(" ") + name + "=\"" + std::to_string(value) + "\"";
}

const char* ClassOf(const CluiTrack& track) {
  if (track.kind == CluiTrack::Kind::Argument) return "argument";
  if (track.kind != CluiTrack::Kind::Word) return "sign";
  return track.word->isAnywhere ? "word anywhere" : "word";
}

std::string TipOfWord(const CluiWordText& word) {
  std::string tip = word.name();
  for (std::size_t i = 1; i < word.spellings.size(); ++i) tip += ", " + word.spellings[i].name;
  const CluiSpelling& first = word.spellings.front();
  if (first.shortest > 0 && first.shortest < first.name.size()) {
    tip += "; in short " + first.name.substr(0, first.shortest);
  }
  if (!word.text.empty()) tip += " \u2013 " + word.text;
  if (word.isAnywhere) tip += " (anywhere)";
  return tip;
}

std::string TipOfArgument(const CluiWordArgument& argument) {
  std::string tip = argument.type;
  if (!argument.range.empty()) tip += ", " + argument.range;
  if (!argument.text.empty()) tip += " \u2013 " + argument.text;
  return tip;
}

std::string TipOf(const CluiTrack& track) {
  if (track.word == nullptr) return "";
  return track.kind == CluiTrack::Kind::Word ? TipOfWord(*track.word)
                                             : TipOfArgument(track.word->arguments[track.argument]);
}

// The text of a box; the beginning that is enough to be typed has a class.
std::string MarkedText(const CluiTrack& track) {
  const std::string text = CluiTrackText(track);
  if (track.kind != CluiTrack::Kind::Word) return CluiEscaped(text);
  const std::size_t shortest = track.word->spellings.front().shortest;
  if (shortest == 0 || shortest >= text.size()) return CluiEscaped(text);
  return "<tspan class=\"short\">" + CluiEscaped(text.substr(0, shortest)) + "</tspan>" +
         CluiEscaped(text.substr(shortest));
}

}  // namespace

int CluiTrackPainter::WidthOf(const CluiTrack& track) {
  return track.width + 2 * (Margin + MarkWidth);
}

int CluiTrackPainter::HeightOf(const CluiTrack& track) {
  return std::max(track.up, Size::HalfBox) + track.drop + std::max(track.down, Size::HalfBox) +
         2 * Margin;
}

void CluiTrackPainter::drawCommand(const CluiTrack& track, int x, int y) {
  const int begin = x + Margin;
  const int line = y + Margin + std::max(track.up, Size::HalfBox);
  moveTo(begin, line - 8);
  upright(line + 8);
  moveTo(begin, line);
  across(begin + MarkWidth);
  draw(track, begin + MarkWidth, line);
  const int end = begin + MarkWidth + track.width;
  const int exit = line + track.drop;
  moveTo(end, exit);
  across(end + MarkWidth);
  for (const int mark : {end + MarkWidth - 4, end + MarkWidth}) {
    moveTo(mark, exit - 8);
    upright(exit + 8);
  }
}

std::string CluiTrackPainter::takeElements() {
  std::string elements = "<path class=\"track\" d=\"" + lines_ + "\"/>" + boxes_;
  lines_.clear();
  boxes_.clear();
  return elements;
}

void CluiTrackPainter::draw(const CluiTrack& track, int x, int y) {
  if (!track.note.empty()) drawNote(track, x, y);
  if (track.shape < track.width) {
    moveTo(x + track.shape, y + track.drop);
    across(x + track.width);
  }
  switch (track.kind) {
    case CluiTrack::Kind::Empty:
      return;
    case CluiTrack::Kind::Sequence:
      return drawSequence(track, x, y);
    case CluiTrack::Kind::Choice:
      return drawChoice(track, x, y);
    case CluiTrack::Kind::Loop:
      return drawLoop(track, x, y);
    default:
      return drawBox(track, x, y);
  }
}

void CluiTrackPainter::drawBox(const CluiTrack& track, int x, int y) {
  const bool isArgument = track.kind == CluiTrack::Kind::Argument;
  boxes_ += std::string("<g class=\"") + ClassOf(track) + "\">";
  const std::string tip = TipOf(track);
  if (!tip.empty()) boxes_ += "<title>" + CluiEscaped(tip) + "</title>";
  boxes_ += "<rect" + Attribute("x", x) + Attribute("y", y - Size::HalfBox) +
            Attribute("width", track.shape) + Attribute("height", 2 * Size::HalfBox) +
            (isArgument ? "" : Attribute("rx", Size::HalfBox)) + "/>";
  drawText(track, x + track.shape / 2, y + 5);
  boxes_ += "</g>";
}

void CluiTrackPainter::drawText(const CluiTrack& track, int x, int y) {
  boxes_ += "<text" + Attribute("x", x) + Attribute("y", y) + ">" + MarkedText(track) + "</text>";
}

void CluiTrackPainter::drawNote(const CluiTrack& track, int x, int y) {
  const int top = y - track.up;
  boxes_ += "<text class=\"note\"" + Attribute("x", x) + Attribute("y", top + 10) + ">" +
            CluiEscaped(track.note) + "</text>";
}

// Draws parts beside each other and returns where the last one ends; `y` becomes its exit.
int CluiTrackPainter::drawRow(const CluiTrack& track, std::size_t begin, std::size_t end, int x,
                              int& y) {
  const int gap = track.isUnbroken ? Size::NarrowGap : Size::Gap;
  for (std::size_t i = begin; i < end; ++i) {
    if (i > begin) {
      moveTo(x, y);
      across(x + gap);
      x += gap;
    }
    draw(track.parts[i], x, y);
    x += track.parts[i].width;
    y += track.parts[i].drop;
  }
  return x;
}

void CluiTrackPainter::drawSequence(const CluiTrack& track, int x, int y) {
  if (track.rows.empty()) {
    drawRow(track, 0, track.parts.size(), x, y);
    return;
  }
  const int left = x + 2 * R;
  moveTo(x, y);
  across(left);
  std::size_t begin = 0;
  int end = 0;
  int exit = y;
  for (const CluiTrack::Row& row : track.rows) {
    if (begin > 0) {
      drawTurn(end, exit, y + row.turn, left, y + row.offset);
      exit = y + row.offset;
    }
    end = drawRow(track, begin, row.end, left, exit);
    begin = row.end;
  }
  moveTo(end, exit);
  across(x + track.shape);
}

// From the end of a row to the begin of the next one, with a way back in the middle between them.
void CluiTrackPainter::drawTurn(int fromX, int fromY, int middle, int toX, int toY) {
  moveTo(fromX, fromY);
  curve(R, R, true);
  upright(middle - R);
  curve(-R, R, true);
  across(toX);
  curve(-R, R, false);
  upright(toY - R);
  curve(R, R, false);
}

void CluiTrackPainter::drawChoice(const CluiTrack& track, int x, int y) {
  const int left = x + 2 * R;
  const int right = x + track.shape - 2 * R;
  const int exit = y + track.drop;
  moveTo(x, y);
  across(left);
  for (const CluiTrack& part : track.parts) {
    const int entrance = y + part.offset;
    const int end = entrance + part.drop;
    draw(part, left, entrance);
    moveTo(left + part.width, end);
    across(right);
    if (part.offset == 0) {
      across(right + 2 * R);
      continue;
    }
    curve(R, -R, false);
    moveTo(left - R, entrance - R);
    curve(R, R, false);
  }
  const CluiTrack& last = track.parts.back();
  moveTo(x, y);
  curve(R, R, true);
  upright(y + last.offset - R);
  moveTo(right + R, y + last.offset + last.drop - R);
  upright(exit + R);
  curve(R, -R, true);
}

void CluiTrackPainter::drawLoop(const CluiTrack& track, int x, int y) {
  const CluiTrack& part = track.parts.front();
  const int left = x + 3 * R;
  const int right = left + part.width;
  const int exit = y + track.drop;
  const int top = y - std::max(part.up + Size::Between, 2 * R);
  const int bottom = exit + std::max(part.down + Size::Between, 2 * R);
  moveTo(x, y);
  across(left);
  draw(part, left, y);
  moveTo(right, exit);
  across(x + track.shape);
  // Past the part.
  moveTo(x, y);
  curve(R, -R, false);
  upright(top + R);
  curve(R, -R, true);
  across(x + track.shape - 2 * R);
  curve(R, R, true);
  upright(exit - R);
  curve(R, R, false);
  // Back to its begin, with an arrow.
  moveTo(right, exit);
  curve(R, R, true);
  upright(bottom - R);
  curve(-R, R, true);
  across(left);
  curve(-R, -R, true);
  upright(y + R);
  curve(R, -R, true);
  const int middle = (left + right) / 2;
  lines_ += "M" + std::to_string(middle + 3) + " " + std::to_string(bottom - 4) + "l-5 4l5 4";
}

void CluiTrackPainter::moveTo(int x, int y) {
  lines_ += "M" + std::to_string(x) + " " + std::to_string(y);
}

void CluiTrackPainter::across(int x) {
  lines_ += "H" + std::to_string(x);
}

void CluiTrackPainter::upright(int y) {
  lines_ += "V" + std::to_string(y);
}

// A quarter of a circle.
void CluiTrackPainter::curve(int dx, int dy, bool clockwise) {
  lines_ += "a" + std::to_string(R) + " " + std::to_string(R) + " 0 0 " +
            (clockwise ? "1 " : "0 ") + std::to_string(dx) + " " + std::to_string(dy);
}
