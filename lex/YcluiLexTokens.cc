// Tokens and their arguments.

#include "foundation/YErr.h"
#include "lex/YcluiAlias.h"
#include "lex/YcluiLex.h"
#include "lex/YcluiLexBytes.h"
#include "lex/YcluiWordTable.h"

YWord YcluiLex::getNextToken(YcluiToken& token) {
  faultOffset_ = wordEnd_ = -1;
  if (more() == 0) return 0;
  tokenOffset_ = cursorOffset();
  failed = cursor;
  if (readToken(token)) return 1;
  faultOffset_ = failed - lineBuffer.buffer;
  return 0;
}

bool YcluiLex::readToken(YcluiToken& token) {
  if (token.underConstruction() != 0) {
    return getArgumentsOf(token, keyword(token.string()));
  }
  expanded = 0;
  afterSeparator = false;
  argumentIndex = 0;
  firstSpan = lastSpan = 0;
  if (bufferStack.isEmpty() != 0) beginExpansion();
  if (OpensVariable(cursor)) return getVariableToken(token);

  bool announces = false;
  std::string_view text;
  if (isDelimiter(*cursor)) {
    text = {cursor, 1};
    ++cursor;
  } else {
    cursor = scanWord(cursor, text, announces, argIntroducers.buffer, delimiters.buffer);
    if (cursor == nullptr) return cluiError(YErrEndOfInput) != 0;
  }
  wordEnd_ = cursor - lineBuffer.buffer;

  const YcluiKeyword* record = wordTable->findInAnyCase(text);
  if (record == nullptr) return getUnknownWord(token, text, announces);
  token = *record;
  if (record->type() == YcluiTokenArgKeyword) return getArgumentsOf(token, record);
  if (record->type() == YcluiTokenAlias) {
    const std::uint32_t length = static_cast<const YcluiAlias*>(record)->aliasTextLength();
    if (!mayReplace(length)) return cluiError(YErrTextTooLong) != 0;
    word.SetString(record->aliasText());
    token.setValue(word, 1);
  }
  return true;
}

bool YcluiLex::mayReplace(std::size_t length) {
  if (length > YcluiLongestExpansion - replaced) return false;
  replaced += length;
  return true;
}

bool YcluiLex::getVariableToken(YcluiToken& token) {
  cursor = TouchVariable(cursor, word);
  if (cursor == nullptr) return false;
  wordEnd_ = cursor - lineBuffer.buffer;
  if (word.tag == YAttribString) {
    token.setType(YcluiTokenAlias);
    token.setID(YcluiIdAlias);
    token.setValue(word, 1);
  } else {
    token.setID(YcluiIdVariable);
  }
  return true;
}

// A word that is not in the dictionary. Type and other arguments of the token stay as they were.
bool YcluiLex::getUnknownWord(YcluiToken& token, std::string_view text, bool announces) {
  token.setArg0(text);
  if (!announces) {
    token.setID(YcluiIdNone);
    return false;
  }
  token.setID(YcluiIdFreeWord);
  token.setNeedMore(1);
  return getArgumentsOf(token, nullptr);
}

// Reads the arguments that the word declares. A word that is not, or no longer, in the dictionary
// (null) declares none.
bool YcluiLex::getArgumentsOf(YcluiToken& token, const YcluiKeyword* record) {
  const int wanted = record == nullptr ? 0 : record->argCount();
  const YcluiValueType* types = record == nullptr ? nullptr : record->argTypes();
  const int count = getArguments(token, static_cast<std::uint32_t>(wanted), types);
  if (count < 0) return false;
  token.setArgC(static_cast<std::uint32_t>(count) + 1);
  return true;
}

int YcluiLex::getArguments(YcluiToken& token, std::uint32_t wanted, const YcluiValueType* types) {
  const int declared = static_cast<int>(wanted);
  int n = declared != 0 ? token.argc() - 1 : 0;
  bool done = declared <= n;
  argument.SetNull();  // remains the value of an argument for whose type nothing is read
  for (;;) {
    failed = cursor;
    argumentIndex = n + 1;
    if (more() == 0) {
      if (done) return -1;
      token.setNeedMore(1);
      return n;
    }
    noteArgument();
    if (!readArg(argument, done ? YcluiValueString : types[n])) return -1;
    argumentSpans[static_cast<std::size_t>(n)].end = cursor - lineBuffer.buffer;
    token.setValue(argument, ++n);
    afterSeparator = false;
    if (declared <= n) {
      token.setNeedMore(0);
      done = true;
    }
    cursor = SkipWhiteSpace(cursor);
    if (cursor == nullptr || !IsIn(argSeparators.buffer, *cursor)) break;
    ++cursor;
    afterSeparator = true;
  }
  if (!done) token.setNeedMore(1);
  return n;
}

void YcluiLex::noteArgument() {
  const std::size_t index = static_cast<std::size_t>(argumentIndex);
  if (argumentSpans.size() < index) argumentSpans.resize(2 * index);
  const long begin = cursor - lineBuffer.buffer;
  argumentSpans[index - 1] = {begin, begin};
  if (firstSpan == 0 || argumentIndex < firstSpan) firstSpan = argumentIndex;
  lastSpan = argumentIndex;
}

YWord YcluiLex::getNextArg(YAttribValue& value, YcluiValueType type) {
  return more() != 0 && readArg(value, type) ? 1 : 0;
}

// A string argument that is a variable form.
char* YcluiLex::readStrVariable(YAttribValue& value) {
  char* next = GetStrVariable(cursor, value);
  if (next == nullptr) return nullptr;
  const std::uint32_t length = value.GetStringLength();
  if (!canExpand(length)) return refuse(cursor, value, YErrTextTooLong);
  expanded += length;
  return next;
}

// Reads an argument whose first byte is at the cursor.
bool YcluiLex::readArg(YAttribValue& value, YcluiValueType type) {
  const bool variable = OpensVariable(cursor);
  YWord flag = 0;
  switch (type) {
    case YcluiValueString:
      if (IsQuote(*cursor)) {
        cursor = GetStringLiteral(cursor, value, *cursor);
      } else if (variable) {
        cursor = readStrVariable(value);
      } else {
        cursor = GetUnquotedString(cursor, value, flag, "", argStops.buffer);
      }
      break;
    case YcluiValueFloat:
      cursor = variable ? GetFloatVariable(cursor, value) : GetFloat(cursor, value);
      break;
    case YcluiValueInteger:
      cursor = variable ? GetIntVariable(cursor, value) : GetInteger(cursor, value);
      break;
    case YcluiValuePoint:
      cursor = GetPoint(cursor, value);
      break;
    default:
      break;
  }
  return cursor != nullptr;
}
