// How a binding handles what is typed into its field.

#include <cstring>

#include "foundation/YAscii.h"
#include "foundation/YCharacters.h"
#include "foundation/YKanji.h"
#include "script/YcluiFieldBinding.h"

YWord YcluiFieldBinding::OnModification(std::int32_t, std::int32_t, const char* inserted,
                                        std::uint32_t length) {
  if (selfEdit) return 1;
  const bool isApplied = length == 0 ? deleteLast() : insert(inserted, strnlen(inserted, length));
  return isApplied ? 1 : 0;
}

// An empty text, or one that begins with a NUL, is treated as the control character NUL.
bool YcluiFieldBinding::insert(const char* inserted, std::size_t length) {
  const char first = length == 0 ? '\0' : *inserted;
  if (!inQuote && fireKeyAction(first)) return false;
  if (YIsControl(first)) return true;
  if (!inQuote && first == ' ') return endWord(inserted, length);
  if (first == '"' && !followsBackslash(fieldText.length)) inQuote = !inQuote;
  fieldText.concat(inserted, length);
  return true;
}

// The field does not insert the blank: the parser's echo contains it.
bool YcluiFieldBinding::endWord(const char* blank, std::size_t length) {
  if (wordIsEmpty()) return false;
  YString word(currentWord());
  word.concat(blank, length);
  fieldText.concat(blank, length);
  wordStart_ = fieldText.length;
  feedParser(word.buffer);
  return false;
}

// The current word starts at a character, so the start of its last one can be found in it.
bool YcluiFieldBinding::deleteLast() {
  if (wordIsEmpty()) return false;
  const std::string_view word(currentWord(), fieldText.length - wordStart_);
  const auto last =
      wordStart_ + static_cast<std::uint32_t>(YCharacters::CutBetween(word, word.size() - 1));
  const char byte = fieldText.buffer[last];
  fieldText.truncate(last);
  if (byte == '"' && !followsBackslash(last)) inQuote = !inQuote;
  return true;
}

// Whether the character of the word before `offset` is a backslash, and not a trail byte of that
// value.
bool YcluiFieldBinding::followsBackslash(std::uint32_t offset) const {
  if (offset <= wordStart_ || fieldText.buffer[offset - 1] != '\\') return false;
  return YCheckKanji(currentWord(), static_cast<int>(offset - 1 - wordStart_)) == 0;
}

// --- Key actions

YWord YcluiFieldBinding::setKeyAction(char key, const char* format) {
  keyActions[findKeyAction(key)] = YcluiKeyAction(key, format);
  return 1;
}

bool YcluiFieldBinding::fireKeyAction(char key) {
  const int found = findKeyAction(key);
  if (found == keyActions.size()) return false;
  Run(keyActions.at(found).format, currentWord());
  return true;
}

// The index of the key's action, or the size of `keyActions` when it has none.
int YcluiFieldBinding::findKeyAction(char key) const {
  int i = 0;
  while (i < keyActions.size() && keyActions.at(i).key != key) ++i;
  return i;
}

// --- The current word

void YcluiFieldBinding::replaceCurrentWord(const char* word, YWord feed) {
  fieldText.truncate(wordStart_);
  if (feed != 0) {
    feedParser(word);
    return;
  }
  fieldText << word;
  show();
}
