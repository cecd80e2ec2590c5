// The scanners of single literals.
//
// A string is collected in runs of bytes that stand for themselves: `run` is where the present one
// begins, and a backslash or a variable form ends it.

#include "foundation/YKanji.h"
#include "foundation/YNumber.h"
#include "lex/YcluiLex.h"
#include "lex/YcluiLexBytes.h"
#include "lex/YcluiLexValues.h"

namespace {

void Collect(YString& collected, const char* run, const char* end) {
  collected.concat(run, static_cast<unsigned long>(end - run));
}

// Reads a number, or answers null.
char* ReadNumber(char* text, double& number) {
  const char* end = YReadDecimal(text, number);
  return end == nullptr ? nullptr : text + (end - text);
}

}  // namespace

char* YcluiLex::GetUnquotedString(char* text, YAttribValue& value, YWord& flag,
                                  const char* introducers, const char* stops) {
  const YcluiByteSet introduces(introducers);
  const YcluiByteSet stop(stops);
  flag = 0;
  collected.truncate(0);
  char* run = text;
  char* p = text;
  while (*p != '\0' && flag == 0) {
    if (stop.has(*p) || IsWhiteSpace(*p) || OpensVariable(p)) break;
    if (IsKanjiStart(p) != 0) {
      if (p[1] == '\0') return Refuse(value, YErrEndOfInput);
      p += 2;
    } else if (introduces.has(*p)) {
      flag = 1;
      ++p;
    } else if (*p == '\\') {
      if (p[1] == '\0') return Refuse(value, YErrEndOfInput);
      Collect(collected, run, p);
      run = p + 1;
      p += 2;
    } else {
      ++p;
    }
  }
  Collect(collected, run, p);
  value.SetString(collected.buffer, collected.length);
  return p;
}

char* YcluiLex::GetStringLiteral(char* text, YAttribValue& value, char quote) {
  value.SetNull();
  collected.truncate(0);
  char* run = text + 1;
  char* p = run;
  while (*p != '\0' && *p != quote) {
    if (IsKanjiStart(p) != 0) {
      p += p[1] == '\0' ? 1 : 2;
    } else if (OpensVariable(p)) {
      Collect(collected, run, p);
      p = GetStrVariable(p, value);
      if (p == nullptr) return nullptr;
      collected.concat(value.GetString());
      run = p;
    } else if (*p == '\\') {
      Collect(collected, run, p);
      run = p + 1;
      p += p[1] == '\0' ? 1 : 2;
    } else {
      ++p;
    }
  }
  if (*p == '\0') return Refuse(value, YErrEndOfInput);
  Collect(collected, run, p);
  value.SetString(collected.buffer, collected.length);
  return p + 1;
}

char* YcluiLex::GetFloat(char* text, YAttribValue& value) {
  double number = 0;
  char* end = ReadNumber(text, number);
  if (end == nullptr) return Refuse(value, YErrNotANumber);
  value.SetDouble(number);
  return end;
}

char* YcluiLex::GetInteger(char* text, YAttribValue& value) {
  double number = 0;
  char* end = ReadNumber(text, number);
  if (end == nullptr) return Refuse(value, YErrNotANumber);
  return SetCutToLong(value, number) ? end : Refuse(value, YErrOutOfRange);
}

char* YcluiLex::GetPoint(char* text, YAttribValue& value) {
  YAttribValue x;
  YAttribValue y;
  char* end = GetInteger(text, x);
  if (end != nullptr) end = SkipWhiteSpace(end);
  const bool separated = end != nullptr && IsIn(argSeparators.buffer, *end);
  end = separated ? GetInteger(end + 1, y) : nullptr;
  if (end == nullptr) {
    value.SetNull();
    cluiWarning(YErrBadPoint);
    return nullptr;
  }
  value.SetPoint(x.GetLong(), y.GetLong());
  return end;
}
