#include "bench/DraftingParser.h"

#include <initializer_list>
#include <iterator>
#include <random>

namespace {

struct Word {
  const char* name;
  const char* abbreviation;
  std::uint32_t id;
  YcluiValueType type;
};

enum WordId : std::uint32_t {
  Layer = 5000,
  Rectangle,
  To,
  Circle,
  Radius,
  Polyline,
  At,
  Close,
  Text,
  Weight,
  Show,
  Hide,
  Grid,
  Axes,
  Redraw,
  Undo,
  Mark,
};

constexpr Word Words[] = {
    {"layer:", nullptr, Layer, YcluiValueString},
    {"rectangle:", nullptr, Rectangle, YcluiValuePoint},
    {"to:", nullptr, To, YcluiValuePoint},
    {"circle:", nullptr, Circle, YcluiValuePoint},
    {"radius:", nullptr, Radius, YcluiValueFloat},
    {"polyline", "pol", Polyline, YcluiValueNone},
    {"at:", nullptr, At, YcluiValuePoint},
    {"close", "cl", Close, YcluiValueNone},
    {"text:", nullptr, Text, YcluiValueString},
    {"weight:", nullptr, Weight, YcluiValueInteger},
    {"show", "sh", Show, YcluiValueNone},
    {"hide", nullptr, Hide, YcluiValueNone},
    {"grid", nullptr, Grid, YcluiValueNone},
    {"axes", "ax", Axes, YcluiValueNone},
    {"redraw", "re", Redraw, YcluiValueNone},
    {"undo", nullptr, Undo, YcluiValueNone},
};

YcluiSyntaxNode* Node(std::uint32_t id, const char* action = nullptr) {
  return new YcluiSyntaxNode(id, action);
}

YcluiSyntaxGraph* Sequence(std::initializer_list<YcluiSyntaxNode*> nodes) {
  auto* graph = new YcluiSyntaxGraph;
  for (auto i = std::rbegin(nodes); i != std::rend(nodes); ++i) graph->insertAnd(*i);
  return graph;
}

YcluiSyntaxGraph* OneOf(std::initializer_list<YcluiSyntaxNode*> nodes) {
  auto* graph = new YcluiSyntaxGraph;
  for (YcluiSyntaxNode* node : nodes) graph->insertOr(node);
  return graph;
}

void PutInFront(YcluiSyntaxGraph& graph, YcluiSyntaxGraph* part) {
  graph.insertAnd(part);
  delete part;
}

YcluiSyntaxGraph* PolylineSyntax() {
  YcluiSyntaxGraph* corners = OneOf({Node(At)});
  corners->makeClosure();
  YcluiSyntaxGraph* graph = Sequence({Node(Close, "(polyline $1[0] $-1[0])")});
  PutInFront(*graph, corners);
  graph->insertAnd(Node(Polyline));
  return graph;
}

YcluiSyntaxGraph* ViewSyntax() {
  constexpr const char* View = "(view \"$0\" \"$$\")";
  YcluiSyntaxGraph* graph = OneOf({Node(Grid, View), Node(Axes, View)});
  PutInFront(*graph, OneOf({Node(Show), Node(Hide)}));
  return graph;
}

YcluiSyntaxGraph* DraftingSyntax() {
  auto* graph = OneOf({Node(Layer, "(layer \"$0[0]\")"), Node(Weight, "(weight $0[0])"),
                       Node(Redraw, "(redraw)"), Node(Undo, "(undo $p)")});
  for (YcluiSyntaxGraph* part : {Sequence({Node(Rectangle), Node(To, "(rectangle $0[0] $1[0])")}),
                                 Sequence({Node(Circle), Node(Radius, "(circle $0[0] $$[0])")}),
                                 Sequence({Node(Text), Node(At, "(text \"$0[0]\" $1[0])")}),
                                 PolylineSyntax(), ViewSyntax()}) {
    graph->insertOr(part);
    delete part;
  }
  return graph;
}

struct Command {
  const char* form;  // a "%" stands for a number
  int tokens;
  long commands;
};

constexpr Command Commands[] = {
    {"# the % th room, by the window\n", 0, 0},
    {"layer: \"walls %\"\n", 1, 1},
    {"rectangle: %,% to: %,%\n", 2, 1},
    {"circle: %,% radius: %.5\n", 2, 1},
    {"polyline at: %,% at: %,% at: %,% at: %,% close\n", 6, 1},
    {"text: 'a \"quoted\" word' at: %,%\n", 2, 1},
    {"weight: %\n", 1, 1},
    {"show grid hide ax\n", 4, 2},
    {"undo redraw sh axes undo hide grid re\n", 8, 6},
    {"pol at: -%,% cl undo undo sh grid\n", 7, 4},
};

std::string Filled(const char* form, std::minstd_rand& numbers) {
  std::string text;
  for (; *form != '\0'; ++form) {
    if (*form == '%') {
      text += std::to_string(numbers() % 100);
    } else {
      text += *form;
    }
  }
  return text;
}

}  // namespace

DraftingParser::DraftingParser() {
  for (const Word& word : Words) {
    if (word.type == YcluiValueNone) {
      lex()->addKeyword(word.name, word.abbreviation, word.id);
    } else {
      lex()->addKeyword(word.name, 1, &word.type, word.id);
    }
  }
  lex()->addKeyword(';', Mark);
  setSyntaxGraph(DraftingSyntax());
  addIndefiniteNode(Node(Mark));
}

YWord DraftingParser::evaluate(const char* text) {
  if (*text == '(') ++commands_;
  return 1;
}

DraftingText::DraftingText(long bytes) {
  std::minstd_rand numbers(1);
  const auto length = static_cast<std::size_t>(bytes);
  text.reserve(length);
  for (std::size_t i = 0;; ++i) {
    const Command& command = Commands[i % std::size(Commands)];
    const std::string line = Filled(command.form, numbers);
    if (text.size() + line.size() > length) break;
    text += line;
    tokens += command.tokens;
    commands += command.commands;
  }
  text.resize(length, '\n');
}
