// The languages that the implementations are measured with, and lines in them.

#ifndef BENCH_PEER_LANGUAGE_H_
#define BENCH_PEER_LANGUAGE_H_

#include <cstddef>
#include <string>
#include <vector>

// A language of commands that all look alike: the command's word, "on" or "off", an integer and a
// string. Words have eight letters, so none is the beginning of another one, and no implementation
// has a command of that name. Always the same for a size.
struct Language {
  explicit Language(int commands);

  std::vector<std::string> words;
  std::vector<std::string> shortForms;  // the shortest unambiguous prefix of each word
};

enum class Spelling {
  Whole,
  Short,
  Unknown,    // the command's word is in no dictionary
  Misplaced,  // the line begins with "on" or "off", which are words but not commands
};

struct Line {
  std::string word;
  bool isOn;
  int number;
};

// Random commands, the same ones in each spelling.
std::vector<Line> LinesOf(const Language& language, Spelling spelling, int count);

// The result of the actions: "on" adds the integer and "off" subtracts it.
long SumOf(const std::vector<Line>& lines);

// The lines that an implementation reads, one after the other as in a file that has been read:
// lines in blocks of memory of their own would evict a language from the caches that it fits into.
class TypedLines {
 public:
  void add(const std::string& line) {
    text_.append(line.c_str(), line.size() + 1);
    ends_.push_back(text_.size());
  }

  // Calls read(const char* line, std::size_t length) for each; a line ends with a null byte.
  template <class Read>
  void forEach(Read read) const {
    std::size_t start = 0;
    for (const std::size_t end : ends_) {
      read(text_.c_str() + start, end - start - 1);
      start = end;
    }
  }

 private:
  std::string text_;
  std::vector<std::size_t> ends_;
};

#endif  // BENCH_PEER_LANGUAGE_H_
