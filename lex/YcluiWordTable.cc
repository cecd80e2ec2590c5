// The two stages of a look-up, as they are told, probe a set by hash and then ask every record.
// Here each stage is an index instead, from every text that the stage can find a word under to the
// words that it finds, in the order of adding. A text decides which row is looked at, and the words
// in the row are asked, so what is answered is what asking them all would answer.
//
// A word without an abbreviation accepts its name alone, under which it is filed, so the second
// stage never finds one. A word with an abbreviation is filed under that, and accepts longer
// prefixes of its name besides. One whose abbreviation is no prefix of its name accepts nothing.

#include "lex/YcluiWordTable.h"

#include <cstring>
#include <new>

#include "foundation/YErr.h"
#include "lex/YcluiAlias.h"
#include "lex/YcluiArgKeyword.h"
#include "lex/YcluiPlainKeyword.h"

namespace {

// A hash that is known for every prefix of a text when it is known for the whole.
constexpr std::uint64_t HashOfNothing = 0xCBF29CE484222325U;

std::uint64_t NextHash(std::uint64_t hash, char byte) {
  return (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
}

std::uint64_t HashOf(const char* text) {
  std::uint64_t hash = HashOfNothing;
  for (; *text != '\0'; ++text) hash = NextHash(hash, *text);
  return hash;
}

// The first word of the index that accepts the text at its whole length.
YcluiKeyword* FirstThatMatches(const YcluiWordIndex& index, const char* text) {
  const std::size_t length = std::strlen(text);
  for (const auto* link = index.first(HashOf(text)); link != nullptr; link = link->next) {
    if (link->length == length && link->record->matches(text) != 0) return link->record;
  }
  return nullptr;
}

// The text that the first stage finds a word under.
const char* FiledAs(const YcluiKeyword& record) {
  const char* abbreviation = record.abbreviation();
  return abbreviation != nullptr ? abbreviation : record.name();
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
  if (key == nullptr) key = "";
  folded.assign(key);
  folded.toLower();
  YcluiKeyword* record = FirstThatMatches(filed, folded.buffer);
  return record != nullptr ? record : FirstThatMatches(accepted, key);
}

const char* YcluiWordTable::keyword(std::uint32_t id) const {
  const auto* link = numbered.first(id);
  return link == nullptr ? nullptr : link->record->name();
}

// NOLINTBEGIN(bugprone-parent-virtual-call): the records' own comparison is what is left out.
YWord YcluiWordTable::compare(const void* a, const void* b) const {
  return YSet::compare(a, b);
}

unsigned int YcluiWordTable::hashValue(const void* item) const {
  return YSet::hashValue(item);
}
// NOLINTEND(bugprone-parent-virtual-call)

std::uint32_t YcluiWordTable::addWord(YcluiKeyword* record) {
  if (!keep(record)) return 0;
  ++nextId;
  return record->id();
}

// Takes the record over; one that cannot be kept is destroyed.
bool YcluiWordTable::keep(YcluiKeyword* record) {
  if (record == nullptr) return cluiFatal(YErrNoMemory) != 0;
  if (clashes(*record)) {
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

// True when a word that is filed under the same text accepts the name of `record`. The look-up that
// came before has found such a word, unless the case of the name given, or a name that found no
// memory, kept it from that.
bool YcluiWordTable::clashes(const YcluiKeyword& record) const {
  const char* name = record.name();
  const char* form = FiledAs(record);
  if (std::strcmp(form, name) == 0) return FirstThatMatches(filed, name) != nullptr;
  for (const auto* link = accepted.first(HashOf(name)); link != nullptr; link = link->next) {
    if (std::strcmp(FiledAs(*link->record), form) == 0 && link->record->matches(name) != 0) {
      return true;
    }
  }
  return false;
}

void YcluiWordTable::link(YcluiKeyword* record) {
  Links& links = linksOf[record];
  links.numbered = {record, record->id(), 0};
  numbered.add(links.numbered);
  const char* name = record->name();
  const std::size_t length = std::strlen(name);
  const char* shortest = FiledAs(*record);
  const std::size_t shortestLength = std::strlen(shortest);
  if (record->matches(shortest) == 0) return;
  std::uint64_t hash = HashOf(shortest);
  links.filed = {record, hash, shortestLength};
  filed.add(links.filed);
  links.accepted.resize(length - shortestLength);
  for (std::size_t i = shortestLength; i < length; ++i) {
    hash = NextHash(hash, name[i]);
    YcluiWordIndex::Link& longer = links.accepted[i - shortestLength];
    longer = {record, hash, i + 1};
    accepted.add(longer);
  }
}

void YcluiWordTable::unlink(YcluiKeyword* record) {
  const auto place = linksOf.find(record);
  Links& links = place->second;
  numbered.remove(links.numbered);
  if (links.filed.record != nullptr) filed.remove(links.filed);
  for (YcluiWordIndex::Link& longer : links.accepted) accepted.remove(longer);
  linksOf.erase(place);
}
