// The measures of railroad diagrams.

#ifndef WORKSHOP_CLUITRACKLAYOUT_H_
#define WORKSHOP_CLUITRACKLAYOUT_H_

#include <string_view>

#include "workshop/CluiTrack.h"

// In pixels.
struct CluiTrackSize {
  static constexpr int Radius = 8;     // of curves
  static constexpr int Gap = 10;       // between the parts of a sequence
  static constexpr int NarrowGap = 6;  // between a word and its arguments
  static constexpr int Between = 8;    // between boxes and tracks above each other
  static constexpr int HalfBox = 12;   // half the height of a box
  static constexpr int NoteHeight = 16;
};

// Sets the measures of a track and its parts. Sequences are divided into rows where the track would
// be wider than `room`; a word with many or long arguments, or deep nesting, can still be wider.
void CluiLayOut(CluiTrack& track, int room);

// The width of a text in the font of the diagrams.
int CluiTextWidth(std::string_view text);

#endif  // WORKSHOP_CLUITRACKLAYOUT_H_
