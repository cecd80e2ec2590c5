// What a look-up needs of a word. Internal to the word table.

#ifndef LEX_YCLUIWORDBRIEF_H_
#define LEX_YCLUIWORDBRIEF_H_

#include <cstdint>
#include <cstring>
#include <string_view>

#include "lex/YcluiKeyword.h"

// Of a plain word with a short name, all that makes a token of it. It stands in the index, so that
// the record, which lies elsewhere in memory, is not read.
class YcluiWordBrief {
 public:
  YcluiWordBrief() = default;
  explicit YcluiWordBrief(const YcluiKeyword& record) {
    if (record.type() != YcluiTokenKeyword || record.nameLength() > sizeof name_) return;
    id_ = record.id();
    length_ = static_cast<std::uint8_t>(record.nameLength());
    shortest_ = static_cast<std::uint8_t>(record.shortestLength());
    std::memcpy(name_, record.name(), length_);
  }

  // Whether it tells anything: of other words, and of one without a name, it does not.
  bool isThere() const { return length_ != 0; }
  std::uint32_t id() const { return id_; }
  std::string_view nameView() const { return {name_, length_}; }
  std::uint32_t shortestLength() const { return shortest_; }

 private:
  std::uint32_t id_ = 0;
  std::uint8_t length_ = 0;
  std::uint8_t shortest_ = 0;
  char name_[14] = {};
};

// A word that was found, null when there is none, and its brief, null when it has none. The brief
// is good until a word is added or deleted.
struct YcluiFoundWord {
  YcluiKeyword* record = nullptr;
  const YcluiWordBrief* brief = nullptr;
};

// Whether a word, or what its brief tells of it, is found under the text: as its shortest form, or,
// if longer ones count too, as a beginning of its name that is no shorter.
template <class Word>
bool YcluiIsFoundUnder(const Word& word, std::string_view text, bool longerToo) {
  const std::size_t shortest = word.shortestLength();
  if (shortest != text.size() && !(longerToo && shortest < text.size())) return false;
  return word.nameView().starts_with(text);
}

#endif  // LEX_YCLUIWORDBRIEF_H_
