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

// Words, each once. Views of the lexer's names, which stay where they are while nothing is added or
// deleted.
class DistinctWords {
 public:
  void add(const char* word) {
    if (seen_.insert(word).second) words_.push_back(word);
  }
  const std::vector<const char*, YAllocator<const char*>>& words() const { return words_; }

 private:
  std::vector<const char*, YAllocator<const char*>> words_;
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
  DistinctWords distinct;
  eachPossibleWord(
      prefix, [](void* word, const char* name) { static_cast<DistinctWords*>(word)->add(name); },
      &distinct);
  words.resize(0);
  MakeRoom(words, static_cast<int>(distinct.words().size()));
  for (const char* name : distinct.words()) words.end().assign(name);
}

void YcluiParser::eachPossibleWord(const char* prefix, YcluiWordProc take, void* word) const {
  const YcluiLineParser* frame = currentFrame();
  if (frame == nullptr) return;
  YString folded(prefix);
  folded.toLower();  // as the names of the dictionary are
  const auto takeWordOf = [&](const YcluiSyntaxNode& node) {
    const char* name = lexer->keyword(node.tokenId);
    if (name == nullptr || *name == '\0') return;
    if (std::strncmp(name, folded.buffer, folded.length) == 0) take(word, name);
  };
  YcluiSyntaxNodeP_Array nodes;
  frame->possibleNodes(nodes);
  for (int i = 0; i < nodes.size(); ++i) takeWordOf(*nodes.at(i));
  for (YcluiSuccessorIterator i(*indefiniteRoot); i.ring != nullptr; ++i) takeWordOf(*i.node());
}
