// Graphs from short texts, and short texts from graphs.

#ifndef TESTS_SYNTAX_SYNTAX_SCRIPT_H_
#define TESTS_SYNTAX_SYNTAX_SCRIPT_H_

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "syntax/YcluiSyntaxGraph.h"

// Builds a graph on a stack of fragments, whose top the signs work on. Signs that cannot be carried
// out are passed over, and what is left on the stack at the end is put in sequence.
//   (   a new fragment         1    insertAnd of a node with the id 1, and so for each digit
//   *   makeClosure            |1   insertOr of such a node
//   &   insertAnd, and /   insertOr of the top into the fragment below
std::unique_ptr<YcluiSyntaxGraph> Build(const std::string& script);

// All nodes that can be reached from the start, breadth first, the start being the first.
std::vector<YcluiSyntaxNode*> NodesOf(const YcluiSyntaxGraph& graph);
std::vector<YcluiSyntaxNode*> SuccessorsOf(const YcluiSyntaxNode& node);

// "s" the start, "e" the end, "t1" a node of the id 1 (further ones "t1'", "t1''"), and letters for
// the other structural nodes, in the order of NodesOf.
using Names = std::map<const YcluiSyntaxNode*, std::string>;
Names NamesOf(const YcluiSyntaxGraph& graph);
std::string Listed(const std::vector<YcluiSyntaxNode*>& nodes, const Names& names);

// Every node with its successors, closure members starred: "s>t1; t1>e; e>".
std::string Dump(const YcluiSyntaxGraph& graph);

#endif  // TESTS_SYNTAX_SYNTAX_SCRIPT_H_
