// The graph of a syntax for Graphviz.

#ifndef WORKSHOP_CLUIDOT_H_
#define WORKSHOP_CLUIDOT_H_

#include <string>

#include "workshop/CluiVocabulary.h"

class YcluiParser;

// The present syntax of a parser in the language of `dot`, in UTF-8: all nodes that can be reached
// from the start, with their words and, as tooltips, their code; structural nodes as points; links
// in the order of the graph. Indefinite nodes, which have no links, are beside it. Linear in the
// size of the graph. A graph without nodes when the parser has no syntax.
std::string CluiDotOf(const YcluiParser& parser, const CluiVocabulary& vocabulary);

#endif  // WORKSHOP_CLUIDOT_H_
