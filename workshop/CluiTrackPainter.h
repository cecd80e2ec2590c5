// Draws railroad diagrams as elements of SVG.

#ifndef WORKSHOP_CLUITRACKPAINTER_H_
#define WORKSHOP_CLUITRACKPAINTER_H_

#include <string>

#include "workshop/CluiTrack.h"

// Elements have classes, which the style of CluiDiagram.h gives colours and fonts.
class CluiTrackPainter {
 public:
  // Draws a track that was laid out with a mark before and after it. `x` and `y` are the upper left
  // corner of its room.
  void drawCommand(const CluiTrack& track, int x, int y);
  // The room that a track needs with the marks.
  static int WidthOf(const CluiTrack& track);
  static int HeightOf(const CluiTrack& track);

  // The elements drawn so far, which are forgotten.
  std::string takeElements();

 private:
  std::string lines_;  // the data of a path
  std::string boxes_;

  void draw(const CluiTrack& track, int x, int y);
  void drawBox(const CluiTrack& track, int x, int y);
  void drawText(const CluiTrack& track, int x, int y);
  void drawNote(const CluiTrack& track, int x, int y);
  void drawSequence(const CluiTrack& track, int x, int y);
  int drawRow(const CluiTrack& track, std::size_t begin, std::size_t end, int x, int& y);
  void drawTurn(int fromX, int fromY, int middle, int toX, int toY);
  void drawChoice(const CluiTrack& track, int x, int y);
  void drawLoop(const CluiTrack& track, int x, int y);

  void moveTo(int x, int y);
  void across(int x);
  void upright(int y);
  void curve(int dx, int dy, bool clockwise);
};

#endif  // WORKSHOP_CLUITRACKPAINTER_H_
