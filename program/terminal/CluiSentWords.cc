#include "program/terminal/CluiSentWords.h"

CluiSentWords::Extent::Extent(const YcluiParser& parser)
    : depth(parser.nestingDepth()),
      tokens(static_cast<int>(parser.numberOfToken()) + (parser.tokenIsOpen() != 0 ? 1 : 0)),
      isOpen(parser.tokenIsOpen() != 0) {}

void CluiSentWords::add(const std::string& text, const Extent& before, const Extent& after) {
  if (text.empty()) return;
  const int first = before.isOpen ? before.tokens : before.tokens + 1;
  words_.push_back({text, before.depth, first, before.depth == after.depth ? after.tokens : 0});
}

// The texts of words that work anywhere may be between; they have no token and stay.
std::optional<std::string> CluiSentWords::takeBack(const Extent& extent) {
  std::string text;
  std::vector<Word> left = words_;
  std::size_t i = left.size();
  while (i > 0 && left[i - 1].depth == extent.depth) {
    const Word& word = left[--i];
    if (word.last < word.first) continue;
    if (word.last != extent.tokens) break;
    if (word.first < extent.tokens) return std::nullopt;
    text.insert(0, text.empty() ? word.text : word.text + " ");
    left.erase(left.begin() + static_cast<std::ptrdiff_t>(i));
  }
  if (text.empty()) return std::nullopt;
  words_ = std::move(left);
  return text;
}

void CluiSentWords::set(const std::string& line, const Extent& extent) {
  words_.clear();
  if (!line.empty()) words_.push_back({line, extent.depth, 1, extent.tokens});
}

std::string CluiSentWords::text() const {
  std::string line;
  for (const Word& word : words_) line.append(line.empty() ? "" : " ").append(word.text);
  return line;
}
