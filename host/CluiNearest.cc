#include "host/CluiNearest.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <tuple>

namespace {

wchar_t Folded(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? c + (L'a' - L'A') : c;
}

int Allowed(std::size_t length) {
  if (length < 2) return 0;
  if (length < 5) return 1;
  return length < 9 ? 2 : 3;
}

bool EndsInColon(const std::wstring& word) {
  return word.size() > 1 && word.back() == L':';
}

// A colon forgotten behind a word is no slip beside another one.
std::wstring WithoutColon(const std::wstring& word) {
  return EndsInColon(word) ? word.substr(0, word.size() - 1) : word;
}

// Slips, whether it cannot come here, whether it ends otherwise: the less, the likelier is a word
// meant.
using Rank = std::tuple<int, bool, bool>;

int LengthOf(const std::wstring& text) {
  return static_cast<int>(text.size());
}

}  // namespace

int CluiDistance(const std::wstring& a, const std::wstring& b, int atMost) {
  if (std::abs(LengthOf(a) - LengthOf(b)) > atMost) return atMost + 1;
  // Row i holds the distances of a's first i letters to each beginning of b; a swap looks two back.
  std::vector<int> twoBack(b.size() + 1), back(b.size() + 1), row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = static_cast<int>(j);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::swap(twoBack, back);
    std::swap(back, row);
    row[0] = static_cast<int>(i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = Folded(a[i - 1]) == Folded(b[j - 1]);
      row[j] = std::min({back[j] + 1, row[j - 1] + 1, back[j - 1] + (same ? 0 : 1)});
      const bool swapped = i > 1 && j > 1 && Folded(a[i - 1]) == Folded(b[j - 2]) &&
                           Folded(a[i - 2]) == Folded(b[j - 1]);
      if (swapped) row[j] = std::min(row[j], twoBack[j - 2] + 1);
    }
    if (*std::min_element(row.begin(), row.end()) > atMost) return atMost + 1;
  }
  return std::min(row.back(), atMost + 1);
}

CluiNearGlance::CluiNearGlance(std::string_view typed)
    : isPlain_(Look(typed, length_, letters_)), allowed_(Allowed(typed.size())) {}

// False for a word that is not ASCII. A colon at the end counts no more than it does otherwise.
bool CluiNearGlance::Look(std::string_view word, int& length, Letters& letters) {
  if (word.size() > 1 && word.back() == ':') word.remove_suffix(1);
  length = static_cast<int>(word.size());
  letters = 0;
  for (const char c : word) {
    if ((c & 0x80) != 0) return false;
    letters |= Letters{1} << (Folded(static_cast<wchar_t>(c)) & 63);
  }
  return true;
}

// A slip brings one letter that the other word does not have, and takes one away.
bool CluiNearGlance::mayBeMeant(std::string_view word) const {
  int length = 0;
  Letters letters = 0;
  if (!Look(word, length, letters) || !isPlain_) return true;
  return std::abs(length - length_) <= allowed_ && std::popcount(letters & ~letters_) <= allowed_ &&
         std::popcount(letters_ & ~letters) <= allowed_;
}

std::wstring CluiNearest(const std::wstring& typed, const std::vector<std::wstring>& words,
                         std::size_t here) {
  const std::wstring meant = WithoutColon(typed);
  Rank best = {Allowed(typed.size()) + 1, false, false};
  const std::wstring* nearest = nullptr;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const int distance = CluiDistance(meant, WithoutColon(words[i]), std::get<0>(best));
    const Rank rank = {distance, i >= here, EndsInColon(typed) != EndsInColon(words[i])};
    if (!(rank < best)) continue;
    best = rank;
    nearest = &words[i];
  }
  return nearest == nullptr ? std::wstring() : *nearest;
}
