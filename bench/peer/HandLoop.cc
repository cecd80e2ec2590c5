// The least that reading such lines can cost: split at blanks, look up the first word, call.

#include <algorithm>
#include <charconv>
#include <string_view>
#include <unordered_map>

#include "bench/peer/Implementation.h"

namespace {

struct Words {
  std::string_view word[4];
  int count = 0;
};

using Action = bool (*)(const Words&, long& sum);

Words Split(std::string_view line) {
  Words words;
  std::size_t at = 0;
  while (words.count < 4) {
    at = line.find_first_not_of(' ', at);
    if (at == std::string_view::npos) break;
    const std::size_t end = std::min(line.find(' ', at), line.size());
    words.word[words.count++] = line.substr(at, end - at);
    at = end;
  }
  return words;
}

bool Switch(const Words& words, long& sum) {
  int number = 0;
  const std::string_view text = words.word[2];
  if (words.count != 4 || text.empty()) return false;
  if (std::from_chars(text.begin(), text.end(), number).ec != std::errc()) return false;
  if (words.word[1] != "on" && words.word[1] != "off") return false;
  sum += words.word[1] == "on" ? number : -number;
  return true;
}

class HandLoop : public Implementation {
 public:
  explicit HandLoop(const Language& language) {
    for (const std::string& word : language.words) actions_[word] = &Switch;
  }

  Outcome read(const TypedLines& lines) override {
    Outcome outcome;
    lines.forEach([this, &outcome](const char* line, std::size_t length) {
      const Words words = Split({line, length});
      const auto action = actions_.find(words.word[0]);
      if (action == actions_.end() || !action->second(words, outcome.sum)) ++outcome.refused;
    });
    return outcome;
  }

 private:
  std::unordered_map<std::string_view, Action> actions_;
};

}  // namespace

std::unique_ptr<Implementation> MakeHandLoop(const Language& language) {
  return std::make_unique<HandLoop>(language);
}
