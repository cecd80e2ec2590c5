// The word dictionary of a lexer.

#ifndef LEX_YCLUIWORDTABLE_H_
#define LEX_YCLUIWORDTABLE_H_

#include <string_view>

#include "foundation/YString.h"
#include "foundation/YTypes.h"
#include "lex/YcluiKeyword.h"
#include "lex/YcluiWordIndex.h"
#include "platform/containers/YDictionary.h"

// Keywords and aliases in one name space. Owns its records; names are kept in lower case.
//
// A name is looked up in two stages. The first folds its case and finds the word, first added
// first, that is filed under exactly that text: under its shortest form if it declares one, else
// under its name. The second takes the name as it was given and finds the word, first added first,
// that accepts it. A shortest form of a longer word can thus win over the full name of a shorter
// one, and two words that share an accepted form are no error. Adding and deleting pass their name
// to the same look-up.
//
// Every operation costs the length of the name, whatever the size of the table. Adding and deleting
// a word costs the logarithm of their number more for a form, or an id, that many words share.
class YcluiWordTable final : public YDictionary {
 public:
  // The number that the next word without an id of its own gets.
  explicit YcluiWordTable(std::uint32_t firstId);
  YcluiWordTable(const YcluiWordTable&) = delete;
  YcluiWordTable& operator=(const YcluiWordTable&) = delete;
  ~YcluiWordTable();

  // Adds a keyword that answers to its name and, unless `abbreviation` is null, to every prefix of
  // the name that begins with the abbreviation; a keyword whose abbreviation is no prefix of its
  // name is never found. With `id` 0 the keyword gets the next automatic number; an id is cut to 24
  // bits, and nothing checks that it is unique. Answers the id, or 0: with YErrNameExists when the
  // name is found already, with YErrNoMemory when there is no memory, and without a code when only
  // the case of the name kept it from being found and a word of the same abbreviation accepts it.
  std::uint32_t addKeyword(const char* name, const char* abbreviation, std::uint32_t id);
  // The same with `count` declared arguments, whose types are copied; null types, like a count
  // below 1, declare none.
  std::uint32_t addKeyword(const char* name, int count, const YcluiValueType* types,
                           std::uint32_t id);
  // Removes a keyword. 0 with YErrNoSuchWord when the name is not found or is an alias.
  YWord delKeyword(const char* name);

  // Adds an alias and answers its id, YcluiIdAlias. 0 with YErrIsAlias or YErrIsWord when the name
  // is found already, with YErrNoMemory when there is no memory.
  std::uint32_t addAlias(const char* name, const char* text);
  // Removes an alias. 0 with YErrNoSuchAlias when the name is not found or is no alias.
  YWord delAlias(const char* name);

  // The word that the two stages find, or null.
  YcluiKeyword* find(const char* key) const;
  // The same for the key in lower case.
  YcluiKeyword* findInAnyCase(std::string_view key) const;
  // The name of the first added word of that id, or null.
  const char* keyword(std::uint32_t id) const;
  // How often words were added and removed.
  std::uint64_t changes() const { return changeCount; }

  // Records are filed by their address, so that adding one does not ask the others. `search` finds
  // by what is in the probe all the same, as in any set of YAssoc: the word, first added first,
  // that has the hash value of the probe and accepts its name.
  YWord compare(const void* a, const void* b) const override;
  unsigned int hashValue(const void* item) const override;
  void* search(const void* probe) const override;

 private:
  std::uint32_t nextId;
  std::uint64_t changeCount = 0;
  mutable YString folded;                    // the key of the present find
  YcluiWordIndex::Records records{nullptr};  // by number; null for 0 and for what was deleted
  YcluiWordIndex ids;                        // the words by id
  YcluiWordIndex forms;                      // by each text that they are found under

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
