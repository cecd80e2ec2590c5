// The base class of the records of the variable table.

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

// A named variable. Of the two fields of YAssoc, the key is the name, in lower case, and the value
// is the kind, which never changes. The YcluiVariableTable of a lexer owns the records until it is
// destroyed. When there is no memory for the name (YErrNoMemory), it is empty.
class YQRT_API YcluiVariable : public YAssoc {
 public:
  // A null name is treated as empty.
  YcluiVariable(const char* name, YcluiVariableKind kind);
  YcluiVariable(const YcluiVariable&) = delete;
  YcluiVariable& operator=(const YcluiVariable&) = delete;
  ~YcluiVariable() override;

  const char* name() const;
  YcluiVariableKind kind() const {
    return static_cast<YcluiVariableKind>(reinterpret_cast<std::uintptr_t>(value));
  }

  unsigned long hashKey() const override;
  // Return 1 when the name equals that of `other`, or the text `k`. A null text is treated as
  // empty. The comparison is case-sensitive.
  YWord equals(const YAssoc* other) const override;
  YWord equalsKey(const void* k) const override;
  YWord matches(const char* text) const { return equalsKey(text); }

  // The value of a simple variable, null for an array.
  virtual YAttribValue* valuePointer();
  // The elements of an array: their number, the element at an index (null when there is none), and
  // the first of the contiguous elements (null when there are none). Pointers are valid until the
  // array grows.
  virtual std::uint32_t elementCount() const;
  virtual YAttribValue* element(std::uint32_t index);
  virtual YAttribValue* elements();
  // Extends the array to at least `n` elements; new ones are null values. Returns 0 and changes
  // nothing when `n` is above YcluiMostElements and for a simple variable. Growing repeatedly by
  // one takes amortised constant time.
  virtual YWord growTo(std::uint32_t n);
};

#endif  // LEX_YCLUIVARIABLE_H_
