// The header describes a look-up in two stages that examine every word. The implementation gives
// the same results with an index: it maps every text that can find a word to the list of words that
// it finds, those of the first stage before those of the second, each in the order of adding. Only
// the words of that list are tested.
//
// A word without an abbreviation accepts only its name, so the second stage never finds it. A word
// with an abbreviation is found by it in the first stage, and by longer prefixes of its name in the
// second. One whose abbreviation is no prefix of its name is never found.

#include "lex/YcluiWordTable.h"

#include <cstring>
#include <new>
#include <utility>

#include "foundation/YAscii.h"
#include "foundation/YErr.h"
#include "foundation/YKanji.h"
#include "lex/YcluiAlias.h"
#include "lex/YcluiArgKeyword.h"
#include "lex/YcluiPlainKeyword.h"

namespace {

using Part = YcluiWordIndex::Part;

// Unused numbers below which a table is not renumbered.
constexpr std::size_t FewestNumbers = 64;

// FNV-1a, because hashing a text yields the hash of each of its prefixes on the way.
constexpr std::uint64_t HashOfNothing = 0xCBF29CE484222325U;

std::uint64_t NextHash(std::uint64_t hash, char byte) {
  return (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
}

std::uint64_t HashOf(const char* text) {
  std::uint64_t hash = HashOfNothing;
  for (; *text != '\0'; ++text) hash = NextHash(hash, *text);
  return hash;
}

// The key in the index of a text with that hash.
std::uint32_t KeyOf(std::uint64_t hash) {
  return static_cast<std::uint32_t>(hash >> 33);
}

// The text by which the first stage finds a word.
const char* ShortestForm(const YcluiKeyword& record) {
  const char* abbreviation = record.abbreviation();
  return abbreviation != nullptr ? abbreviation : record.name();
}

// Whether the text is the shortest form of the word or, if `longerToo`, a longer prefix of its
// name.
bool IsFoundUnder(const YcluiKeyword& record, std::string_view text, bool longerToo) {
  const std::size_t shortest = record.shortestLength();
  if (shortest != text.size() && !(longerToo && shortest < text.size())) return false;
  return record.nameView().starts_with(text);
}

// Calls `use` with key and part for every text by which the word is found.
template <class Use>
void ForEachKey(YcluiKeyword& record, const Use& use) {
  const char* shortest = ShortestForm(record);
  if (record.matches(shortest) == 0) return;
  std::uint64_t hash = HashOf(shortest);
  use(KeyOf(hash), Part::First);
  for (const char* p = record.name() + std::strlen(shortest); *p != '\0'; ++p) {
    hash = NextHash(hash, *p);
    use(KeyOf(hash), Part::Second);
  }
}

}  // namespace

YcluiWordTable::YcluiWordTable(std::uint32_t firstId) : nextId(firstId) {}

YcluiWordTable::~YcluiWordTable() {
  deleteAll();
}

std::uint32_t YcluiWordTable::addKeyword(const char* name, const char* abbreviation,
                                         std::uint32_t id) {
  if (find(name) != nullptr) return cluiWarning(YErrNameExists);
  return addWord(new (std::nothrow) YcluiPlainKeyword(name, abbreviation, id != 0 ? id : nextId));
}

std::uint32_t YcluiWordTable::addKeyword(const char* name, int count, const YcluiValueType* types,
                                         std::uint32_t id) {
  if (find(name) != nullptr) return cluiWarning(YErrNameExists);
  return addWord(new (std::nothrow) YcluiArgKeyword(name, id != 0 ? id : nextId, count, types));
}

YWord YcluiWordTable::delKeyword(const char* name) {
  YcluiKeyword* record = find(name);
  if (record == nullptr || record->type() == YcluiTokenAlias) return cluiWarning(YErrNoSuchWord);
  return remove(record);
}

std::uint32_t YcluiWordTable::addAlias(const char* name, const char* text) {
  const YcluiKeyword* known = find(name);
  if (known != nullptr) {
    return cluiWarning(known->type() == YcluiTokenAlias ? YErrIsAlias : YErrIsWord);
  }
  YcluiKeyword* record = new (std::nothrow) YcluiAlias(name, text);
  return keep(record) ? record->id() : 0;
}

YWord YcluiWordTable::delAlias(const char* name) {
  YcluiKeyword* record = find(name);
  if (record == nullptr || record->type() != YcluiTokenAlias) return cluiWarning(YErrNoSuchAlias);
  return remove(record);
}

YcluiKeyword* YcluiWordTable::find(const char* key) const {
  const std::uint64_t hash = fold(key == nullptr ? "" : key);
  // A key that is not in lower case is no prefix of a name, so only the first stage can find it.
  return findFolded(hash, folded == key);
}

YcluiKeyword* YcluiWordTable::findInAnyCase(std::string_view key) const {
  return findFolded(fold(key), true);
}

const char* YcluiWordTable::keyword(std::uint32_t id) const {
  const YcluiKeyword* record = ids.first(id, records, [](const YcluiKeyword&) { return true; });
  return record == nullptr ? nullptr : record->name();
}

// NOLINTBEGIN(bugprone-parent-virtual-call): the records' own comparison is what is left out.
YWord YcluiWordTable::compare(const void* a, const void* b) const {
  return YSet::compare(a, b);
}

unsigned int YcluiWordTable::hashValue(const void* item) const {
  return YSet::hashValue(item);
}
// NOLINTEND(bugprone-parent-virtual-call)

void* YcluiWordTable::search(const void* probe) const {
  const YAssoc* wanted = static_cast<const YAssoc*>(probe);
  const char* name = wanted->key == nullptr ? "" : static_cast<const char*>(wanted->key);
  return static_cast<YAssoc*>(
      forms.first(KeyOf(HashOf(name)), records, [wanted](const YcluiKeyword& record) {
        return record.hashKey() == wanted->hashKey() && record.equals(wanted) != 0;
      }));
}

// Stores the key in lower case in `folded`, as YFoldCase folds it, and returns its hash.
std::uint64_t YcluiWordTable::fold(std::string_view key) const {
  folded.assign(key.data(), key.size());
  const bool isDoubleByte = YEncoding::IsDoubleByte();
  std::uint64_t hash = HashOfNothing;
  for (char* p = folded.buffer; *p != '\0'; ++p) {
    const bool mayStart = isDoubleByte && YIsKanjiLead(static_cast<unsigned char>(*p));
    if (mayStart && IsKanjiStart(p) != 0 && p[1] != '\0') {
      hash = NextHash(hash, *p++);
    } else {
      *p = YLowerCase(*p);
    }
    hash = NextHash(hash, *p);
  }
  return hash;
}

// The first stage, and after it the second if `longerToo`.
YcluiKeyword* YcluiWordTable::findFolded(std::uint64_t hash, bool longerToo) const {
  const std::string_view text(folded.buffer, folded.length);
  return forms.first(KeyOf(hash), records, [text, longerToo](const YcluiKeyword& record) {
    return IsFoundUnder(record, text, longerToo);
  });
}

std::uint32_t YcluiWordTable::addWord(YcluiKeyword* record) {
  if (!keep(record)) return 0;
  ++nextId;
  return record->id();
}

// Owns the record from now on; destroys it and returns false when it cannot be added.
bool YcluiWordTable::keep(YcluiKeyword* record) {
  if (record == nullptr) return cluiFatal(YErrNoMemory) != 0;
  // The caller's look-up found no equal record, but it may have missed one because of the case of
  // the name, or because there was no memory for the name.
  if (contains(static_cast<YAssoc*>(record)) != 0) {
    delete record;
    return false;
  }
  attach(static_cast<YAssoc*>(record));
  link(record);
  return true;
}

YWord YcluiWordTable::remove(YcluiKeyword* record) {
  if (detach(static_cast<YAssoc*>(record)) == nullptr) return cluiWarning(YErrNotDetached);
  unlink(record);
  delete record;
  return 1;
}

void YcluiWordTable::link(YcluiKeyword* record) {
  ++changeCount;
  if (records.size() > 2 * count() + FewestNumbers) numberAnew();
  const auto number = static_cast<std::uint32_t>(records.size());
  records.push_back(record);
  record->setNumber(number);
  ids.add(record->id(), Part::First, number);
  ForEachKey(*record,
             [this, number](std::uint32_t key, Part part) { forms.add(key, part, number); });
}

void YcluiWordTable::unlink(YcluiKeyword* record) {
  ++changeCount;
  const std::uint32_t number = record->number();
  ids.remove(record->id(), Part::First, number);
  ForEachKey(*record,
             [this, number](std::uint32_t key, Part part) { forms.remove(key, part, number); });
  records[number] = nullptr;
}

// Numbers the words without gaps, so that adding and deleting words repeatedly does not grow the
// table.
void YcluiWordTable::numberAnew() {
  const auto old = std::exchange(records, {nullptr});
  ids.clear();
  forms.clear();
  for (YcluiKeyword* record : old) {
    if (record != nullptr) link(record);
  }
}
