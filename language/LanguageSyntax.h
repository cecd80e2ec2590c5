// From fragments to the graph of a parser. Internal to the language.

#ifndef LANGUAGE_LANGUAGESYNTAX_H_
#define LANGUAGE_LANGUAGESYNTAX_H_

#include <cstddef>
#include <memory>
#include <string>

#include "language/Command.h"
#include "language/LanguageWords.h"
#include "language/Syntax.h"
#include "syntax/YcluiSyntaxGraph.h"

namespace yqrtClui {

// What is wrong with a command of that fragment, or the empty text: the fragment may end without a
// word, or its arguments are not those of the command's parameters.
std::string FaultOfCommand(const Syntax& syntax, const detail::Command& command);

// A graph of the fragment, in which each last word has the number as its action. REQUIRES: the
// words are declared.
std::unique_ptr<YcluiSyntaxGraph> BuildGraph(const Syntax& syntax, const LanguageWords& words,
                                             std::size_t number);

// The node of a single word, with the number as its action.
std::unique_ptr<YcluiSyntaxNode> BuildNode(const Syntax& word, const LanguageWords& words,
                                           std::size_t number);

}  // namespace yqrtClui

#endif  // LANGUAGE_LANGUAGESYNTAX_H_
