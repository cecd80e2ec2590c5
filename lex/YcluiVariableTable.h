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
  YcluiVariableTable(const YcluiVariableTable&) = delete;
  YcluiVariableTable& operator=(const YcluiVariableTable&) = delete;
  ~YcluiVariableTable();

  // The variable of that name, or null. Linear in the length of the name.
  YcluiVariable* find(const char* key) const;

  // Create and return a variable. Return null with YErrNameExists when there is one of that name,
  // with YErrNoMemory when there is no memory, and with YErrOutsideArray for more than
  // YcluiMostElements values. `values` may be null when `count` is 0.
  YcluiVariable* addSimple(const char* name, const YAttribValue& value);
  YcluiVariable* addArray(const char* name, std::uint32_t count, const YAttribValue* values);

  unsigned int hashValue(const void* item) const override;

 private:
  mutable YString folded;  // the key of the current `find` in lower case

  YcluiVariable* keep(YcluiVariable* record);
};

#endif  // LEX_YCLUIVARIABLETABLE_H_
