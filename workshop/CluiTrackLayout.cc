#include "workshop/CluiTrackLayout.h"

#include <algorithm>
#include <string>

#include "foundation/YCharacters.h"
#include "terminal/YcluiCells.h"

namespace {

using Size = CluiTrackSize;

// A font with characters of one width has narrow ones of 0.6 em; full-width ones are 1 em wide.
// At 13 pixels, in hundredths of a pixel.
constexpr int NarrowWidth = 790;
constexpr int FullWidth = 1330;
constexpr int TextSize = 13;  // of words and notes, in pixels
constexpr int NoteSize = 11;
constexpr int SmallestRoom = 160;

void LayOutBox(CluiTrack& track, int margin) {
  track.width = CluiTextWidth(CluiTrackText(track)) + 2 * margin;
  track.up = track.down = Size::HalfBox;
}

int GapOf(const CluiTrack& sequence) {
  return sequence.isUnbroken ? Size::NarrowGap : Size::Gap;
}

// Measures of the parts of a sequence from one index to another, in a row.
struct RowSize {
  int width = 0;
  int up = 0;
  int drop = 0;
  int down = 0;
};

RowSize SizeOfRow(const CluiTrack& track, std::size_t begin, std::size_t end) {
  RowSize row;
  int lowest = 0;
  for (std::size_t i = begin; i < end; ++i) {
    const CluiTrack& part = track.parts[i];
    row.width += part.width + (i == begin ? 0 : GapOf(track));
    row.up = std::max(row.up, part.up - row.drop);
    row.drop += part.drop;
    lowest = std::max(lowest, row.drop + part.down);
  }
  row.down = lowest - row.drop;
  return row;
}

// The index after the last part that fits into a row; at least one part is in it.
std::size_t EndOfRow(const CluiTrack& track, std::size_t begin, int room) {
  std::size_t end = begin + 1;
  while (end < track.parts.size() && SizeOfRow(track, begin, end + 1).width <= room) ++end;
  return end;
}

void LayOutRows(CluiTrack& track, int room) {
  int bottom = 0;
  int exit = 0;
  for (std::size_t begin = 0; begin < track.parts.size();) {
    const std::size_t end = EndOfRow(track, begin, room - 4 * Size::Radius);
    const RowSize row = SizeOfRow(track, begin, end);
    int offset = 0;
    int turn = 0;
    if (begin == 0) {
      track.up = row.up;
    } else {
      turn = std::max(bottom + Size::Between, exit + 2 * Size::Radius);
      offset = turn + std::max(row.up + Size::Between, 2 * Size::Radius);
    }
    track.rows.push_back({end, offset, turn});
    track.width = std::max(track.width, row.width + 4 * Size::Radius);
    exit = offset + row.drop;
    bottom = exit + row.down;
    begin = end;
  }
  track.drop = exit;
  track.down = bottom - exit;
}

void LayOutSequence(CluiTrack& track, int room) {
  for (CluiTrack& part : track.parts) CluiLayOut(part, room);
  const RowSize row = SizeOfRow(track, 0, track.parts.size());
  if (row.width > room && !track.isUnbroken) return LayOutRows(track, room);
  track.width = row.width;
  track.up = row.up;
  track.drop = row.drop;
  track.down = row.down;
}

void LayOutChoice(CluiTrack& track, int room) {
  int bottom = 0;
  for (CluiTrack& part : track.parts) {
    CluiLayOut(part, room - 4 * Size::Radius);
    if (&part == track.parts.data()) {
      track.up = part.up;
      track.drop = part.drop;
    } else {
      part.offset = std::max({bottom + Size::Between + part.up, 2 * Size::Radius,
                              track.drop + 2 * Size::Radius - part.drop});
    }
    bottom = part.offset + part.drop + part.down;
    track.width = std::max(track.width, part.width + 4 * Size::Radius);
  }
  track.down = bottom - track.drop;
}

void LayOutLoop(CluiTrack& track, int room) {
  CluiTrack& part = track.parts.front();
  CluiLayOut(part, room - 6 * Size::Radius);
  track.width = part.width + 6 * Size::Radius;
  track.up = std::max(part.up + Size::Between, 2 * Size::Radius);
  track.drop = part.drop;
  track.down = std::max(part.down + Size::Between, 2 * Size::Radius);
}

}  // namespace

void CluiLayOut(CluiTrack& track, int room) {
  room = std::max(room, SmallestRoom);
  switch (track.kind) {
    case CluiTrack::Kind::Empty:
      break;
    case CluiTrack::Kind::Word:
      LayOutBox(track, 12);
      break;
    case CluiTrack::Kind::Argument:
      LayOutBox(track, 8);
      break;
    case CluiTrack::Kind::Comma:
    case CluiTrack::Kind::Cut:
      LayOutBox(track, 6);
      break;
    case CluiTrack::Kind::Sequence:
      LayOutSequence(track, room);
      break;
    case CluiTrack::Kind::Choice:
      LayOutChoice(track, room);
      break;
    case CluiTrack::Kind::Loop:
      LayOutLoop(track, room);
      break;
  }
  track.shape = track.width;
  if (track.note.empty()) return;
  track.up += Size::NoteHeight;
  track.width = std::max(track.width, CluiTextWidth(track.note) * NoteSize / TextSize);
}

int CluiTextWidth(std::string_view text) {
  std::u32string characters;
  YCharacters::AppendFromUtf8(text, characters);
  int width = 0;
  for (const char32_t c : characters) {
    const std::size_t columns = YcluiCells::WidthOf(c);
    width += columns == 2 ? FullWidth : columns == 1 ? NarrowWidth : 0;
  }
  return (width + 99) / 100;
}
