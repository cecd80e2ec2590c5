// The variables of a lexer.

#ifndef LEX_YCLUIVARIABLETABLE_H_
#define LEX_YCLUIVARIABLETABLE_H_

#include "foundation/YString.h"
#include "foundation/YTypes.h"
#include "lex/YcluiVariable.h"
#include "platform/containers/YDictionary.h"

// Owns its records. A new table contains one variable, "presentTime". Variables are never removed.
// Names are stored in lower case and found in any case.
class YcluiVariableTable final : public YDictionary {
 public:
  YcluiVariableTable();
  // A table that finds its own variables first, then those of the other table, which must outlive
  // it.
  explicit YcluiVariableTable(const YcluiVariableTable* base);
  YcluiVariableTable(const YcluiVariableTable&) = delete;
  YcluiVariableTable& operator=(const YcluiVariableTable&) = delete;
  ~YcluiVariableTable();

  // The variable of that name, or null. Linear in the length of the name.
  YcluiVariable* find(const char* key) const;
  // The same for one whose value is to change: a variable of the other table is copied first.
  YcluiVariable* findToSet(const char* key);
  // Removes the own variables but "presentTime".
  void discardOwn();

  // Create and return a variable. Return null with YErrNameExists when there is one of that name,
  // with YErrNoMemory when there is no memory, and with YErrOutsideArray for more than
  // YcluiMostElements values. `values` may be null when `count` is 0.
  YcluiVariable* addSimple(const char* name, const YAttribValue& value);
  YcluiVariable* addArray(const char* name, std::uint32_t count, const YAttribValue* values);

  unsigned int hashValue(const void* item) const override;

 private:
  const YcluiVariableTable* base_ = nullptr;
  mutable YString folded;  // the key of the current `find` in lower case

  YcluiVariable* findFolded(const char* name, unsigned int hash) const;
  YcluiVariable* keep(YcluiVariable* record);
};

#endif  // LEX_YCLUIVARIABLETABLE_H_
