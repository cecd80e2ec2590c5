#include "workshop/CluiDiagram.h"

#include <algorithm>

#include "workshop/CluiMarkup.h"
#include "workshop/CluiTrackLayout.h"
#include "workshop/CluiTrackPainter.h"

const char CluiDiagramStyle[] = R"css(
.clui-diagram .track { fill: none; stroke-width: 1.5px; }
.clui-diagram rect { stroke-width: 1.2px; }
.clui-diagram text { font: 13px "DejaVu Sans Mono", Menlo, Consolas, monospace; text-anchor: middle; }
.clui-diagram .anywhere rect { stroke-dasharray: 4 3; }
.clui-diagram .short { font-weight: bold; text-decoration: underline; }
.clui-diagram text.note { font-size: 11px; text-anchor: start; }
.clui-diagram text.name { font-weight: bold; text-anchor: start; }
.clui-diagram .ground, .clui-diagram .sign rect { fill: #ffffff; }
.clui-diagram text { fill: #1f2328; }
.clui-diagram text.note { fill: #59636e; }
.clui-diagram .track, .clui-diagram .sign rect { stroke: #59636e; }
.clui-diagram .word rect { fill: #ddf4ff; stroke: #0969da; }
.clui-diagram .argument rect { fill: #fff8c5; stroke: #9a6700; }
@media (prefers-color-scheme: dark) {
  .clui-diagram .ground, .clui-diagram .sign rect { fill: #0d1117; }
  .clui-diagram text { fill: #e6edf3; }
  .clui-diagram text.note { fill: #9198a1; }
  .clui-diagram .track, .clui-diagram .sign rect { stroke: #9198a1; }
  .clui-diagram .word rect { fill: #10263f; stroke: #4493f8; }
  .clui-diagram .argument rect { fill: #2a2110; stroke: #d29922; }
}
@media print {
  .clui-diagram .ground, .clui-diagram .sign rect { fill: #ffffff; }
  .clui-diagram text { fill: #000000; }
  .clui-diagram text.note { fill: #444444; }
  .clui-diagram .track, .clui-diagram .sign rect { stroke: #444444; }
  .clui-diagram .word rect { fill: #ffffff; stroke: #000000; }
  .clui-diagram .argument rect { fill: #eeeeee; stroke: #000000; }
}
)css";

namespace {

constexpr int Room = 760;  // the width of a column of text on usual pages
constexpr int NameHeight = 22;
constexpr int Space = 14;  // between commands

std::string Opening(int width, int height, const std::string& label) {
  const std::string w = std::to_string(width);
  const std::string h = std::to_string(height);
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" class=\"clui-diagram\" role=\"img\" width=\"" +
         w + "\" height=\"" + h + "\" viewBox=\"0 0 " + w + " " + h + "\" aria-label=\"" +
         CluiEscaped(label) + "\">";
}

std::string NameElement(const CluiCommand& command, int y) {
  return "<text class=\"name\" x=\"4\" y=\"" + std::to_string(y) + "\">" +
         CluiEscaped(command.name) + (command.isAnywhere ? " (anywhere)" : "") + "</text>";
}

}  // namespace

std::string CluiDiagramOf(std::vector<CluiCommand>& commands) {
  CluiTrackPainter painter;
  std::string elements;
  int width = 0;
  int y = 0;
  for (CluiCommand& command : commands) {
    CluiLayOut(command.track, Room);
    elements += "<g>" + NameElement(command, y + 16);
    painter.drawCommand(command.track, 0, y + NameHeight);
    elements += painter.takeElements() + "</g>\n";
    const int nameWidth = CluiTextWidth(command.name + " (anywhere)") + 8;
    width = std::max({width, nameWidth, CluiTrackPainter::WidthOf(command.track)});
    y += NameHeight + CluiTrackPainter::HeightOf(command.track) + Space;
  }
  return Opening(width, y, "Railroad diagrams of commands") + "\n<style>" + CluiDiagramStyle +
         "</style>\n<rect class=\"ground\" width=\"100%\" height=\"100%\"/>\n" + elements +
         "</svg>\n";
}

std::string CluiDiagramOf(CluiCommand& command) {
  const CluiTrack& track = command.track;
  CluiLayOut(command.track, Room);
  CluiTrackPainter painter;
  painter.drawCommand(track, 0, 0);
  return Opening(CluiTrackPainter::WidthOf(track), CluiTrackPainter::HeightOf(track),
                 "Railroad diagram of " + command.name) +
         painter.takeElements() + "</svg>";
}
