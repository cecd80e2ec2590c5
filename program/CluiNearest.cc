#include "program/CluiNearest.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <numeric>
#include <tuple>

#include "foundation/YAscii.h"

namespace {

// The lower case of an ASCII letter, in a text of the system or in wide characters.
template <typename Char>
Char Folded(Char c) {
  return c >= 0 && c < 0x80 ? static_cast<Char>(YLowerCase(static_cast<char>(c))) : c;
}

int Allowed(std::size_t length) {
  if (length < 2) return 0;
  if (length < 5) return 1;
  return length < 9 ? 2 : 3;
}

template <typename Char>
bool EndsInColon(std::basic_string_view<Char> word) {
  return word.size() > 1 && word.back() == ':';
}

template <typename Char>
std::basic_string_view<Char> WithoutColon(std::basic_string_view<Char> word) {
  return EndsInColon(word) ? word.substr(0, word.size() - 1) : word;
}

// Sort key: edit distance, not allowed here, colon mismatch. The smallest wins.
using Rank = std::tuple<int, bool, bool>;

// The edit distance, or atMost + 1 when it is larger than `atMost`.
template <typename Char>
int DistanceOf(std::basic_string_view<Char> a, std::basic_string_view<Char> b, int atMost) {
  const int height = static_cast<int>(a.size());
  const int width = static_cast<int>(b.size());
  const int tooFar = atMost + 1;
  if (std::abs(height - width) > atMost) return tooFar;
  // Row i has the distances of a's first i letters to each prefix of b whose length differs by at
  // most `atMost`. A swap needs the row before the previous one.
  std::vector<int> rows(3 * b.size() + 3, tooFar);
  int* row = rows.data();
  int* back = row + width + 1;
  int* twoBack = back + width + 1;
  std::iota(row, row + std::min(width, atMost) + 1, 0);
  for (int i = 1; i <= height; ++i) {
    std::swap(twoBack, back);
    std::swap(back, row);
    const int first = std::max(1, i - atMost);
    const int last = std::min(width, i + atMost);
    int least = row[first - 1] = first == 1 ? std::min(i, tooFar) : tooFar;
    for (int j = first; j <= last; ++j) {
      const Char letter = Folded(a[i - 1]);
      const Char other = Folded(b[j - 1]);
      row[j] = std::min({back[j] + 1, row[j - 1] + 1, back[j - 1] + (letter == other ? 0 : 1)});
      const bool swapped =
          i > 1 && j > 1 && letter == Folded(b[j - 2]) && Folded(a[i - 2]) == other;
      if (swapped) row[j] = std::min(row[j], twoBack[j - 2] + 1);
      least = std::min(least, row[j]);
    }
    if (least > atMost) return tooFar;
  }
  return std::min(row[width], tooFar);
}

}  // namespace

CluiNearFilter::CluiNearFilter(std::string_view typed)
    : typed_(WithoutColon(typed)),
      isAscii_(ReadLetters(typed_, letters_)),
      allowed_(Allowed(typed.size())) {}

// False for a word that is not ASCII.
bool CluiNearFilter::ReadLetters(std::string_view word, Letters& letters) {
  letters = 0;
  for (const char c : word) {
    if ((c & 0x80) != 0) return false;
    letters |= Letters{1} << (Folded(c) & 63);
  }
  return true;
}

// One edit adds at most one letter that the other word lacks, and removes at most one. That rules
// out most words without computing the distance.
bool CluiNearFilter::mayMatch(std::string_view word) const {
  word = WithoutColon(word);
  Letters letters = 0;
  if (!ReadLetters(word, letters) || !isAscii_) return true;
  return std::popcount(letters & ~letters_) <= allowed_ &&
         std::popcount(letters_ & ~letters) <= allowed_ &&
         DistanceOf(typed_, word, allowed_) <= allowed_;
}

std::wstring CluiNearest(const std::wstring& typed, const std::vector<std::wstring>& words,
                         std::size_t here) {
  const std::wstring_view whole = typed;
  const std::wstring_view meant = WithoutColon(whole);
  const int allowed = Allowed(typed.size());
  Rank best = {allowed + 1, false, false};
  const std::wstring* nearest = nullptr;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::wstring_view word = words[i];
    const int distance =
        DistanceOf(meant, WithoutColon(word), std::min(allowed, std::get<0>(best)));
    const Rank rank = {distance, i >= here, EndsInColon(whole) != EndsInColon(word)};
    if (!(rank < best)) continue;
    best = rank;
    nearest = &words[i];
  }
  return nearest == nullptr ? std::wstring() : *nearest;
}
