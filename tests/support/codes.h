// The error codes under the names that tests use.

#ifndef TESTS_SUPPORT_CODES_H_
#define TESTS_SUPPORT_CODES_H_

#include <map>
#include <string>

#include "foundation/YErr.h"

// "number", or "number/warning" with a severity other than YErrError.
inline std::string CodeText(unsigned code, unsigned severity = YErrError) {
  static const std::map<unsigned, const char*> names = {
      {YErrNoMemory, "no-memory"},
      {YErrEndOfInput, "end-of-input"},
      {YErrNotANumber, "number"},
      {YErrTooDeep, "too-deep"},
      {YErrBadPoint, "point"},
      {YErrNoSuchWord, "no-word"},
      {YErrOutsideArray, "outside-array"},
      {YErrNoSyntax, "no-syntax"},
      {YErrNotAlive, "not-alive"},
      {YErrBadFormat, "format"},
      {YErrNameExists, "name-exists"},
      {YErrOutOfRange, "out-of-range"},
      {YErrNoWordTable, "no-word-table"},
      {YErrAmbiguous, "ambiguous"},
      {YErrTextTooLong, "too-long"},
      {YErrEncodingIsFixed, "encoding-fixed"},
      {YErrOtherEncoding, "other-encoding"},
      {YErrBadTokenArgument, "token-argument"},
      {YErrBadSyntaxArgument, "syntax-argument"},
      {YErrBadTokenParser, "token-parser"},
      {YErrIsAlias, "is-alias"},
      {YErrIsWord, "is-word"},
      {YErrNoSuchAlias, "no-alias"},
      {YErrNotDetached, "not-detached"},
      {YErrFileIsPlayed, "file-is-played"},
      {YErrFileIsLogged, "file-is-logged"},
      {YErrLogIsOpen, "log-is-open"},
      {YErrNotOpened, "not-opened"},
      {YErrNotClosed, "not-closed"},
      {YErrInterruptRefused, "interrupt"},
      {YErrNoVariableTable, "no-variable-table"},
      {YErrNoText, "no-text"},
      {YErrWrongKind, "kind"},
      {YErrNoSuchVariable, "no-variable"},
      {YErrNoClosingBrace, "closing-brace"},
  };
  const char* const severities[] = {"", "/note", "/warning", "", "/fatal"};
  return std::string(names.at(code)) + severities[severity];
}

// Each code recorded since the count was `before`, in order, with `mark` in front of it.
inline std::string CodesSince(std::uint64_t before, const std::string& mark) {
  std::string text;
  for (int i = static_cast<int>(YErr.count() - before) - 1; i >= 0; --i) {
    text += mark + CodeText(YErr.code(i), YErr.severity(i));
  }
  return text;
}

#endif  // TESTS_SUPPORT_CODES_H_
