// Rows about completion: what a candidate costs among few and among many.

#include <string>

#include "bench/CompletionRows.h"
#include "host/terminal/CluiListing.h"
#include "parser/YcluiParser.h"
#include "syntax/YcluiSyntaxGraph.h"

namespace {

// A language of so many words, any of which can come.
class Words : public Work {
 public:
  explicit Words(long count) : count_(count) {
    auto* graph = new YcluiSyntaxGraph;
    for (long i = 0; i < count; ++i) {
      const std::string name = "w" + BenchWord(static_cast<int>(i * (10000 / count)));
      graph->insertOr(new YcluiSyntaxNode(parser_.lex()->addKeyword(name.c_str(), nullptr, 0)));
    }
    parser_.setSyntaxGraph(graph);
  }
  bool isDone() const override { return found_ == count_; }

 protected:
  YcluiParser parser_;
  long count_;
  long found_ = 0;
};

// What carries a word on, over all words.
class Completed : public Words {
 public:
  using Words::Words;
  void run() override {
    unsigned long unique = 0;
    YString completed;
    found_ = parser_.completionString("w", completed, unique) != 0 ? count_ : 0;
  }
};

class Listed : public Words {
 public:
  using Words::Words;
  void run() override {
    YString_Array list;
    found_ = parser_.completionList("w", list);
  }
};

// As much of them as a window holds, sorted.
class Shown : public Words {
 public:
  explicit Shown(int count) : Words(count) {
    std::string problem;
    encoding_.open("UTF-8", problem);
  }
  void run() override {
    found_ = CluiListing(parser_, "W", encoding_, 80, 23).empty() ? 0 : count_;
  }

 private:
  CluiEncoding encoding_;
};

}  // namespace

std::string BenchWord(int number) {
  static const char consonants[] = "kstnhmyrwg";
  static const char vowels[] = "aeio";
  std::string word;
  for (int i = 0, unit = 1000; i < 4; ++i, unit /= 10) {
    word += consonants[number / unit % 10];
    word += vowels[i];
  }
  return word;
}

std::vector<Row> CompletionRows() {
  return {
      RowOf<Completed>("a word completed", "candidate", 100, 10000, 2),
      RowOf<Listed>("candidates listed", "candidate", 100, 10000, 2),
      RowOf<Shown>("candidates shown on the screen", "candidate", 100, 10000, 2),
  };
}
