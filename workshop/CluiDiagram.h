// Railroad diagrams of commands as a picture of its own.

#ifndef WORKSHOP_CLUIDIAGRAM_H_
#define WORKSHOP_CLUIDIAGRAM_H_

#include <string>
#include <vector>

#include "workshop/CluiCommands.h"

// Colours and fonts of the elements of diagrams, as CSS for SVG and HTML: for light
// and dark surroundings, and for print. Without variables, which some viewers of SVG do not know.
extern const char CluiDiagramStyle[];

// An SVG of the commands below each other, each with its name, with the style. Lays the tracks out.
std::string CluiDiagramOf(std::vector<CluiCommand>& commands);

// An SVG element of one command, without the style and with its name as a label only, for a page
// that has them.
std::string CluiDiagramOf(CluiCommand& command);

#endif  // WORKSHOP_CLUIDIAGRAM_H_
