// Formats of the script text that is run for events of a text field. Internal to script/.
//
// In a format "%s" is replaced by a text and "%%" by one "%"; any other "%" is invalid.

#ifndef SCRIPT_YCLUIFIELDFORMAT_H_
#define SCRIPT_YCLUIFIELDFORMAT_H_

#include "foundation/YString.h"
#include "foundation/YTypes.h"

// Whether the format is valid and has at most `most` texts to replace.
bool YcluiFormatIsValid(const char* format, int most);

// Appends the format with its first "%s" replaced by `first` and its second by `second`.
void YcluiFillFormat(const char* format, const char* first, const char* second, YString& out);

// Appends the text escaped for a double-quoted string of the script language, with a backslash
// before each double quote and backslash that is a character of its own. A lead byte without a
// trail byte would form a character with such a backslash, and the quote after it would end the
// string; so it becomes a "?" there.
void YcluiAppendEscaped(const char* text, YString& out);

#endif  // SCRIPT_YCLUIFIELDFORMAT_H_
