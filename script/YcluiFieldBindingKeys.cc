// What is typed into a field, and the word that is being typed.

#include <cstring>

#include "foundation/YKanji.h"
#include "script/YcluiFieldBinding.h"

namespace {

bool IsControl(char byte) {
  return (byte >= '\0' && byte < ' ') || byte == '\x7f';
}

}  // namespace

YWord YcluiFieldBinding::OnModification(std::int32_t, std::int32_t, const char* inserted,
                                        std::uint32_t length) {
  if (selfEdit) return 1;
  return length == 0 ? rubOut() : insert(inserted, strnlen(inserted, length));
}

// A text that begins with a NUL is the control character.
YWord YcluiFieldBinding::insert(const char* inserted, std::size_t length) {
  const char first = length == 0 ? '\0' : *inserted;
  if (!inQuote && fireKeyAction(first) != 0) return 0;
  if (IsControl(first)) return 1;
  if (!inQuote && first == ' ') return endWord(inserted, length);
  if (first == '"' && !isBehindBackslash(fieldText.length)) inQuote = !inQuote;
  fieldText.concat(inserted, length);
  return 1;
}

// The field does not take the blank: the parser's echo writes it.
YWord YcluiFieldBinding::endWord(const char* blank, std::size_t length) {
  if (wordIsEmpty()) return 0;
  YString word(currentWord());
  word.concat(blank, length);
  fieldText.concat(blank, length);
  wordStart_ = fieldText.length;
  feedParser(word.buffer);
  return 0;
}

// Where the last character begins is judged from where the word does, which is never inside one.
YWord YcluiFieldBinding::rubOut() {
  if (wordIsEmpty()) return 0;
  std::uint32_t last = fieldText.length - 1;
  if (YCheckKanji(currentWord(), static_cast<int>(last - wordStart_)) == 4) --last;
  const char byte = fieldText.buffer[last];
  fieldText.truncate(last);
  if (byte == '"' && !isBehindBackslash(last)) inQuote = !inQuote;
  return 1;
}

// Whether a backslash of the word stands directly before the place, and not a trail byte.
bool YcluiFieldBinding::isBehindBackslash(std::uint32_t place) const {
  if (place <= wordStart_ || fieldText.buffer[place - 1] != '\\') return false;
  return YCheckKanji(currentWord(), static_cast<int>(place - 1 - wordStart_)) == 0;
}

// --- Key actions

YWord YcluiFieldBinding::setKeyAction(char key, const char* format) {
  keyActions[findKeyAction(key)] = YcluiKeyAction(key, format);
  return 1;
}

YWord YcluiFieldBinding::fireKeyAction(char key) {
  const int found = findKeyAction(key);
  if (found == keyActions.size()) return 0;
  Run(keyActions.at(found).format, currentWord());
  return 1;
}

// Behind the last one when the key has none.
int YcluiFieldBinding::findKeyAction(char key) const {
  int i = 0;
  while (i < keyActions.size() && keyActions.at(i).key != key) ++i;
  return i;
}

// --- The word

void YcluiFieldBinding::replaceCurrentWord(const char* word, YWord feed) {
  fieldText.truncate(wordStart_);
  if (feed != 0) {
    feedParser(word);
    return;
  }
  fieldText << word;
  show();
}
