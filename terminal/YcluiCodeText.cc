#include "terminal/YcluiCodeText.h"

#include <algorithm>
#include <iterator>

#include "foundation/YErrCodes.h"

namespace {

struct CodeText {
  unsigned int code;
  const char* text;
};

constexpr CodeText Codes[] = {
    {YErrNoMemory, "out of memory"},
    {YErrEndOfInput, "unterminated string"},
    {YErrNotANumber, "expected a number"},
    {YErrTooDeep, "texts are nested too deeply; does one refer to itself?"},
    {YErrBadPoint, "expected a point, two integers with a comma between them"},
    {YErrNoSuchWord, "no such word"},
    {YErrOutsideArray, "array index out of range"},
    {YErrNoSyntax, "the parser has no syntax yet"},
    {YErrNotAlive, "not a live parser, fragment or binding"},
    {YErrBadFormat, "invalid format: only %s and %% are allowed"},
    {YErrNameExists, "the name is already in use"},
    {YErrOutOfRange, "expected an integer from -2147483648 to 2147483647"},
    {YErrNoWordTable, "out of memory for the words"},
    {YErrAmbiguous, "ambiguous syntax: more than one path ends the command here"},
    {YErrTextTooLong, "the expanded text would be longer than 16 MiB"},
    {YErrEncodingIsFixed, "the encoding inside cannot be changed any more"},
    {YErrOtherEncoding, "the text of the file is not in the encoding inside"},
    {YErrBadTokenArgument, "invalid argument of clui-token"},
    {YErrBadSyntaxArgument, "invalid syntax element"},
    {YErrBadTokenParser, "the first argument of clui-token is not a parser"},
    {YErrIsAlias, "the name is already an alias"},
    {YErrIsWord, "the name is already a word"},
    {YErrNoSuchAlias, "no such alias"},
    {YErrNotDetached, "the word could not be removed"},
    {YErrFileIsPlayed, "the file is being played back"},
    {YErrFileIsLogged, "the file is being recorded to"},
    {YErrLogIsOpen, "a recording is already in progress"},
    {YErrNotOpened, "cannot open the file"},
    {YErrNotClosed, "cannot write or close the file"},
    {YErrInterruptRefused, "the current command may not be interrupted by this one"},
    {YErrNoVariableTable, "out of memory for the variables"},
    {YErrNoText, "the value of the variable has no text"},
    {YErrWrongKind, "an array is used as a simple variable, or a simple variable as an array"},
    {YErrNoSuchVariable, "no such variable"},
    {YErrNoClosingBrace,
     "malformed variable: the name is ASCII letters and digits and ends with \"}\", an index "
     "with \"]\""},
};

}  // namespace

std::string YcluiCodeText(unsigned int code) {
  for (const CodeText& entry : Codes) {
    if (entry.code == code) return entry.text;
  }
  return "error " + std::to_string(code);
}

const char* YcluiTypeText(unsigned int valueType) {
  static const char* const texts[] = {"a value", "a string", "a number", "an integer", "a point"};
  return valueType < std::size(texts) ? texts[valueType] : texts[0];
}
