// Formats of script text, as scripts give them for what happens in a text field. Internal to
// script/.
//
// A format is text in which "%s" stands for a text that is put in and "%%" for one "%"; every other
// "%" is a fault.

#ifndef SCRIPT_YCLUIFIELDFORMAT_H_
#define SCRIPT_YCLUIFIELDFORMAT_H_

#include "foundation/YString.h"
#include "foundation/YTypes.h"

// 1 when the format has no fault and takes `most` texts or fewer.
YWord YcluiFormatIsGood(const char* format, int most);

// Appends the format with the first text for its first "%s", and the second for its second.
void YcluiFillFormat(const char* format, const char* first, const char* second, YString& out);

// Appends the text as it stands in a double-quoted string of the script language: a backslash in
// front of each double quote and backslash. Bytes of double-byte characters are left alone. A lead
// byte that has no trail byte would take such a backslash for one, and the quote behind it would
// end the string; it becomes a "?" there.
void YcluiAppendEscaped(const char* text, YString& out);

#endif  // SCRIPT_YCLUIFIELDFORMAT_H_
