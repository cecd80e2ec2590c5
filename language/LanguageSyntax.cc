#include "language/LanguageSyntax.h"

#include <optional>

#include "language/LanguageRefusals.h"

namespace yqrtClui {

namespace {

using Types = std::vector<ArgumentType>;

// The arguments that every line of the fragment has; none when they vary.
std::optional<Types> TypesOf(const Syntax& syntax);

std::optional<Types> TypesOfSequence(const std::vector<Syntax>& parts) {
  Types all;
  for (const Syntax& part : parts) {
    const std::optional<Types> types = TypesOf(part);
    if (!types) return {};
    all.insert(all.end(), types->begin(), types->end());
  }
  return all;
}

std::optional<Types> TypesOfChoice(const std::vector<Syntax>& parts) {
  const std::optional<Types> first = TypesOf(parts.front());
  for (const Syntax& part : parts) {
    if (TypesOf(part) != first) return {};
  }
  return first;
}

std::optional<Types> TypesOf(const Syntax& syntax) {
  Types types;
  switch (syntax.kind()) {
    case Syntax::Kind::Word:
      for (const ArgumentDeclaration& each : syntax.word()->arguments) types.push_back(each.type);
      return types;
    case Syntax::Kind::Sequence:
      return TypesOfSequence(syntax.parts());
    case Syntax::Kind::Choice:
      return TypesOfChoice(syntax.parts());
    case Syntax::Kind::Repetition:
    case Syntax::Kind::Optional:
      break;
  }
  const std::optional<Types> repeated = TypesOf(syntax.parts().front());
  return repeated && repeated->empty() ? repeated : std::nullopt;
}

std::string FaultOfEnd(const Syntax& syntax) {
  switch (syntax.kind()) {
    case Syntax::Kind::Word:
      return {};
    case Syntax::Kind::Sequence:
      return FaultOfEnd(syntax.parts().back());
    case Syntax::Kind::Choice:
      for (const Syntax& part : syntax.parts()) {
        std::string fault = FaultOfEnd(part);
        if (!fault.empty()) return fault;
      }
      return {};
    case Syntax::Kind::Repetition:
      return "ends in a repetition, so nothing would complete it; a word must follow";
    case Syntax::Kind::Optional:
      break;
  }
  return "ends in an optional part, which is never reached, since the word before it completes the "
         "command; make two commands";
}

std::string FaultOfParameters(const Syntax& syntax, const Types& parameters) {
  const std::optional<Types> types = TypesOf(syntax);
  if (!types) return "has arguments that vary; its parameter must be a const yqrtClui::Line&";
  if (types->size() != parameters.size()) {
    return "has " + std::to_string(parameters.size()) + " parameters, but its words have " +
           std::to_string(types->size()) + " arguments";
  }
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    if (detail::CanPass((*types)[i], parameters[i])) continue;
    return "has " + TypeInWords(parameters[i]) + " as parameter " + std::to_string(i + 1) +
           ", but the argument is " + TypeInWords((*types)[i]);
  }
  return {};
}

// The beginning of the fragment, for a message.
std::string FirstWord(const Syntax& syntax) {
  return syntax.kind() == Syntax::Kind::Word ? syntax.word()->name
                                             : FirstWord(syntax.parts().front());
}

class GraphBuilder {
 public:
  GraphBuilder(const LanguageWords& words, std::size_t number)
      : words_(words), action_(std::to_string(number)) {}

  // `isLast`: the fragment ends the command. `priorities` has those of the fragment around it.
  std::unique_ptr<YcluiSyntaxGraph> build(const Syntax& syntax, bool isLast,
                                          const Syntax* priorities) {
    auto graph = std::make_unique<YcluiSyntaxGraph>();
    if (syntax.hasPriority()) priorities = &syntax;
    const std::vector<Syntax>& parts = syntax.parts();
    switch (syntax.kind()) {
      case Syntax::Kind::Word:
        graph->insertAnd(node(syntax, isLast, priorities).release());
        break;
      case Syntax::Kind::Sequence:
        for (std::size_t i = parts.size(); i > 0; --i) {
          graph->insertAnd(build(parts[i - 1], isLast && i == parts.size(), priorities).get());
        }
        break;
      case Syntax::Kind::Choice:
        for (std::size_t i = parts.size(); i > 0; --i) {
          graph->insertOr(build(parts[i - 1], isLast, priorities).get());
        }
        break;
      case Syntax::Kind::Repetition:
        graph->insertAnd(build(parts.front(), false, priorities).get());
        graph->makeClosure();
        break;
      case Syntax::Kind::Optional:
        graph->insertAnd(build(parts.front(), false, priorities).get());
        graph->start->append(graph->end);
        break;
    }
    return graph;
  }

  std::unique_ptr<YcluiSyntaxNode> node(const Syntax& word, bool isLast,
                                        const Syntax* priorities) const {
    auto node = std::make_unique<YcluiSyntaxNode>(words_.idOf(*word.word()),
                                                  isLast ? action_.c_str() : nullptr);
    if (word.hasPriority()) priorities = &word;
    if (priorities != nullptr) {
      node->priority = priorities->priority();
      node->interruptLimit = priorities->interruptLimit();
    }
    return node;
  }

 private:
  const LanguageWords& words_;
  std::string action_;
};

}  // namespace

std::string FaultOfCommand(const Syntax& syntax, const detail::Command& command) {
  std::string fault = FaultOfEnd(syntax);
  if (fault.empty() && command.hasParameters) {
    fault = FaultOfParameters(syntax, command.parameters);
  }
  return fault.empty() ? fault : "the command \"" + FirstWord(syntax) + "\" " + fault;
}

std::unique_ptr<YcluiSyntaxGraph> BuildGraph(const Syntax& syntax, const LanguageWords& words,
                                             std::size_t number) {
  return GraphBuilder(words, number).build(syntax, true, nullptr);
}

std::unique_ptr<YcluiSyntaxNode> BuildNode(const Syntax& word, const LanguageWords& words,
                                           std::size_t number) {
  return GraphBuilder(words, number).node(word, true, nullptr);
}

}  // namespace yqrtClui
