// "Did you mean": the word of a list that comes nearest to one that was typed.

#ifndef PROGRAM_CLUINEAREST_H_
#define PROGRAM_CLUINEAREST_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// How many letters must be changed, added, taken away or swapped with their neighbour to make one
// word of the other, ASCII case aside. Answers atMost + 1 for anything above `atMost`.
int CluiDistance(std::wstring_view a, std::wstring_view b, int atMost);

// Tells which words of many have too many slips to be among those that CluiNearest answers, most of
// them at a glance. Texts are those of the system; one that is not ASCII alone may always be meant.
// What was typed stays the caller's.
class CluiNearGlance {
 public:
  explicit CluiNearGlance(std::string_view typed);
  bool mayBeMeant(std::string_view word) const;

 private:
  using Letters = std::uint64_t;  // which ones a word has; some share a bit

  std::string_view typed_;  // without a colon at its end
  Letters letters_ = 0;
  bool isPlain_;
  int allowed_;

  static bool Look(std::string_view word, Letters& letters);
};

// The first of the nearest words, or the empty text when none is near enough to be meant: one
// slip in a short word, two from five letters on, three from nine on. A colon at the end of one of
// the two does not count. Of words as near, one of the first `here`, which can come where the other
// one was typed, is answered before the rest, and one that ends in a colon alike before one that
// does not.
std::wstring CluiNearest(const std::wstring& typed, const std::vector<std::wstring>& words,
                         std::size_t here);

#endif  // PROGRAM_CLUINEAREST_H_
