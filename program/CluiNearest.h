// "Did you mean": finds the word that is most similar to a mistyped one.

#ifndef PROGRAM_CLUINEAREST_H_
#define PROGRAM_CLUINEAREST_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A fast filter: mayMatch() is false only for words that CluiNearest would not return. Texts are
// those of the system; it is true whenever one of the two is not ASCII. Keeps a view of `typed`.
class CluiNearFilter {
 public:
  explicit CluiNearFilter(std::string_view typed);
  bool mayMatch(std::string_view word) const;

 private:
  using Letters = std::uint64_t;  // one bit per letter that occurs; some letters share a bit

  std::string_view typed_;  // without a colon at its end
  Letters letters_ = 0;
  bool isAscii_;
  int allowed_;

  static bool ReadLetters(std::string_view word, Letters& letters);
};

// The word with the smallest edit distance, where a swap of neighbours counts as one edit and ASCII
// case is ignored, or the empty text when every distance is above the limit: 1 edit, 2 from five
// letters on, 3 from nine letters on, none for one letter. A colon at the end of only one of the
// two does not count. Among equal distances, one of the first `here` words, which are allowed at
// this point, wins, then one that ends in a colon as `typed` does, then the first.
std::wstring CluiNearest(const std::wstring& typed, const std::vector<std::wstring>& words,
                         std::size_t here);

#endif  // PROGRAM_CLUINEAREST_H_
