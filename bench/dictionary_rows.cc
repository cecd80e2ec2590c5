#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "bench/Row.h"
#include "lex/YcluiLex.h"

namespace {

constexpr long Few = 100;
constexpr long Many = 10000;

// A word of four syllables, which are its abbreviation, and an ending.
std::string Syllables(long number) {
  constexpr const char* All[] = {"ba", "de", "fi", "go", "ku", "la", "me", "ni", "po", "ru"};
  std::string text;
  for (int i = 0; i < 4; ++i, number /= 10) text += All[number % 10];
  return text;
}

// Words in a number of dictionaries, one after another in each in turn.
class Dictionaries : public Work {
 public:
  Dictionaries(long words, long dictionaries)
      : dictionaries_(static_cast<std::size_t>(dictionaries)), shuffled_(words) {
    for (long i = 0; i < words; ++i) abbreviations_.push_back(Syllables(i));
    for (const std::string& syllables : abbreviations_) names_.push_back(syllables + "-line");
    std::iota(shuffled_.begin(), shuffled_.end(), 0U);
    std::shuffle(shuffled_.begin(), shuffled_.end(), std::minstd_rand(1));
  }

 protected:
  void begin() {
    lexers_.clear();
    for (std::size_t i = 0; i < dictionaries_; ++i) lexers_.push_back(std::make_unique<YcluiLex>());
  }
  YcluiLex& lexerOf(std::size_t word) const { return *lexers_[word % dictionaries_]; }
  void addAll(bool abbreviated) {
    for (std::size_t i = 0; i < names_.size(); ++i) {
      const char* abbreviation = abbreviated ? abbreviations_[i].c_str() : nullptr;
      lexerOf(i).addKeyword(names_[i].c_str(), abbreviation, 0);
    }
  }
  std::size_t words() const {
    std::size_t sum = 0;
    for (const auto& lexer : lexers_) sum += lexer->words()->count();
    return sum;
  }

  std::size_t dictionaries_;
  std::vector<std::string> abbreviations_;
  std::vector<std::string> names_;
  // The words in another order than that of adding, which is that of the memory.
  std::vector<std::size_t> shuffled_;
  std::vector<std::unique_ptr<YcluiLex>> lexers_;
};

class Added : public Dictionaries {
 public:
  using Dictionaries::Dictionaries;
  void prepare() override { begin(); }
  void run() override { addAll(true); }
  bool isDone() const override { return words() == names_.size(); }
};

class Deleted : public Dictionaries {
 public:
  using Dictionaries::Dictionaries;
  void prepare() override {
    begin();
    addAll(true);
  }
  void run() override {
    for (const std::size_t i : shuffled_) lexerOf(i).delKeyword(names_[i].c_str());
  }
  bool isDone() const override { return words() == 0; }
};

class LookedUp : public Dictionaries {
 public:
  void run() override {
    found_ = 0;
    for (std::size_t i = 0; i < keys_.size(); ++i) {
      if (lexerOf(shuffled_[i]).keyword(keys_[i].c_str()) != nullptr) ++found_;
    }
  }
  bool isDone() const override { return found_ == (isKnown_ ? keys_.size() : 0); }

 protected:
  LookedUp(long words, long dictionaries, bool abbreviated, const char* ending, bool isKnown)
      : Dictionaries(words, dictionaries), isKnown_(isKnown) {
    begin();
    addAll(abbreviated);
    for (const std::size_t i : shuffled_) keys_.push_back(abbreviations_[i] + ending);
  }

 private:
  std::vector<std::string> keys_;
  bool isKnown_;
  std::size_t found_ = 0;
};

struct ByName : LookedUp {
  ByName(long words, long dictionaries) : LookedUp(words, dictionaries, false, "-line", true) {}
};

struct ByShortForm : LookedUp {
  ByShortForm(long words, long dictionaries) : LookedUp(words, dictionaries, true, "-l", true) {}
};

struct Unknown : LookedUp {
  Unknown(long words, long dictionaries) : LookedUp(words, dictionaries, true, "-lines", false) {}
};

// The row, and for comparison the same with dictionaries that stay small.
template <class W>
void AddTo(std::vector<Row>& rows, const std::string& what) {
  rows.push_back({what, "word", Few, Many, 1.5, [](long n) { return std::make_unique<W>(n, 1); }});
  rows.push_back({what + ", 100 in each", "word", Few, Many, 0,
                  [](long n) { return std::make_unique<W>(n, n / Few); }});
}

}  // namespace

std::vector<Row> DictionaryRows() {
  std::vector<Row> rows;
  AddTo<Added>(rows, "words added");
  AddTo<Deleted>(rows, "words deleted");
  AddTo<ByName>(rows, "words found by name");
  AddTo<ByShortForm>(rows, "words found by a short form");
  AddTo<Unknown>(rows, "unknown words");
  return rows;
}
