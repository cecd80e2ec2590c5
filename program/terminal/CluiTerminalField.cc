#include "program/terminal/CluiTerminalField.h"

#include <algorithm>
#include <cstring>

#include "foundation/YAscii.h"
#include "foundation/YCharacters.h"
#include "terminal/YcluiCells.h"

CluiTerminalField::~CluiTerminalField() {
  delete ModificationCallBack();
}

void CluiTerminalField::SetText(const char* text) {
  text_ = text;
}

// There is a blank between the line and the word.
void CluiTerminalField::setLine(const char* line) {
  const std::size_t length = std::strlen(line);
  wordStart_ = length == 0 ? 0 : length + 1;
}

bool CluiTerminalField::type(std::string_view character) {
  const auto length = static_cast<std::uint32_t>(character.size());
  if (OfferModification(character.data(), length) == 0) return false;
  if (YIsControl(character.front())) return true;
  text_ += character;
  return true;
}

bool CluiTerminalField::rubOut() {
  const std::string before = word();
  if (before.empty()) return false;
  const YcluiCells cells{std::string_view(before)};
  std::u32string characters;
  YCharacters::AppendFromBytes(before.substr(cells[cells.size() - 1].begin), characters);
  for (std::size_t i = 0; i < characters.size(); ++i) {
    if (!rubOutCharacter()) return i > 0;
  }
  return true;
}

bool CluiTerminalField::rubOutCharacter() {
  if (word().empty() || OfferModification(nullptr, 0) == 0) return false;
  const std::string last = word();
  text_.resize(text_.size() - last.size() + YCharacters::CutBetween(last, last.size() - 1));
  return true;
}

std::string CluiTerminalField::line() const {
  return text_.substr(0, wordStart_ == 0 ? 0 : wordStart_ - 1);
}

std::string CluiTerminalField::word() const {
  return text_.substr(std::min(wordStart_, text_.size()));
}
