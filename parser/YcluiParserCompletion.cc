// Completion: the words that can come next.

#include <functional>
#include <string_view>
#include <unordered_set>

#include "foundation/YMemory.h"
#include "parser/YcluiParserCore.h"

namespace {

// A list in which each word is once. It holds views of the lexer's names, which are valid until a
// word is added or deleted.
class DistinctWords {
 public:
  void add(const char* word) {
    if (seen_.insert(word).second) words_.push_back(word);
  }
  const YcluiCandidates::Words& words() const { return words_; }

 private:
  YcluiCandidates::Words words_;
  std::unordered_set<std::string_view, std::hash<std::string_view>, std::equal_to<>,
                     YAllocator<std::string_view>>
      seen_;
};

// Allocates the whole list at once, since growing by single words would move a long list many
// times.
void Reserve(YString_Array& list, int count) {
  const int size = list.size();
  if (count <= size) return;
  list.resize(count);
  list.resize(size);
}

std::uint32_t CommonLength(const char* word, const YString& other) {
  std::uint32_t n = 0;
  while (n < other.length && word[n] == other.buffer[n]) ++n;
  return n;
}

std::string_view ViewOf(const char* text) {
  return text == nullptr ? std::string_view() : std::string_view(text);
}

}  // namespace

int YcluiParser::completionList(const char* prefix, YString_Array& list) const {
  YcluiCandidates::Words found;
  if (!core->findCandidates(prefix, found)) return 0;
  const int first = prefix == nullptr || *prefix == '\0' ? 0 : list.size();
  const int count = static_cast<int>(found.size());
  Reserve(list, first + count);
  for (int i = 0; i < count; ++i) list[first + i].assign(found[static_cast<std::size_t>(i)]);
  return list.size();
}

YWord YcluiParser::completionString(const char* prefix, YString& completed,
                                    unsigned long& unique) const {
  unique = 0;
  YcluiCandidates::Words found;
  if (!core->findCandidates(prefix, found) || found.empty()) return 0;
  completed.assign(found[0]);
  for (std::size_t i = 1; i < found.size() && completed.length > 0; ++i) {
    completed.truncate(found[i] == nullptr ? 0 : CommonLength(found[i], completed));
  }
  if (completed.length == 0) return 0;
  unique = found.size() == 1 ? 1 : 0;
  return 1;
}

bool YcluiParserCore::findCandidates(const char* prefix, YcluiCandidates::Words& found) const {
  const YcluiLineParser* frame = frames.current();
  if (frame == nullptr) return false;
  return candidates.find(*frame, *lexer, ViewOf(prefix), found);
}

void YcluiParser::possibleWords(YString_Array& words, const char* prefix) const {
  DistinctWords distinct;
  eachPossibleWord(
      prefix, [](void* data, const char* name) { static_cast<DistinctWords*>(data)->add(name); },
      &distinct);
  words.resize(0);
  Reserve(words, static_cast<int>(distinct.words().size()));
  for (const char* name : distinct.words()) words.end().assign(name);
}

void YcluiParser::eachPossibleWord(const char* prefix, YcluiWordProc report, void* data) const {
  const YcluiLineParser* frame = core->frames.current();
  if (frame == nullptr) return;
  YString folded(prefix);
  folded.toLower();  // the dictionary's names are in lower case
  YcluiCandidates::Words found;
  // The first word of a command decides whether it may interrupt; later words are not checked.
  const YcluiSyntaxNode* interrupted =
      frame->firstNode() == nullptr ? core->frames.interruptedNode() : nullptr;
  core->acceptedCandidates.findAdmitted(*frame, interrupted, *core->lexer, ViewOf(folded.buffer),
                                        found);
  YcluiCandidates::AddSuccessors(*core->frames.indefiniteRoot(), *core->lexer,
                                 ViewOf(folded.buffer), found);
  for (const char* name : found) {
    if (*name != '\0') report(data, name);
  }
}
