// The scanners of single literals.
//
// A string consists of runs of bytes that are copied unchanged: `run` is the start of the current
// one, and a backslash or a variable form ends it. Most strings are a single run, which is used in
// place; several runs are joined in `collected`.

#include "foundation/YErr.h"
#include "foundation/YKanji.h"
#include "foundation/YNumber.h"
#include "lex/YcluiLex.h"
#include "lex/YcluiLexBytes.h"
#include "lex/YcluiLexValues.h"

namespace {

// For an encoding without double-byte characters, and for one that has them.
constexpr YcluiByteSet QuotedBytes[] = {QuotedSpecials(false), QuotedSpecials(true)};
constexpr YcluiByteSet WordBytes[] = {WordSpecials(false), WordSpecials(true)};

void Collect(YString& collected, const char* run, const char* end) {
  collected.concat(run, static_cast<unsigned long>(end - run));
}

// Returns the end of the number at `text`, or null.
char* ReadNumber(char* text, double& number) {
  const char* end = YReadDecimal(text, number);
  return end == nullptr ? nullptr : text + (end - text);
}

}  // namespace

char* YcluiLex::failAt(char* literal) {
  failed = literal;
  return nullptr;
}

char* YcluiLex::refuse(char* literal, YAttribValue& value, YErrCode code) {
  value.SetNull();
  return refuseKept(literal, code);
}

char* YcluiLex::refuseKept(char* literal, YErrCode code) {
  cluiError(code);
  return failAt(literal);
}

// Returns the string whose last run is given.
std::string_view YcluiLex::collect(const char* run, const char* end) {
  if (collected.length == 0) return {run, static_cast<std::size_t>(end - run)};
  Collect(collected, run, end);
  return {collected.buffer, collected.length};
}

char* YcluiLex::scanWord(char* text, std::string_view& scanned, bool& announces,
                         const char* introducers, const char* stops) {
  YcluiByteSet special = WordBytes[YEncoding::IsDoubleByte() ? 1 : 0];
  special.add(introducers);
  special.add(stops);
  announces = false;
  collected.truncate(0);
  char* run = text;
  char* p = text;
  while (!announces) {
    p = special.skipOthers(p);
    if (*p == '\0' || IsIn(stops, *p) || YIsWhiteSpace(*p) || OpensVariable(p)) break;
    if (IsKanjiStart(p) != 0) {
      if (p[1] == '\0') return nullptr;
      p += 2;
    } else if (IsIn(introducers, *p)) {
      announces = true;
      ++p;
    } else if (*p == '\\') {
      if (p[1] == '\0') return nullptr;
      Collect(collected, run, p);
      run = p + 1;
      p += 2;
    } else {
      ++p;
    }
  }
  scanned = collect(run, p);
  return p;
}

char* YcluiLex::GetUnquotedString(char* text, YAttribValue& value, YWord& flag,
                                  const char* introducers, const char* stops) {
  std::string_view scanned;
  bool announces = false;
  char* next = scanWord(text, scanned, announces, introducers, stops);
  flag = announces ? 1 : 0;
  if (next == nullptr) return refuse(text, value, YErrEndOfInput);
  value.SetString(scanned.data(), scanned.size());
  return next;
}

char* YcluiLex::GetStringLiteral(char* text, YAttribValue& value, char quote) {
  YcluiByteSet special = QuotedBytes[YEncoding::IsDoubleByte() ? 1 : 0];
  special.add(quote);
  value.SetNull();
  collected.truncate(0);
  bool expands = false;
  char* run = text + 1;
  char* p = run;
  for (p = special.skipOthers(p); *p != '\0' && *p != quote; p = special.skipOthers(p)) {
    if (IsKanjiStart(p) != 0) {
      p += p[1] == '\0' ? 1 : 2;
    } else if (OpensVariable(p)) {
      Collect(collected, run, p);
      p = GetStrVariable(p, value);
      if (p == nullptr) return nullptr;
      const std::size_t length = std::size_t{collected.length} + value.GetStringLength();
      if (!canExpand(length)) return refuse(text, value, YErrTextTooLong);
      collected.concat(value.GetString());
      expands = true;
      run = p;
    } else if (*p == '\\') {
      Collect(collected, run, p);
      run = p + 1;
      p += p[1] == '\0' ? 1 : 2;
    } else {
      ++p;
    }
  }
  if (*p == '\0') return refuse(text, value, YErrEndOfInput);
  if (expands) {
    const std::size_t length = collected.length + static_cast<std::size_t>(p - run);
    if (!canExpand(length)) return refuse(text, value, YErrTextTooLong);
    expanded += length;
  }
  const std::string_view scanned = collect(run, p);
  value.SetString(scanned.data(), scanned.size());
  return p + 1;
}

char* YcluiLex::GetFloat(char* text, YAttribValue& value) {
  double number = 0;
  char* end = ReadNumber(text, number);
  if (end == nullptr) return refuse(text, value, YErrNotANumber);
  value.SetDouble(number);
  return end;
}

char* YcluiLex::GetInteger(char* text, YAttribValue& value) {
  double number = 0;
  char* end = ReadNumber(text, number);
  if (end == nullptr) return refuse(text, value, YErrNotANumber);
  return SetTruncated(value, number) ? end : refuse(text, value, YErrOutOfRange);
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
    return failAt(text);
  }
  value.SetPoint(x.GetLong(), y.GetLong());
  return end;
}
