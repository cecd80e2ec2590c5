#include "bench/peer/Language.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <set>
#include <string_view>

namespace {

constexpr int MostNumber = 1000000;

// Commands of libcli itself: no short form may be a prefix of one.
constexpr const char* ReservedWords[] = {"help",    "quit",   "logout",  "exit",
                                         "history", "enable", "disable", "configure"};

std::string WordOf(unsigned number) {
  constexpr std::string_view Consonants = "bcdfgklmnprstvxz";
  constexpr std::string_view Vowels = "aeiou";
  std::string word;
  for (int syllable = 0; syllable < 3; ++syllable) {
    word += Consonants[number % Consonants.size()];
    number /= Consonants.size();
    word += Vowels[number % Vowels.size()];
    number /= Vowels.size();
  }
  return word + "ne";
}

std::size_t CommonLength(const std::string& one, const std::string& other) {
  const auto difference = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
  return static_cast<std::size_t>(difference.first - one.begin());
}

std::string ShortForm(const std::set<std::string>& all, const std::string& word) {
  const auto found = all.find(word);
  std::size_t common = 0;
  if (found != all.begin()) common = CommonLength(word, *std::prev(found));
  if (std::next(found) != all.end()) {
    common = std::max(common, CommonLength(word, *std::next(found)));
  }
  return word.substr(0, common + 1);
}

}  // namespace

Language::Language(int commands) {
  std::minstd_rand numbers(1);
  std::set<std::string> all(std::begin(ReservedWords), std::end(ReservedWords));
  while (static_cast<int>(words.size()) < commands) {
    const std::string word = WordOf(static_cast<unsigned>(numbers()));
    if (all.insert(word).second) words.push_back(word);
  }
  for (const std::string& word : words) shortForms.push_back(ShortForm(all, word));
}

std::vector<Line> LinesOf(const Language& language, Spelling spelling, int count) {
  std::minstd_rand numbers(2);
  std::vector<Line> lines;
  for (int i = 0; i < count; ++i) {
    const std::size_t command = numbers() % language.words.size();
    const bool isOn = numbers() % 2 == 0;
    const int number = static_cast<int>(numbers() % MostNumber);
    const std::string& word =
        spelling == Spelling::Short ? language.shortForms[command] : language.words[command];
    lines.push_back({word, isOn, number});
    if (spelling == Spelling::Unknown) lines.back().word[7] = 'y';
    if (spelling == Spelling::Misplaced) lines.back().word.clear();
  }
  return lines;
}

long SumOf(const std::vector<Line>& lines) {
  long sum = 0;
  for (const Line& line : lines) sum += line.isOn ? line.number : -line.number;
  return sum;
}
