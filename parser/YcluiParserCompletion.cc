// Completion: what could come next.

#include <algorithm>
#include <cstring>
#include <functional>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "foundation/YMemory.h"
#include "parser/YcluiParser.h"

namespace {

// Keeps the words that begin with a prefix, each once. The names of the dictionary are in lower
// case, and so is the prefix.
class DistinctWords {
 public:
  explicit DistinctWords(const YString& prefix) : prefix_(prefix) {}

  // Nothing for null and for the empty text.
  void add(const char* word) {
    const bool fits =
        word != nullptr && *word != '\0' && std::strncmp(word, prefix_.buffer, prefix_.length) == 0;
    if (fits && seen_.insert(word).second) words_.push_back(word);
  }
  const std::vector<const char*, YAllocator<const char*>>& words() const { return words_; }

 private:
  const YString& prefix_;
  std::vector<const char*, YAllocator<const char*>> words_;
  // Views of the lexer's names, which stay where they are while nothing is added or deleted.
  std::unordered_set<std::string_view, std::hash<std::string_view>, std::equal_to<>,
                     YAllocator<std::string_view>>
      seen_;
};

// At once, where growing word by word would move a long list many times.
void MakeRoom(YString_Array& list, int count) {
  const int size = list.size();
  if (count <= size) return;
  list.resize(count);
  list.resize(size);
}

std::uint32_t CommonLength(const YString& a, const YString& b) {
  const std::uint32_t most = std::min(a.length, b.length);
  std::uint32_t n = 0;
  while (n < most && a.buffer[n] == b.buffer[n]) ++n;
  return n;
}

}  // namespace

int YcluiParser::completionList(const char* prefix, YString_Array& list) const {
  const YcluiLineParser* frame = currentFrame();
  YcluiSyntaxNodeP_Array nodes;
  if (frame == nullptr || frame->possibleNodes(nodes) == 0) return 0;
  const std::size_t length = prefix == nullptr ? 0 : std::strlen(prefix);
  std::vector<const char*, YAllocator<const char*>> found;
  for (int i = 0; i < nodes.size(); ++i) {
    const char* word = lexer->keyword(nodes.at(i)->tokenId);
    if (length == 0 || (word != nullptr && std::strncmp(word, prefix, length) == 0))
      found.push_back(word);
  }
  const int first = length == 0 ? 0 : list.size();
  const int count = static_cast<int>(found.size());
  MakeRoom(list, first + count);
  for (int i = 0; i < count; ++i) list[first + i].assign(found[static_cast<std::size_t>(i)]);
  return list.size();
}

YWord YcluiParser::completionString(const char* prefix, YString& completed,
                                    unsigned long& unique) const {
  unique = 0;
  YString_Array list;
  const int count = completionList(prefix, list);
  if (count == 0) return 0;
  completed = list.at(0);
  for (int i = 0; i < count && completed.length > 0; ++i) {
    completed.truncate(CommonLength(list.at(i), completed));
  }
  if (completed.length == 0) return 0;
  unique = count == 1 ? 1 : 0;
  return 1;
}

void YcluiParser::possibleWords(YString_Array& words, const char* prefix) const {
  words.resize(0);
  const YcluiLineParser* frame = currentFrame();
  if (frame == nullptr) return;
  YString folded(prefix);
  folded.toLower();
  DistinctWords distinct(folded);
  YcluiSyntaxNodeP_Array nodes;
  frame->possibleNodes(nodes);
  for (int i = 0; i < nodes.size(); ++i) distinct.add(lexer->keyword(nodes.at(i)->tokenId));
  for (YcluiSuccessorIterator i(*indefiniteRoot); i.ring != nullptr; ++i) {
    distinct.add(lexer->keyword(i.node()->tokenId));
  }
  const int count = static_cast<int>(distinct.words().size());
  MakeRoom(words, count);
  for (int i = 0; i < count; ++i) words[i].assign(distinct.words()[static_cast<std::size_t>(i)]);
}
