#include "workshop/CluiDot.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "foundation/YCharacters.h"
#include "parser/YcluiParser.h"
#include "syntax/YcluiSyntaxGraph.h"
#include "workshop/CluiMarkup.h"

namespace {

constexpr int DefaultPriority = 127;

// A string of the language: a backslash would begin an escape, and a control character is nothing
// to be shown.
std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
  }
  return quoted + "\"";
}

std::string LabelOf(const CluiWordText& word) {
  std::string label = word.name();
  for (const CluiWordArgument& argument : word.arguments) {
    if (!argument.isOptional) label += (&argument == word.arguments.data() ? " " : ", ");
    if (!argument.isOptional) label += argument.name;
  }
  return CluiCutTo(label, 80);
}

std::string PriorityOf(const YcluiSyntaxNode& node) {
  if (node.priority == DefaultPriority && node.interruptLimit == DefaultPriority) return "";
  return "priority " + std::to_string(node.priority) + ", up to " +
         std::to_string(node.interruptLimit);
}

// Numbers the nodes in the order in which they are found, and writes each of them once.
class DotWriter {
 public:
  explicit DotWriter(const CluiVocabulary& vocabulary) : vocabulary_(vocabulary) {}

  void addGraph(const YcluiSyntaxGraph& graph) {
    addNode(*graph.start, "shape=circle width=0.3 label=\"\" style=filled tooltip=\"start\"");
    addNode(*graph.end, "shape=doublecircle width=0.2 label=\"\" style=filled tooltip=\"end\"");
    while (next_ < nodes_.size()) addLinks(*nodes_[next_++]);
  }

  void addIndefinite(const YcluiSyntaxNode& root) {
    for (YcluiSuccessorIterator i(root); i.ring != nullptr; ++i) {
      addNode(*i.node(), wordAttributes(*i.node(), "rounded,dashed"));
    }
  }

  const std::string& text() const { return text_; }

 private:
  const CluiVocabulary& vocabulary_;
  std::unordered_map<const YcluiSyntaxNode*, std::size_t> numbers_;
  std::vector<const YcluiSyntaxNode*> nodes_;
  std::size_t next_ = 0;  // the first node whose links are not written yet
  std::string text_;

  void addNode(const YcluiSyntaxNode& node, const std::string& attributes) {
    numbers_[&node] = nodes_.size();
    text_ += "  n" + std::to_string(nodes_.size()) + " [" + attributes + "];\n";
    nodes_.push_back(&node);
  }

  void addLinks(const YcluiSyntaxNode& node) {
    const std::size_t from = numbers_[&node];
    for (YcluiSuccessorIterator i(node); i.ring != nullptr; ++i) {
      if (!numbers_.contains(i.node())) addNode(*i.node(), attributesOf(*i.node()));
      text_ += "  n" + std::to_string(from) + " -> n" + std::to_string(numbers_[i.node()]) + ";\n";
    }
  }

  std::string attributesOf(const YcluiSyntaxNode& node) const {
    if (node.tokenId != 0) return wordAttributes(node, "rounded");
    return node.kind == YcluiNodeClosure
               ? "shape=point height=0.07 color=gray40 tooltip=\"in a repetition\""
               : "shape=point height=0.07 tooltip=\"structural\"";
  }

  std::string wordAttributes(const YcluiSyntaxNode& node, const char* style) const {
    std::string attributes =
        "label=" + Quoted(LabelOf(vocabulary_.word(node.tokenId))) + " style=\"" + style + "\"";
    const std::string priority = PriorityOf(node);
    if (!priority.empty()) attributes += " xlabel=" + Quoted(priority);
    const std::string code =
        node.action == nullptr ? "" : YCharacters::Utf8FromBytes(node.action->buffer);
    attributes += " tooltip=" + Quoted(code.empty() ? "no code" : code);
    if (!code.empty()) attributes += " penwidth=2";
    return attributes;
  }
};

}  // namespace

std::string CluiDotOf(const YcluiParser& parser, const CluiVocabulary& vocabulary) {
  DotWriter writer(vocabulary);
  if (parser.syntaxGraph() != nullptr) writer.addGraph(*parser.syntaxGraph());
  if (parser.indefiniteRoot() != nullptr) writer.addIndefinite(*parser.indefiniteRoot());
  return "// For Graphviz: dot -Tsvg. Words with code have a thick edge, and the code as a "
         "tooltip.\n"
         "digraph syntax {\n"
         "  rankdir=LR;\n"
         "  node [shape=box fontname=\"monospace\" fontsize=11 height=0.3];\n"
         "  edge [arrowsize=0.6];\n" +
         writer.text() + "}\n";
}
