// From fragments to the graph of a parser. Internal to the language.

#ifndef LANGUAGE_LANGUAGESYNTAX_H_
#define LANGUAGE_LANGUAGESYNTAX_H_

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "language/Command.h"
#include "language/LanguageWords.h"
#include "language/Syntax.h"
#include "syntax/YcluiSyntaxGraph.h"

namespace yqrtClui {

// What is wrong with a command of that fragment, or the empty text: the fragment may end without a
// word, or its arguments are not those of the command's parameters.
std::string FaultOfCommand(const Syntax& syntax, const detail::Command& command);

// A command whose graph is to be built. The syntax must outlive the building.
struct NumberedSyntax {
  const Syntax* syntax;
  std::size_t number;  // of the command
};

// A graph of all commands, in which each last word has the number of its command as its action.
// Commands that begin with the same words share their nodes, so that a step finds one node.
// Sets `fault` when words complete one command where another one ends or goes on with them: that
// one would never run. Choices are compared when they end a command, and repetitions and optional
// parts are not. REQUIRES: the words are declared.
std::unique_ptr<YcluiSyntaxGraph> BuildGraph(const std::vector<NumberedSyntax>& commands,
                                             const LanguageWords& words, std::string& fault);

// The node of a single word, with the number as its action.
std::unique_ptr<YcluiSyntaxNode> BuildNode(const NumberedSyntax& word, const LanguageWords& words);

}  // namespace yqrtClui

#endif  // LANGUAGE_LANGUAGESYNTAX_H_
