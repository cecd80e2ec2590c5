#include "program/CluiLine.h"

#include <utility>

#include "foundation/YCharacters.h"

namespace {

void StepTo(CluiSpot& spot, std::size_t offset) {
  while (spot.offset < offset) {
    const bool isEnd = (*spot.text)[spot.offset] == '\n';
    spot.offset += CluiStepAt(*spot.text, spot.offset);
    ++spot.character;
    if (isEnd) spot = {spot.line + 1, 0, spot.offset, spot.text, spot.offset};
  }
}

}  // namespace

std::size_t CluiStepAt(const std::string& text, std::size_t offset) {
  return YCharacters::LengthAt(std::string_view(text).substr(offset));
}

void CluiLine::restart() {
  now_ = {};
  before_ = {};
  last_ = {0, 0, 0, &now_.text};
  charactersOf_ = 0;
}

void CluiLine::advance(std::string& text, std::size_t number, std::size_t fedBefore) {
  std::swap(now_, before_);
  fedBefore_ = static_cast<int>(fedBefore);
  now_.text.swap(text);
  now_.number = number;
  last_ = {number, 0, 0, &now_.text};
  charactersOf_ = 0;  // the former text may have had lines of the same numbers
}

CluiSpot CluiLine::spotOf(int offset) {
  offset += fedBefore_;
  if (offset < 0 && before_.number > 0) {
    const std::size_t back = static_cast<std::size_t>(-static_cast<long>(offset));
    const std::size_t length = before_.text.size();
    CluiSpot spot = {before_.number, 0, 0, &before_.text};
    StepTo(spot, back < length ? length - back : 0);
    return spot;
  }
  const std::size_t place = offset < 0 ? 0 : static_cast<std::size_t>(offset);
  if (place >= now_.text.size()) return last_;
  if (place < last_.offset) last_ = {now_.number, 0, 0, &now_.text};
  StepTo(last_, place);
  return last_;
}

const std::wstring& CluiLine::characters(const CluiSpot& spot) {
  if (charactersOf_ != spot.line) {
    const std::size_t end = spot.text->find('\n', spot.begin);
    characters_ = encoding_.fromSystem(spot.text->substr(spot.begin, end - spot.begin));
  }
  charactersOf_ = spot.line;
  return characters_;
}
