// The base class of the records of the word dictionary.

#ifndef LEX_YCLUIKEYWORD_H_
#define LEX_YCLUIKEYWORD_H_

#include <cstddef>
#include <string_view>

#include "foundation/YPooled.h"
#include "foundation/YTypes.h"
#include "foundation/YcluiLimits.h"
#include "lex/YcluiToken.h"
#include "platform/containers/YDictionary.h"

// A keyword: a name in lower case, an id of 24 bits and a type. Of the two fields of YAssoc, the
// key is the name and the value is the id with the type in bits 24 to 27.
//
// The YcluiWordTable of a lexer owns the records until their word is deleted; a token copies what
// it needs. Records of plain words, of which there may be thousands, have the size of this class
// and come from its pool. A short name is stored in the record, a longer one is allocated. When
// there is no memory for it (YErrNoMemory), the name is empty.
class YQRT_API YcluiKeyword : public YAssoc, public YPooled<YcluiKeyword> {
 public:
  // A null name is treated as empty. The second form reserves `bufferSize` bytes, at least the
  // length of the name and 1, for more text after the name.
  YcluiKeyword(const char* name, std::uint32_t id, YcluiTokenType type);
  YcluiKeyword(const char* name, std::size_t bufferSize, std::uint32_t id, YcluiTokenType type);
  YcluiKeyword(const YcluiKeyword&) = delete;
  YcluiKeyword& operator=(const YcluiKeyword&) = delete;
  ~YcluiKeyword() override;

  std::string_view nameView() const { return {name(), lengthOfName}; }
  const char* name() const { return key == nullptr ? "" : static_cast<const char*>(key); }
  std::uint32_t id() const { return idWord() & YcluiIdMask; }
  YcluiTokenType type() const { return static_cast<YcluiTokenType>((idWord() >> 24) & 15); }
  // The length of the name, and that of the shortest text by which the word is found: its
  // abbreviation if it has one, else the name.
  std::uint32_t nameLength() const { return lengthOfName; }
  std::uint32_t shortestLength() const { return lengthOfShortest; }
  // The number of the word in its table: words that were added earlier have smaller numbers. 0
  // before the word is added.
  std::uint32_t number() const { return numberInTable; }
  void setNumber(std::uint32_t number) { numberInTable = number; }

  // The hash of the shortest text by which the word is found.
  unsigned long hashKey() const override;
  // Return 1 when the name of `other`, or the text `k`, is an accepted form of the word. A null
  // text is treated as empty. The comparison is case-sensitive.
  YWord equals(const YAssoc* other) const override;
  YWord equalsKey(const void* k) const override;
  YWord matches(const char* text) const { return equalsKey(text); }

  // The declared arguments: how many, the type of one (YcluiValueNone when there is none at that
  // index), all types (null when there are none).
  virtual int argCount() const;
  virtual YcluiValueType argType(int index) const;
  virtual const YcluiValueType* argTypes() const;
  // The text of an alias, null for an empty one and for any other word.
  virtual const char* aliasText() const;
  // The shortest form, null when only the full name is accepted.
  virtual const char* abbreviation() const;

 protected:
  // Where the name is kept, null when there was no memory.
  char* nameBuffer() const { return static_cast<char*>(key); }
  // Records that an abbreviation of that length follows the name in the buffer.
  void setAbbreviated(std::size_t length) {
    lengthOfShortest = static_cast<std::uint32_t>(length) & 0x7FFFFFFF;
    abbreviated = 1;
  }
  bool isAbbreviated() const { return abbreviated != 0; }

 private:
  std::uint32_t lengthOfName = 0;
  std::uint32_t lengthOfShortest : 31;
  std::uint32_t abbreviated : 1;
  char shortName[24];  // holds the name, and its abbreviation, when they fit
  std::uint32_t numberInTable = 0;

  std::uint32_t idWord() const {
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(value));
  }
};

#endif  // LEX_YCLUIKEYWORD_H_
