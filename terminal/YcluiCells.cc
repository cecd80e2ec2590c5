#include "terminal/YcluiCells.h"

#include <wctype.h>

#include <algorithm>
#include <cctype>
#include <clocale>
#include <cwchar>

#include "foundation/YCharacters.h"

namespace {

constexpr char32_t Replacement = 0xFFFD;
constexpr char32_t Joiner = 0x200D;

// The functions of <wctype.h> need a locale that has all characters; the user's may have fewer.
locale_t AllCharacters() {
  static const locale_t all = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return all;
}

// -1 for what cannot be shown.
int WideWidth(char32_t character) {
  const locale_t all = AllCharacters();
  if (all == nullptr) return character >= 0x1100 ? 2 : 1;
  const locale_t before = uselocale(all);
  const int width = wcwidth(static_cast<wchar_t>(character));
  uselocale(before);
  return width;
}

bool IsLoneByte(char32_t character) {
  return YCharacters::IsLoneByte(character);
}

bool IsControl(char32_t character) {
  return character < 0x20 || character == 0x7F;
}

// A mark after anything else is shown with that.
bool StandsAlone(char32_t character) {
  return IsControl(character) || IsLoneByte(character) || WideWidth(character) < 0;
}

// Arrows, symbols and emoji.
bool IsPictograph(char32_t character) {
  return (character >= 0x2190 && character < 0x2C00) ||
         (character >= 0x1F000 && character < 0x20000);
}

bool IsLetterOfFlag(char32_t character) {
  return character >= 0x1F1E6 && character <= 0x1F1FF;
}

bool IsSkinColour(char32_t character) {
  return character >= 0x1F3FB && character <= 0x1F3FF;
}

// Whether a character with a width is of the unit before it: an emoji that is joined to another,
// the colour of one, the second letter of a flag.
bool Continues(const std::u32string& unit, char32_t character) {
  if (!IsPictograph(unit.front()) || !IsPictograph(character)) return false;
  if (IsLetterOfFlag(character)) return unit.size() == 1 && IsLetterOfFlag(unit.front());
  return unit.back() == Joiner || (IsSkinColour(character) && IsPictograph(unit.back()));
}

std::size_t BytesOf(char32_t character, std::string& room) {
  if (character < 128) return 1;
  room.clear();
  YCharacters::AppendBytes({&character, 1}, room);
  return room.size();
}

}  // namespace

YcluiCells::YcluiCells(std::string_view bytes) {
  std::u32string characters;
  YCharacters::AppendFromBytes(bytes, characters);
  *this = YcluiCells(std::u32string_view(characters));
}

YcluiCells::YcluiCells(std::u32string_view characters) {
  std::string room;
  cells_.reserve(characters.size());
  for (const char32_t character : characters) add(character, BytesOf(character, room));
}

void YcluiCells::add(char32_t character, std::size_t length) {
  const std::size_t from = bytes();
  const bool isMark = character >= 128 && !IsLoneByte(character) && WideWidth(character) == 0;
  if (isMark && !cells_.empty() && !StandsAlone(cells_.back().character)) {
    cells_.back().text += character;
    cells_.back().end += length;
    return;
  }
  if (!cells_.empty() && Continues(cells_.back().text, character)) {
    cells_.back().text += character;
    cells_.back().end += length;
    cells_.back().width += WidthOf(character);
    return;
  }
  YcluiCell cell{{}, character, from, from + length, width(), 1};
  if (IsControl(character)) {
    cell.text = {U'^', character ^ 0x40};
    cell.width = 2;
  } else if (isMark) {
    cell.text = {U' ', character};
  } else if (character >= 127 && StandsAlone(character)) {
    cell.text = Replacement;
  } else {
    cell.text = character;
    cell.width = WidthOf(character);
  }
  cells_.push_back(std::move(cell));
}

std::size_t YcluiCells::indexAt(std::size_t offset) const {
  const auto found =
      std::lower_bound(cells_.begin(), cells_.end(), offset,
                       [](const YcluiCell& cell, std::size_t at) { return cell.begin < at; });
  return static_cast<std::size_t>(found - cells_.begin());
}

bool YcluiCells::isBetween(std::size_t offset) const {
  const std::size_t index = indexAt(offset);
  return offset == (index < size() ? cells_[index].begin : bytes());
}

std::size_t YcluiCells::columnOf(std::size_t offset) const {
  if (offset >= bytes()) return width();
  const std::size_t index = indexAt(offset);
  return index < size() && cells_[index].begin == offset ? cells_[index].column
                                                         : cells_[index - 1].column;
}

std::size_t YcluiCells::WidthOf(char32_t character) {
  if (character < 0x7F) return 1;
  const int width = WideWidth(character);
  return width < 0 ? 1 : static_cast<std::size_t>(width);
}

bool YcluiCells::IsSpace(char32_t character) {
  if (character < 128) return character == ' ' || (character >= '\t' && character <= '\r');
  const locale_t all = AllCharacters();
  return all != nullptr && iswspace_l(static_cast<wint_t>(character), all) != 0;
}

bool YcluiCells::IsOfWord(char32_t character) {
  if (character == '_') return true;
  if (IsLoneByte(character)) return false;
  const locale_t all = AllCharacters();
  if (character < 128 || all == nullptr)
    return character < 128 && std::isalnum(static_cast<int>(character)) != 0;
  return iswalnum_l(static_cast<wint_t>(character), all) != 0;
}
