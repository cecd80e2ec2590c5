// The word dictionary of a lexer.

#ifndef LEX_YCLUIWORDTABLE_H_
#define LEX_YCLUIWORDTABLE_H_

#include <string_view>

#include "foundation/YString.h"
#include "foundation/YTypes.h"
#include "lex/YcluiKeyword.h"
#include "lex/YcluiWordIndex.h"
#include "platform/containers/YDictionary.h"

// Keywords and aliases share one name space. Owns its records. Names are stored in lower case.
//
// A name is looked up in two stages. The first folds its case and finds the first added word whose
// shortest form is exactly that text; the shortest form is the abbreviation if one is declared,
// else the name. The second stage finds the first added word that accepts the name as given, in its
// case. So the abbreviation of a longer word can hide the full name of a shorter one, and two words
// that share an accepted form are no error. Adding and deleting use the same look-up.
//
// Every operation is linear in the length of the name, whatever the size of the table. For a form
// or an id that many words share, adding and deleting also take logarithmic time in their number.
class YcluiWordTable final : public YDictionary {
 public:
  // `firstId` is the first automatic id.
  explicit YcluiWordTable(std::uint32_t firstId);
  YcluiWordTable(const YcluiWordTable&) = delete;
  YcluiWordTable& operator=(const YcluiWordTable&) = delete;
  ~YcluiWordTable();

  // Adds a keyword that is found by its name and, unless `abbreviation` is null, by every prefix of
  // the name that starts with the abbreviation; a keyword whose abbreviation is no prefix of its
  // name is never found. With `id` 0 the keyword gets the next automatic id. An id is cut to 24
  // bits and need not be unique. Returns the id, or 0: with YErrNameExists when the name is already
  // found, with YErrNoMemory when there is no memory, and without a code when a word of the same
  // abbreviation accepts the name in lower case although the name as given was not found.
  std::uint32_t addKeyword(const char* name, const char* abbreviation, std::uint32_t id);
  // Adds a keyword with `count` declared arguments. The types are copied; null types or a count
  // below 1 declare none.
  std::uint32_t addKeyword(const char* name, int count, const YcluiValueType* types,
                           std::uint32_t id);
  // Removes a keyword. Returns 0 with YErrNoSuchWord when the name is not found or is an alias.
  YWord delKeyword(const char* name);

  // Adds an alias and returns its id, YcluiIdAlias. Returns 0 with YErrIsAlias or YErrIsWord when
  // the name is already found, and with YErrNoMemory when there is no memory.
  std::uint32_t addAlias(const char* name, const char* text);
  // Removes an alias. Returns 0 with YErrNoSuchAlias when the name is not found or is no alias.
  YWord delAlias(const char* name);

  // The word that the two stages find, or null. A null key is treated as empty.
  YcluiKeyword* find(const char* key) const;
  // Like `find`, with the case of the key folded for both stages.
  YcluiKeyword* findInAnyCase(std::string_view key) const;
  // The name of the first added word of that id, or null.
  const char* keyword(std::uint32_t id) const;
  // The number of words added and removed so far. It changes with every change of the table.
  std::uint64_t changes() const { return changeCount; }

  // The set compares records by address, so that adding one does not compare it with others.
  // `search` still finds by content, as in any set of YAssoc: the first added word that has the
  // hash value of the probe and accepts its name.
  YWord compare(const void* a, const void* b) const override;
  unsigned int hashValue(const void* item) const override;
  void* search(const void* probe) const override;

 private:
  std::uint32_t nextId;
  std::uint64_t changeCount = 0;
  mutable YString folded;                    // the key of the current `find` in lower case
  YcluiWordIndex::Records records{nullptr};  // by number; null for 0 and for deleted words
  YcluiWordIndex ids;                        // the words by id
  YcluiWordIndex forms;                      // the words by each text that finds them

  std::uint64_t fold(std::string_view key) const;
  YcluiKeyword* findFolded(std::uint64_t hash, bool longerToo) const;
  std::uint32_t addWord(YcluiKeyword* record);
  bool keep(YcluiKeyword* record);
  YWord remove(YcluiKeyword* record);
  void link(YcluiKeyword* record);
  void numberAnew();
  void unlink(YcluiKeyword* record);
};

#endif  // LEX_YCLUIWORDTABLE_H_
