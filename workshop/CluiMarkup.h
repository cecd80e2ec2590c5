// Text for XML and HTML.

#ifndef WORKSHOP_CLUIMARKUP_H_
#define WORKSHOP_CLUIMARKUP_H_

#include <cstddef>
#include <string>
#include <string_view>

// Appends a text so that it is read back as it is, in an element as well as in a quoted attribute.
// A control character, which XML does not allow, becomes U+FFFD. Texts are UTF-8.
void CluiAppendEscaped(std::string& markup, std::string_view text);
std::string CluiEscaped(std::string_view text);

// The number of characters of a text, and its beginning of at most so many.
std::size_t CluiCountCharacters(std::string_view text);
// With an ellipsis as the last character if something is left out.
std::string CluiCutTo(std::string_view text, std::size_t characters);

#endif  // WORKSHOP_CLUIMARKUP_H_
