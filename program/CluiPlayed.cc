#include "program/CluiPlayed.h"

#include <string>

#include "parser/YcluiParser.h"

bool CluiPlayed::find(const YcluiPlayedToken& token, CluiSpot& spot) {
  if (number_ != token.number) fetch(token);
  if (static_cast<std::size_t>(token.offset) >= line_.text().size()) return false;
  spot = line_.spotOf(static_cast<int>(token.offset));
  return true;
}

void CluiPlayed::fetch(const YcluiPlayedToken& token) {
  std::string text = token.text;
  file_ = token.file;
  number_ = token.number;
  line_.restart();
  line_.take(text, static_cast<std::size_t>(token.line));
}
