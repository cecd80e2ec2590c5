// The lines that a contender reads.

#ifndef BENCH_PEER_TYPEDLINES_H_
#define BENCH_PEER_TYPEDLINES_H_

#include <cstddef>
#include <string>
#include <vector>

// One behind the other, as in a file that has been read: lines in blocks of memory of their own
// would drive a language out of the caches that it fits into.
class TypedLines {
 public:
  void add(const std::string& line) {
    text_.append(line.c_str(), line.size() + 1);
    ends_.push_back(text_.size());
  }

  // Calls take(const char* line, std::size_t length) for each; a line ends with a null byte.
  template <class Take>
  void forEach(Take take) const {
    std::size_t start = 0;
    for (const std::size_t end : ends_) {
      take(text_.c_str() + start, end - start - 1);
      start = end;
    }
  }

 private:
  std::string text_;
  std::vector<std::size_t> ends_;
};

#endif  // BENCH_PEER_TYPEDLINES_H_
