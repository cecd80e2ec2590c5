#include "lex/YcluiPresentTimeVariable.h"

#include <cstring>
#include <ctime>

YcluiPresentTimeVariable::YcluiPresentTimeVariable() : YcluiSimpleVariable("presentTime") {}

YAttribValue* YcluiPresentTimeVariable::valuePointer() {
  char text[64] = "";
  const std::time_t now = std::time(nullptr);
  ctime_r(&now, text);
  text[std::strcspn(text, "\n")] = '\0';
  YAttribValue* present = YcluiSimpleVariable::valuePointer();
  present->SetString(text);
  return present;
}
