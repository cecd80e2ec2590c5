// The languages that the contenders are measured with, and lines in them.

#ifndef BENCH_PEER_LANGUAGE_H_
#define BENCH_PEER_LANGUAGE_H_

#include <string>
#include <vector>

// A language of commands that all look alike: the command's word, "on" or "off", an integer and a
// string. Words have eight letters, so none begins another, and no contender has them already.
// Always the same for a size.
struct Language {
  explicit Language(int commands);

  std::vector<std::string> words;
  std::vector<std::string> shortForms;  // the shortest beginning of each word that is its own
};

// How the lines of a run are spelt.
enum class Spelling {
  Whole,
  Short,
  Unknown,    // the command's word is in no dictionary
  Misplaced,  // the line begins with "on" or "off", which are words but no commands
};

struct Line {
  std::string word;
  bool isOn;
  int number;
};

// Commands at random, the same ones in each spelling.
std::vector<Line> LinesOf(const Language& language, Spelling spelling, int count);

// What the actions come to: "on" adds the integer and "off" takes it away.
long SumOf(const std::vector<Line>& lines);

#endif  // BENCH_PEER_LANGUAGE_H_
