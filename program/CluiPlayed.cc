#include "program/CluiPlayed.h"

#include <algorithm>

#include "parser/YcluiParser.h"
#include "program/CluiLiteral.h"

namespace {

constexpr std::size_t AddedBytes = 2;

}  // namespace

bool CluiPlayed::find(const YcluiPlayedToken& token, CluiSpot& spot) {
  if (number_ != token.number) fetch(token);
  std::size_t offset = static_cast<std::size_t>(token.offset);
  const auto behind = std::lower_bound(added_.begin(), added_.end(), offset);
  offset -= AddedBytes * static_cast<std::size_t>(behind - added_.begin());
  if (offset >= line_.text().size()) return false;
  spot = line_.spotOf(static_cast<int>(offset));
  return true;
}

// Takes back what a playback adds to a backslash in front of a quote or another backslash.
void CluiPlayed::fetch(const YcluiPlayedToken& token) {
  const std::string given = token.text;
  std::string text;
  added_.clear();
  for (std::size_t i = 0; i < given.size();) {
    const std::size_t step = CluiStepAt(given, i);
    text.append(given, i, step);
    const bool isAdded = given.compare(i, AddedBytes, "\\\\") == 0;
    if (isAdded) added_.push_back(i);
    if (given[i] == '\\' && step == 1) text.append(given, i + (isAdded ? 3 : 1), 1);
    i += given[i] == '\\' && step == 1 ? (isAdded ? 4 : 2) : step;
  }
  file_ = token.file;
  number_ = token.number;
  line_.restart();
  line_.take(text, static_cast<std::size_t>(token.line));
}
