// The records of the variable table: what every variable has in common.

#ifndef LEX_YCLUIVARIABLE_H_
#define LEX_YCLUIVARIABLE_H_

#include "foundation/YAttribValue.h"
#include "foundation/YTypes.h"
#include "foundation/YcluiLimits.h"
#include "platform/containers/YDictionary.h"

enum YcluiVariableKind : std::uint32_t {
  YcluiVariableSimple = 1,
  YcluiVariableArray = 2,
};

// A named variable. In the two slots of YAssoc the key is the name, in lower case, and the value
// the kind, which never changes. Records belong to the YcluiVariableTable of a lexer and live as
// long as it does. A record whose name found no memory (YErrNoMemory) has the empty name.
class YQRT_API YcluiVariable : public YAssoc {
 public:
  // A null name gives the empty text.
  YcluiVariable(const char* name, YcluiVariableKind kind);
  YcluiVariable(const YcluiVariable&) = delete;
  YcluiVariable& operator=(const YcluiVariable&) = delete;
  ~YcluiVariable() override;

  const char* name() const;
  YcluiVariableKind kind() const {
    return static_cast<YcluiVariableKind>(reinterpret_cast<std::uintptr_t>(value));
  }

  unsigned long hashKey() const override;
  // 1 when the name is that of `other`, or the text `k`. A null text counts as the empty one, and
  // case counts.
  YWord equals(const YAssoc* other) const override;
  YWord equalsKey(const void* k) const override;
  YWord matches(const char* text) const { return equalsKey(text); }

  // The value of a simple variable, null for an array.
  virtual YAttribValue* valuePointer();
  // The elements of an array: how many, one of them (null when there is none at that index), the
  // first of them in a row (null when there are none). Good until the array grows.
  virtual std::uint32_t elementCount() const;
  virtual YAttribValue* element(std::uint32_t index);
  virtual YAttribValue* elements();
  // Makes the array at least `n` long, with null values behind the present elements. Answers 0 and
  // changes nothing for an `n` above YcluiMostElements and for a simple variable. Growing by one
  // again and again costs no more than growing at once.
  virtual YWord growTo(std::uint32_t n);
};

#endif  // LEX_YCLUIVARIABLE_H_
