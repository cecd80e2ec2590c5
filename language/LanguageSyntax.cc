#include "language/LanguageSyntax.h"

#include <cstdint>
#include <optional>
#include <unordered_map>

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

// The rest of a command after words that it shares with others.
struct Rest {
  const Syntax* command;
  std::size_t number;
  std::size_t first = 0;  // of the parts of a sequence

  bool isSequence() const { return command->kind() == Syntax::Kind::Sequence; }
  std::size_t count() const { return isSequence() ? command->parts().size() - first : 1; }
  const Syntax& front() const { return isSequence() ? command->parts()[first] : *command; }
};

// The fragment that decides the priorities of a word in the other one, which may be null. Null
// when they are those of a new node.
const Syntax* PrioritiesOf(const Syntax& word, const Syntax* around) {
  if (word.hasPriority()) return &word;
  return around != nullptr && around->hasPriority() ? around : nullptr;
}

class GraphBuilder {
 public:
  explicit GraphBuilder(const LanguageWords& words) : words_(words) {}

  // The walker visits the alternative first that was inserted last, so words are listed in the
  // order of their commands.
  std::unique_ptr<YcluiSyntaxGraph> build(const std::vector<Rest>& rests) {
    findFault(rests);
    auto graph = std::make_unique<YcluiSyntaxGraph>();
    const std::vector<std::vector<Rest>> groups = groupsOf(rests);
    for (std::size_t i = groups.size(); i > 0; --i) {
      graph->insertOr(buildGroup(groups[i - 1]).get());
    }
    return graph;
  }

  // Two commands that are completed by the same words; the empty text without them.
  const std::string& fault() const { return fault_; }

  std::unique_ptr<YcluiSyntaxNode> node(const Syntax& word, const char* action,
                                        const Syntax* around) const {
    auto node = std::make_unique<YcluiSyntaxNode>(words_.idOf(*word.word()), action);
    if (const Syntax* priorities = PrioritiesOf(word, around)) {
      node->priority = priorities->priority();
      node->interruptLimit = priorities->interruptLimit();
    }
    return node;
  }

 private:
  const LanguageWords& words_;
  std::string fault_;

  void findFault(const std::vector<Rest>& rests) {
    std::unordered_map<std::uint32_t, std::size_t> completed;  // the command that a word completes
    for (const Rest& rest : rests) {
      if (rest.count() == 1) findFaultOfEnd(rest.front(), rest, completed);
    }
    for (const Rest& rest : rests) {
      if (rest.count() == 1 || rest.front().kind() != Syntax::Kind::Word) continue;
      const WordDeclaration& word = *rest.front().word();
      if (completed.count(words_.idOf(word)) != 0) setFault(*rest.command, word);
    }
  }

  void findFaultOfEnd(const Syntax& end, const Rest& rest,
                      std::unordered_map<std::uint32_t, std::size_t>& completed) {
    if (end.kind() == Syntax::Kind::Choice) {
      for (const Syntax& part : end.parts()) findFaultOfEnd(part, rest, completed);
    }
    if (end.kind() != Syntax::Kind::Word) return;
    const auto known = completed.emplace(words_.idOf(*end.word()), rest.number).first;
    if (known->second != rest.number) setFault(*rest.command, *end.word());
  }

  void setFault(const Syntax& command, const WordDeclaration& word) {
    if (!fault_.empty()) return;
    fault_ = "the command \"" + FirstWord(command) + "\" never runs, since \"" + word.name +
             "\" completes another one there";
  }

  // Rests that begin with the same word, which is not their last part, are one group.
  std::vector<std::vector<Rest>> groupsOf(const std::vector<Rest>& rests) const {
    std::vector<std::vector<Rest>> groups;
    std::unordered_map<std::uint64_t, std::size_t> groupOfKey;
    for (const Rest& rest : rests) {
      std::size_t group = groups.size();
      if (rest.count() > 1 && rest.front().kind() == Syntax::Kind::Word) {
        group = groupOfKey.emplace(keyOf(rest), group).first->second;
      }
      if (group == groups.size()) groups.emplace_back();
      groups[group].push_back(rest);
    }
    return groups;
  }

  // The word and its priorities.
  std::uint64_t keyOf(const Rest& rest) const {
    const std::uint64_t id = words_.idOf(*rest.front().word());
    const Syntax* priorities = PrioritiesOf(rest.front(), rest.command);
    if (priorities == nullptr) return id << 17;
    const std::uint64_t priority = priorities->priority();
    return (id << 1 | 1) << 16 | priority << 8 | priorities->interruptLimit();
  }

  std::unique_ptr<YcluiSyntaxGraph> buildGroup(const std::vector<Rest>& group) {
    const Rest& first = group.front();
    if (group.size() == 1) return build(first);
    std::vector<Rest> rests = group;
    for (Rest& rest : rests) ++rest.first;
    std::unique_ptr<YcluiSyntaxGraph> graph = build(rests);
    graph->insertAnd(node(first.front(), nullptr, first.command).release());
    return graph;
  }

  std::unique_ptr<YcluiSyntaxGraph> build(const Rest& rest) {
    const std::string action = std::to_string(rest.number);
    if (!rest.isSequence()) return build(*rest.command, action.c_str(), nullptr);
    return buildSequence(*rest.command, rest.first, action.c_str(), rest.command);
  }

  // `action` is that of the last words, null when the command goes on after them. `around`
  // is the innermost fragment around it that has priorities, or null.
  std::unique_ptr<YcluiSyntaxGraph> build(const Syntax& syntax, const char* action,
                                          const Syntax* around) {
    auto graph = std::make_unique<YcluiSyntaxGraph>();
    if (syntax.hasPriority()) around = &syntax;
    const std::vector<Syntax>& parts = syntax.parts();
    switch (syntax.kind()) {
      case Syntax::Kind::Word:
        graph->insertAnd(node(syntax, action, around).release());
        break;
      case Syntax::Kind::Sequence:
        return buildSequence(syntax, 0, action, around);
      case Syntax::Kind::Choice:
        for (std::size_t i = parts.size(); i > 0; --i) {
          graph->insertOr(build(parts[i - 1], action, around).get());
        }
        break;
      case Syntax::Kind::Repetition:
        graph->insertAnd(build(parts.front(), nullptr, around).get());
        graph->makeClosure();
        break;
      case Syntax::Kind::Optional:
        graph->insertAnd(build(parts.front(), nullptr, around).get());
        graph->start->append(graph->end);
        break;
    }
    return graph;
  }

  std::unique_ptr<YcluiSyntaxGraph> buildSequence(const Syntax& sequence, std::size_t first,
                                                  const char* action, const Syntax* around) {
    auto graph = std::make_unique<YcluiSyntaxGraph>();
    const std::vector<Syntax>& parts = sequence.parts();
    for (std::size_t i = parts.size(); i > first; --i) {
      graph->insertAnd(build(parts[i - 1], i == parts.size() ? action : nullptr, around).get());
    }
    return graph;
  }
};

}  // namespace

std::string FaultOfCommand(const Syntax& syntax, const detail::Command& command) {
  std::string fault = FaultOfEnd(syntax);
  if (fault.empty() && command.hasParameters) {
    fault = FaultOfParameters(syntax, command.parameters);
  }
  return fault.empty() ? fault : "the command \"" + FirstWord(syntax) + "\" " + fault;
}

std::unique_ptr<YcluiSyntaxGraph> BuildGraph(const std::vector<NumberedSyntax>& commands,
                                             const LanguageWords& words, std::string& fault) {
  std::vector<Rest> rests;
  for (const NumberedSyntax& each : commands) rests.push_back({each.syntax, each.number});
  GraphBuilder builder(words);
  std::unique_ptr<YcluiSyntaxGraph> graph = builder.build(rests);
  fault = builder.fault();
  return graph;
}

std::unique_ptr<YcluiSyntaxNode> BuildNode(const NumberedSyntax& word, const LanguageWords& words) {
  const std::string action = std::to_string(word.number);
  return GraphBuilder(words).node(*word.syntax, action.c_str(), nullptr);
}

}  // namespace yqrtClui
