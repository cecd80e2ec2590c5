// Text and cursor, and the words.

#include "lex/YcluiLex.h"

#include <new>

#include "foundation/YEncoding.h"
#include "foundation/YErr.h"
#include "lex/YcluiLexBytes.h"
#include "lex/YcluiVariableTable.h"
#include "lex/YcluiWordTable.h"

namespace {

constexpr std::uint32_t FirstId = 5000;
constexpr int FirstCapacity = 128;

}  // namespace

YcluiLex::YcluiLex()
    : wordTable(new (std::nothrow) YcluiWordTable(FirstId)),
      lineBuffer(FirstCapacity),
      argIntroducers(":"),
      argSeparators(","),
      argStops(",") {
  YEncoding::Fix();
  if (wordTable == nullptr) {
    cluiFatal(YErrNoWordTable);
    return;
  }
  variableTable = new (std::nothrow) YcluiVariableTable;
  if (variableTable == nullptr) cluiFatal(YErrNoVariableTable);
}

YcluiLex::YcluiLex(const YcluiLex* shared, Trial /*tag*/)
    : ownsWords(false), lineBuffer(FirstCapacity), argIntroducers(":"), argSeparators(",") {
  if (shared == nullptr || !shared->usable()) return;
  variableTable = new (std::nothrow) YcluiVariableTable(shared->variableTable);
  if (variableTable != nullptr) wordTable = shared->wordTable;
}

void YcluiLex::beginTrial(const YcluiLex& shared) {
  if (!usable()) return;
  while (popString() != 0) {
  }
  setString("");
  if (delimiters.length == shared.delimiters.length && argStops.length > 0) return;
  delimiters = shared.delimiters;
  argStops = shared.argStops;
}

void YcluiLex::forgetOwnVariables() {
  if (usable()) variableTable->discardOwn();
}

YcluiLex::~YcluiLex() {
  if (ownsWords) delete wordTable;
  delete variableTable;
}

YWord YcluiLex::setString(const char* text) {
  if (!usable()) return 0;
  forgetOffsets();
  lineBuffer.assign(text);
  cursor = SkipWhiteSpace(lineBuffer.buffer);
  return 1;
}

// The consumed part is kept, because reading an exhausted text starts again with it.
YWord YcluiLex::putString(const char* text) {
  if (!usable()) return 0;
  const std::uint32_t offset = cursor == nullptr ? 0 : cursorOffset();
  lineBuffer.concat(text);
  cursor = lineBuffer.buffer + offset;
  return 1;
}

void YcluiLex::reset() {
  if (cursor == nullptr) return;
  lineBuffer.truncate(cursorOffset());
}

// An exhausted text is resumed at its end, so it stays exhausted.
YWord YcluiLex::pushString(const char* text) {
  if (!usable()) return 0;
  if (bufferStack.count() >= YcluiMostSuspendedTexts) return cluiError(YErrTooDeep);
  std::uint32_t offset = cursorOffset();
  bufferStack.extend().exchange(lineBuffer, offset);
  return setString(text);
}

YWord YcluiLex::popString() {
  if (bufferStack.isEmpty() != 0) return 0;
  forgetOffsets();
  std::uint32_t offset = 0;
  bufferStack.topSlot().exchange(lineBuffer, offset);
  bufferStack.drop();
  cursor = lineBuffer.buffer + offset;
  return 1;
}

void YcluiLex::forgetOffsets() {
  faultOffset_ = wordEnd_ = -1;
  firstSpan = lastSpan = 0;
}

bool YcluiLex::seek() {
  if (cursor == nullptr || *cursor == '\0') return false;
  cursor = SkipWhiteSpace(cursor);
  return cursor != nullptr;
}

std::uint32_t YcluiLex::cursorOffset() const {
  if (cursor == nullptr) return lineBuffer.length;
  return static_cast<std::uint32_t>(cursor - lineBuffer.buffer);
}

char* YcluiLex::SkipWhiteSpace(char* p) {
  for (;; ++p) {
    if (*p == '#') {
      while (*p != '\0' && *p != '\n') ++p;
    }
    if (*p == '\0') return nullptr;
    if (!YIsWhiteSpace(*p)) return p;
  }
}

char* YcluiLex::RecoverError(char* p) {
  while (YIsWhiteSpace(*p)) ++p;
  return p;
}

std::uint32_t YcluiLex::addKeyword(const char* name, const char* abbreviation, std::uint32_t id) {
  return usable() ? wordTable->addKeyword(name, abbreviation, id) : 0;
}

std::uint32_t YcluiLex::addKeyword(const char* name, int count, const YcluiValueType* types,
                                   std::uint32_t id) {
  return usable() ? wordTable->addKeyword(name, count, types, id) : 0;
}

std::uint32_t YcluiLex::addKeyword(char byte, std::uint32_t id) {
  if (byte == '\0') return 0;
  const char name[] = {byte, '\0'};
  const std::uint32_t given = addKeyword(name, nullptr, id);
  if (given != 0 && !isDelimiter(byte)) {
    delimiters << byte;
    argStops << byte;
  }
  return given;
}

YWord YcluiLex::delKeyword(const char* name) {
  return usable() ? wordTable->delKeyword(name) : 0;
}

YWord YcluiLex::addAlias(const char* name, const char* text) {
  return usable() && wordTable->addAlias(name, text) != 0 ? 1 : 0;
}

YWord YcluiLex::delAlias(const char* name) {
  return usable() ? wordTable->delAlias(name) : 0;
}

const char* YcluiLex::keyword(std::uint32_t id) const {
  return usable() ? wordTable->keyword(id) : nullptr;
}

const YcluiKeyword* YcluiLex::keyword(const char* name) const {
  return usable() ? wordTable->findInAnyCase(name == nullptr ? "" : name) : nullptr;
}

const YDictionary* YcluiLex::words() const {
  return wordTable;
}

std::uint64_t YcluiLex::wordChanges() const {
  return usable() ? wordTable->changes() : 0;
}

bool YcluiLex::isDelimiter(char byte) const {
  return IsIn(delimiters.buffer, byte);
}
