// Variable forms in texts, and the operations on variables by name.

#include <charconv>
#include <utility>

#include "foundation/YErr.h"
#include "foundation/YNumber.h"
#include "lex/YcluiLex.h"
#include "lex/YcluiLexBytes.h"
#include "lex/YcluiLexValues.h"
#include "lex/YcluiVariableTable.h"

namespace {

// Appends the name at `p` to `names` and returns the byte that ends it. A backslash before a byte
// of the name is dropped, and so is one before the byte that ends it.
char* ReadName(char* p, YString& names) {
  for (;; ++p) {
    if (*p == '\\') ++p;
    if (!YIsDigit(*p) && !YIsLetter(*p)) return p;
    names << *p;
  }
}

// The code for a form that has `byte` where a closing brace or bracket is expected.
YErrCode UnclosedCode(char byte) {
  return byte == '\0' ? YErrEndOfInput : YErrNoClosingBrace;
}

// Sets an element and extends the array as needed. Returns false and changes nothing when the index
// is too large for any array.
bool SetElement(YcluiVariable& array, std::uint32_t index, const YAttribValue& value) {
  if (index >= YcluiMostElements) return false;
  if (index < array.elementCount()) {
    *array.element(index) = value;
    return true;
  }
  YAttribValue kept(value);  // `value` may be an element of the array, which is about to move
  array.growTo(index + 1);
  *array.element(index) = std::move(kept);
  return true;
}

}  // namespace

char* YcluiLex::TouchVariable(char* text, YAttribValue& value) {
  YcluiVariableKind kind = YcluiVariableSimple;
  std::uint32_t index = 0;
  char* next = GetVariableLiteral(text, value, kind, index);
  if (next == nullptr) return nullptr;
  if (*next != '=') {
    const YAttribValue* found = valueOf(value, kind, index);
    if (found == nullptr) return failAt(text);
    if (!mayReplace(found->GetStringLength())) return refuse(text, value, YErrTextTooLong);
    value = *found;
    return StringifyValue(value) != 0 ? next : refuseKept(text, YErrNoText);
  }
  assignedName.assign(value.GetString());
  next = GetVarSettingLiteral(next, value);
  if (next == nullptr) return nullptr;
  YcluiVariable* known = usable() ? variableTable->findToSet(assignedName.buffer) : nullptr;
  const YWord set = known != nullptr ? SetVariable(value, *known, kind, index)
                                     : NewVariable(value, assignedName.buffer, kind, index);
  value.SetNull();
  return set != 0 ? next : failAt(text);
}

// The index of a form may contain another form, so `names` is used as a stack.
char* YcluiLex::GetVariableLiteral(char* text, YAttribValue& value, YcluiVariableKind& kind,
                                   std::uint32_t& index) {
  const std::uint32_t start = names.length;
  char* next = readForm(text, value, kind, index);
  if (next != nullptr) value.SetString(names.buffer + start);
  names.truncate(start);
  return next;
}

char* YcluiLex::readForm(char* text, YAttribValue& value, YcluiVariableKind& kind,
                         std::uint32_t& index) {
  kind = YcluiVariableSimple;
  char* next = ReadName(text + 2, names);
  if (*next != '}') return refuse(text, value, UnclosedCode(*next));
  if (*++next != '[') return next;
  next = readIndex(next + 1, value);
  if (next == nullptr) return nullptr;
  const std::uint32_t element = static_cast<std::uint32_t>(value.GetLong());
  if (*next != ']') return refuse(text, value, UnclosedCode(*next));
  kind = YcluiVariableArray;
  index = element;
  return next + 1;
}

char* YcluiLex::readIndex(char* text, YAttribValue& value) {
  if (!OpensVariable(text)) return GetInteger(text, value);
  if (indexNesting == YcluiMostIndexNesting) return refuse(text, value, YErrTooDeep);
  ++indexNesting;
  char* next = GetIntVariable(text, value);
  --indexNesting;
  return next;
}

char* YcluiLex::GetVarSettingLiteral(char* text, YAttribValue& value) {
  char* p = text + 1;
  if (*p == '\0') return refuse(p, value, YErrEndOfInput);
  if (OpensVariable(p)) return GetVariable(p, value);
  if (IsQuote(*p)) return GetStringLiteral(p, value, *p);
  if (YIsDigit(*p)) return GetFloat(p, value);
  YWord flag = 0;
  return GetUnquotedString(p, value, flag, "", argStops.buffer);
}

// Returns the value of the variable of that name, or null with a code. Makes `name` a null value.
const YAttribValue* YcluiLex::valueOf(YAttribValue& name, YcluiVariableKind kind,
                                      std::uint32_t index) {
  YcluiVariable* known = variable(name.GetString());
  name.SetNull();
  if (known == nullptr || known->kind() != kind) {
    cluiError(known == nullptr ? YErrNoSuchVariable : YErrWrongKind);
    return nullptr;
  }
  if (kind == YcluiVariableSimple) return known->valuePointer();
  const YAttribValue* found = known->element(index);
  if (found == nullptr) cluiError(YErrOutsideArray);
  return found;
}

YWord YcluiLex::GetVariable(YAttribValue& value, YcluiVariableKind kind, std::uint32_t index) {
  const YAttribValue* found = valueOf(value, kind, index);
  if (found == nullptr) return 0;
  value = *found;
  return 1;
}

char* YcluiLex::GetVariable(char* text, YAttribValue& value) {
  YcluiVariableKind kind = YcluiVariableSimple;
  std::uint32_t index = 0;
  char* next = GetVariableLiteral(text, value, kind, index);
  if (next == nullptr) return nullptr;
  return GetVariable(value, kind, index) != 0 ? next : failAt(text);
}

char* YcluiLex::GetStrVariable(char* text, YAttribValue& value) {
  char* next = GetVariable(text, value);
  if (next == nullptr) return nullptr;
  return StringifyValue(value) != 0 ? next : refuseKept(text, YErrNotANumber);
}

char* YcluiLex::GetFloatVariable(char* text, YAttribValue& value) {
  char* next = GetVariable(text, value);
  if (next == nullptr) return nullptr;
  if (value.tag == YAttribLong) value.SetDouble(value.GetLong());
  return value.tag == YAttribDouble ? next : refuseKept(text, YErrNotANumber);
}

char* YcluiLex::GetIntVariable(char* text, YAttribValue& value) {
  char* next = GetVariable(text, value);
  if (next == nullptr || value.tag == YAttribLong) return next;
  if (value.tag != YAttribDouble) return refuseKept(text, YErrNotANumber);
  return SetTruncated(value, value.GetDouble()) ? next : refuseKept(text, YErrOutOfRange);
}

YWord YcluiLex::NewVariable(YAttribValue& value, const char* name, YcluiVariableKind kind,
                            std::uint32_t index) {
  if (!usable()) return 0;
  if (kind == YcluiVariableArray && index >= YcluiMostElements) {
    value.SetNull();
    return cluiError(YErrOutsideArray);
  }
  YcluiVariable* made = kind == YcluiVariableArray ? variableTable->addArray(name, 0, nullptr)
                                                   : variableTable->addSimple(name, value);
  if (made == nullptr) {
    value.SetNull();
    return 0;
  }
  if (kind == YcluiVariableArray) SetElement(*made, index, value);
  return 1;
}

YWord YcluiLex::SetVariable(YAttribValue& value, YcluiVariable& variable, YcluiVariableKind kind,
                            std::uint32_t index) {
  if (variable.kind() != kind) {
    value.SetNull();
    return cluiError(YErrWrongKind);
  }
  if (kind == YcluiVariableSimple) {
    *variable.valuePointer() = value;
  } else if (!SetElement(variable, index, value)) {
    value.SetNull();
    return cluiError(YErrOutsideArray);
  }
  return 1;
}

YWord YcluiLex::addVariable(const char* name, const YAttribValue& value) {
  if (!usable()) return 0;
  YcluiVariable* known = variable(name);
  if (known == nullptr) return variableTable->addSimple(name, value) != nullptr ? 1 : 0;
  if (known->kind() != YcluiVariableSimple) return 0;
  *known->valuePointer() = value;
  return 1;
}

YWord YcluiLex::addVariable(const char* name, const YAttribValue& value, std::uint32_t index) {
  if (!usable()) return 0;
  YcluiVariable* array = variable(name);
  if (array != nullptr && array->kind() != YcluiVariableArray) return 0;
  if (index >= YcluiMostElements) return cluiWarning(YErrOutsideArray);
  if (array == nullptr) array = variableTable->addArray(name, 0, nullptr);
  return array != nullptr && SetElement(*array, index, value) ? 1 : 0;
}

YWord YcluiLex::addVariable(const char* name, std::uint32_t count, const YAttribValue* values) {
  if (!usable()) return 0;
  YcluiVariable* known = variable(name);
  if (known == nullptr) return variableTable->addArray(name, count, values) != nullptr ? 1 : 0;
  if (known->kind() != YcluiVariableArray) return 0;
  if (known->growTo(count) == 0) return cluiWarning(YErrOutsideArray);
  // `values` may be elements of this array only if it did not grow. Each of them is read before it
  // is set.
  for (std::uint32_t i = 0; i < count; ++i) *known->element(i) = values[i];
  return 1;
}

YcluiVariable* YcluiLex::variable(const char* name) const {
  return usable() ? variableTable->find(name) : nullptr;
}

const YDictionary* YcluiLex::variables() const {
  return variableTable;
}

YWord StringifyValue(YAttribValue& value) {
  char digits[YNumberRoom];
  switch (value.tag) {
    case YAttribLong:
      *std::to_chars(digits, digits + sizeof digits - 1, value.GetLong()).ptr = '\0';
      value.SetString(digits);
      return 1;
    case YAttribDouble:
      YPrintDouble(value.GetDouble(), digits);
      value.SetString(digits);
      return 1;
    default:
      return value.tag == YAttribString ? 1 : 0;
  }
}
