// Shows how long the line editor needs for each key in a language of 10,000 words, with help texts,
// colours, hints and a history of 1,000 lines.
//
//   terminal_bench >terminal.csv
//   bench/report.py terminal.csv
//
// A key is timed from the bytes that a terminal sends to the bytes that it gets: writing them, and
// what the terminal makes of them, is left out. The bounds are printed on the standard error; the
// exit status is 1 when one is not kept or a response is wrong.

#include <random>

#include "bench/Results.h"
#include "bench/terminal/LargeParser.h"
#include "bench/terminal/Typist.h"

namespace {

constexpr int Lines = 300;
constexpr int HistoryLines = 1000;
constexpr const char* Tab = "\t";
constexpr const char* BackTab = "\x1B[Z";
constexpr const char* Return = "\r";
constexpr const char* Up = "\x1B[A";
constexpr const char* Down = "\x1B[B";
constexpr const char* Right = "\x1B[C";

class Session {
 public:
  explicit Session(LargeParser& parser) : parser_(parser), typist_(parser) {
    for (int i = 0; i < HistoryLines; ++i) typist_.history().add(line());
  }

  void run(Results& results) {
    for (int i = 0; i < Lines; ++i) {
      typeLine();
      completeWord();
      typeUnknownWord();
      searchHistory();
      useList("", "list of all");
      useList(word().substr(0, 1), "list after a letter");
      useList("?", "list of all, by ?");
    }
    typist_.addTo(results);
  }

 private:
  LargeParser& parser_;
  Typist typist_;
  std::minstd_rand numbers_{1};

  const std::string& word() { return parser_.words()[numbers_() % parser_.words().size()]; }
  // A word, with its argument if it has one.
  std::string command() {
    const std::string text = word();
    return text.back() == ':' ? text + " 7" : text;
  }
  std::string line() { return command() + " " + command() + " " + command(); }

  void typeLine() {
    typist_.type("a letter", line());
    typist_.send("Return");
  }

  void completeWord() {
    const std::string text = word();
    typist_.type("a letter", text.substr(0, 3));
    typist_.press("Tab, a part", Tab);
    typist_.press("a letter", text.substr(3, 1));
    typist_.type("a letter", text.substr(4, 3));
    typist_.press("Tab, a word", Tab);
    typist_.clear();
  }

  void typeUnknownWord() {
    const std::string text = word().substr(0, 7) + "x";
    typist_.type("a letter", text.substr(0, 7));
    typist_.press("a letter of an unknown word", "x");
    typist_.type("a letter of an unknown word", "yz ");
    typist_.type("a letter after an unknown word", command());
    typist_.press("Return on a mistake", Return);
    typist_.expectRows(true);
    typist_.press("a letter at a mistake", "k");
    typist_.expectRows(false);
    typist_.clear();
  }

  void searchHistory() {
    for (int i = 0; i < 3; ++i) typist_.press("Up in the history", Up);
    typist_.clear();
    typist_.press("a search of the history", "\x12");
    typist_.type("a search of the history", word().substr(0, 4));
    typist_.clear();
  }

  void useList(const std::string& beginning, const std::string& kind) {
    if (beginning == "?") {
      typist_.press(kind, "?");
    } else {
      typist_.type("a letter", beginning);
      typist_.press("Tab, nothing agreed", Tab);
      typist_.press(kind + ", opened", Tab);
      for (const char* key : {Down, Right, Tab, Down, Up}) typist_.press(kind + ", moved in", key);
      for (int i = 0; i < 6; ++i) typist_.press(kind + ", to its end", BackTab);
    }
    typist_.expectRows(true);
    typist_.clear();
  }
};

}  // namespace

int main() {
  Results results;
  LargeParser parser;
  Session(parser).run(results);
  return results.areBoundsKept() ? 0 : 1;
}
