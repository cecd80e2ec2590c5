#include "lex/YcluiPresentTimeVariable.h"

#include <cstring>
#include <ctime>

YcluiPresentTimeVariable::YcluiPresentTimeVariable() : YcluiSimpleVariable("presentTime") {}

YAttribValue* YcluiPresentTimeVariable::valuePointer() {
  static char text[64];
  const std::time_t now = std::time(nullptr);
  const char* formatted = std::ctime(&now);
  std::strncpy(text, formatted == nullptr ? "" : formatted, sizeof text - 1);
  text[std::strcspn(text, "\n")] = '\0';
  YAttribValue* present = YcluiSimpleVariable::valuePointer();
  present->SetString(text);
  return present;
}
