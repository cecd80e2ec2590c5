// How a text ends, by a look at its bytes.

#ifndef PROGRAM_CLUITEXTEND_H_
#define PROGRAM_CLUITEXTEND_H_

#include <string>

// A fast check: false only if no line of the text, comments aside, ends in a comma.
bool CluiMayEndInComma(const std::string& text);

// Whether the text consists of white space and comments.
bool CluiIsBlank(const std::string& text);

#endif  // PROGRAM_CLUITEXTEND_H_
