// A syntax from a short text, and short texts from a graph.

#ifndef TESTS_SUPPORT_SYNTAX_H_
#define TESTS_SUPPORT_SYNTAX_H_

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "syntax/YcluiSyntaxGraph.h"

// The token id of a word; by default the words are numbers.
using IdOf = std::function<unsigned long(const std::string& word)>;
unsigned long IdOfNumber(const std::string& word);

// The text is read from the back, as scripts insert, since the order of insertion decides which of
// several matches is returned:
//   a b        sequence
//   a | b c    alternatives: one word is inserted as a node, anything else as a fragment
//   ( a b )    a fragment, inserted as a whole; ( a b )* repeated
//   [ a b ]    last in a sequence or of alternatives, the graph into which the others are inserted,
//              which else is a new one; as another alternative, the fragment; [ a b ]* repeated
//   a{text}    a word with an action; a^120,126 with its priority and limit
// Any text is valid. An opening bracket without its partner is passed over.
std::unique_ptr<YcluiSyntaxGraph> SyntaxOf(const std::string& text, const IdOf& idOf = IdOfNumber);

std::vector<YcluiSyntaxNode*> SuccessorsOf(const YcluiSyntaxNode& node);
// All nodes that can be reached from the start, breadth first, the start being the first.
std::vector<YcluiSyntaxNode*> NodesOf(const YcluiSyntaxGraph& graph);

// "s" the start, "e" the end, "t1" a node of the id 1 (further ones "t1'", "t1''"), and letters for
// the other structural nodes, in the order of NodesOf.
using Names = std::map<const YcluiSyntaxNode*, std::string>;
Names NamesOf(const YcluiSyntaxGraph& graph);
std::string Listed(const std::vector<YcluiSyntaxNode*>& nodes, const Names& names);

// Every node with its successors, closure members starred: "s>t1; t1>e; e>".
std::string Dump(const YcluiSyntaxGraph& graph);

#endif  // TESTS_SUPPORT_SYNTAX_H_
