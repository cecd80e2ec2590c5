#include "bench/WarmParser.h"

#include <iomanip>
#include <iostream>

#include "bench/DraftingParser.h"
#include "bench/Heap.h"

namespace {

struct Text {
  const char* what;
  const char* text;
  int taken;  // how many tokens the parser takes of it
};

constexpr Text Texts[] = {
    {"plain words", "redraw undo show grid\n", 4},
    {"abbreviations", "re pol cl sh ax\n", 5},
    {"words with numbers", "weight: 17 circle: 1,2 radius: 2.75\n", 3},
    {"points", "rectangle: 12,34 to: -56,78\n", 2},
    {"strings", "layer: \"a rather long name for a layer of walls\" text: 'b' at: 1,1\n", 3},
    {"a comment", "undo # and nothing else, however much is said here\n", 1},
    {"arguments in two texts", "rectangle: 12,34 to:\n", 1},
    {"the rest of them", "5,78\n", 1},
    {"aliases", "rd twice room\n", 3},
    {"a variable set and read", "${n}=12 weight: ${n} ${word} ${s}=\"walls\" layer: ${s}\n", 3},
    {"an array set and read", "${a}[3]=7 weight: ${a}[3]\n", 1},
    {"a refused known word", "close undo\n", 1},
    {"an unknown word", "nonsense undo\n", 1},
    {"a bad argument", "weight: heavy\n", 0},
    {"a long polyline", "polyline at: 1,2 at: 3,4 at: 5,6 at: 7,8 at: 9,10 close\n", 7},
};

void TakeLine(void*, const char*) {}
void TakeLines(void*, const char*, const char*) {}
void TakeRefusal(void*, const YcluiToken&, std::uint32_t) {}
YcluiTokenCtrl TakeToken(void*, YcluiToken&) {
  return YcluiTokenPass;
}

void SetUp(DraftingParser& parser) {
  parser.setAlias("rd", "redraw");
  parser.setAlias("twice", "undo undo");
  parser.setAlias("room", "rd rectangle: 1,2 to: 30,40");
  parser.interpret("${word}=\"undo\"");
  parser.setEchoProcedure(TakeLine, nullptr);
  parser.setSynCallback(TakeLines, nullptr);
  parser.setTokCallback(TakeToken, nullptr);
  parser.setTokRefuseCallback(TakeRefusal, nullptr);
}

void PrintAllocationsOfLastRound(DraftingParser& parser, const char* where) {
  constexpr int Rounds = 4;
  for (int round = 1; round <= Rounds; ++round) {
    for (const Text& text : Texts) {
      const long before = HeapRequests();
      const int taken = parser.interpret(text.text);
      const long requests = HeapRequests() - before;
      if (round < Rounds) continue;
      std::cout << std::left << std::setw(41) << text.what << ' ' << std::setw(16) << where
                << std::right << std::setw(4) << requests << (requests != 0 ? " above" : "")
                << (taken != text.taken ? " did not take what the row says" : "") << '\n';
    }
  }
}

}  // namespace

void PrintWarmAllocations() {
  DraftingParser parser;
  SetUp(parser);
  std::cout << "\nallocations of a warm parser\n";
  PrintAllocationsOfLastRound(parser, "bottom frame");
  parser.interpret("polyline at: 1,2");
  parser.pushFrame();
  PrintAllocationsOfLastRound(parser, "pushed frame");
}
