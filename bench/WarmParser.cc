#include "bench/WarmParser.h"

#include <cstdio>
#include <cstdlib>

#include "bench/DraftingParser.h"
#include "bench/Heap.h"

namespace {

struct Text {
  const char* what;
  const char* text;
  int tokens;  // accepted by the parser
};

constexpr Text Texts[] = {
    {"plain words", "redraw undo show grid\n", 4},
    {"abbreviations", "re pol cl sh ax\n", 5},
    {"words with numbers", "weight: 17 circle: 1,2 radius: 2.75\n", 3},
    {"points", "rectangle: 12,34 to: -56,78\n", 2},
    {"strings", "layer: \"a rather long name for a layer of walls\" text: 'b' at: 1,1\n", 3},
    {"a comment", "undo # and nothing else, however long the comment is\n", 1},
    {"arguments in two texts", "rectangle: 12,34 to:\n", 1},
    {"the other arguments", "5,78\n", 1},
    {"aliases", "rd twice room\n", 3},
    {"a variable set and read", "${n}=12 weight: ${n} ${word} ${s}=\"walls\" layer: ${s}\n", 3},
    {"an array set and read", "${a}[3]=7 weight: ${a}[3]\n", 1},
    {"a word not allowed there", "close undo\n", 1},
    {"an unknown word", "nonsense undo\n", 1},
    {"an invalid argument", "weight: heavy\n", 0},
    {"a long polyline", "polyline at: 1,2 at: 3,4 at: 5,6 at: 7,8 at: 9,10 close\n", 7},
};

void SetUp(DraftingParser& parser) {
  parser.setAlias("rd", "redraw");
  parser.setAlias("twice", "undo undo");
  parser.setAlias("room", "rd rectangle: 1,2 to: 30,40");
  parser.interpret("${word}=\"undo\"");
  parser.setEchoProcedure([](void*, const char*) {}, nullptr);
  parser.setSynCallback([](void*, const char*, const char*) {}, nullptr);
  parser.setTokCallback([](void*, YcluiToken&) { return YcluiTokenPass; }, nullptr);
  parser.setTokRefuseCallback([](void*, const YcluiToken&, std::uint32_t) {}, nullptr);
}

long AllocationsOf(DraftingParser& parser, const Text& text) {
  const long before = HeapRequests();
  const int tokens = parser.interpret(text.text);
  const long requests = HeapRequests() - before;
  if (tokens == text.tokens) return requests;
  std::fprintf(stderr, "allocations, %s: %d tokens\n", text.what, tokens);
  std::exit(1);
}

long AddLastPass(DraftingParser& parser, const char* frame, Results& results) {
  constexpr int Passes = 4;
  long sum = 0;
  for (int pass = 1; pass <= Passes; ++pass) {
    for (const Text& text : Texts) {
      const long requests = AllocationsOf(parser, text);
      if (pass < Passes) continue;
      results.add("allocations", text.what, "", frame, static_cast<double>(requests));
      sum += requests;
    }
  }
  return sum;
}

}  // namespace

long AddWarmAllocations(Results& results) {
  DraftingParser parser;
  SetUp(parser);
  const long bottom = AddLastPass(parser, "bottom frame", results);
  parser.interpret("polyline at: 1,2");
  parser.pushFrame();
  return bottom + AddLastPass(parser, "pushed frame", results);
}
