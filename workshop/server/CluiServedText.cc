#include "workshop/server/CluiServedText.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"
#include "terminal/YcluiMistake.h"

namespace {

// The bytes of the UTF-8 character that begins with this byte; 1 for a byte that begins none.
std::size_t Utf8Step(char byte) {
  const auto lead = static_cast<unsigned char>(byte);
  if (lead < 0xC0) return 1;
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

std::uint32_t ColumnsOf(std::string_view utf8) {
  std::uint32_t columns = 0;
  for (std::size_t i = 0; i < utf8.size(); i += Utf8Step(utf8[i])) {
    columns += Utf8Step(utf8[i]) == 4 ? 2 : 1;
  }
  return columns;
}

// The bytes before a column.
std::size_t BytesBefore(const std::string& utf8, std::size_t end) {
  std::size_t offset = 0;
  for (std::size_t column = 0; column < end && offset < utf8.size();) {
    column += Utf8Step(utf8[offset]) == 4 ? 2 : 1;
    if (column > end) break;  // inside a character of two units
    offset += Utf8Step(utf8[offset]);
  }
  return std::min(offset, utf8.size());
}

std::string CutOut(const std::string& utf8, const CluiServedPiece& piece) {
  const std::size_t begin = BytesBefore(utf8, piece.begin);
  return utf8.substr(begin, BytesBefore(utf8, piece.end) - begin);
}

std::string LackingText(char32_t character) {
  char number[16];
  std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned int>(character));
  return std::string("the character ") + number + " does not exist in " +
         YEncoding::InsideInWords();
}

bool EndsInHeldArgument(const YcluiPreview& preview) {
  const YcluiTextEnding ending = preview.ending();
  return ending == YcluiEndsAfterComma || ending == YcluiEndsInPoint;
}

}  // namespace

// --- A line

std::string CluiServedLine::convert(const std::string& utf8) {
  std::u32string characters;
  const bool isUtf8 = YCharacters::AppendFromUtf8(utf8, characters) == utf8.size();
  characters += U'\n';
  text_.clear();
  columns_.clear();
  std::uint32_t column = 0;
  for (const char32_t character : characters) {
    const bool isNul = character == 0;
    if (!isUtf8 || isNul || !YCharacters::AppendBytes({&character, 1}, text_)) {
      text_.clear();
      columns_.assign(1, 0);
      return isUtf8 ? isNul ? "a NUL byte" : LackingText(character) : "invalid bytes in UTF-8";
    }
    columns_.resize(text_.size(), column);
    if (character != U'\n') column += character > 0xFFFF ? 2 : 1;
  }
  columns_.push_back(column);
  return "";
}

std::uint32_t CluiServedLine::columnAt(std::size_t offset) const {
  return columns_[std::min(offset, columns_.size() - 1)];
}

std::size_t CluiServedLine::offsetAt(std::size_t column) const {
  const auto after = std::upper_bound(columns_.begin(), columns_.end(), column);
  const auto last = after == columns_.begin() ? after : after - 1;
  // The first byte of the character, and not the end of line or what follows it.
  return static_cast<std::size_t>(std::lower_bound(columns_.begin(), columns_.end(), *last) -
                                  columns_.begin());
}

// --- Changes

void CluiServedText::set(std::string_view text) {
  lines_.assign(1, Line());
  replace({}, {}, text);
}

void CluiServedText::replace(CluiTextPosition begin, CluiTextPosition end, std::string_view text) {
  begin = within(begin);
  end = within(end);
  if (std::pair(end.line, end.column) < std::pair(begin.line, begin.column)) end = begin;
  std::string changed =
      lines_[begin.line].utf8.substr(0, BytesBefore(lines_[begin.line].utf8, begin.column));
  const std::string rest =
      lines_[end.line].utf8.substr(BytesBefore(lines_[end.line].utf8, end.column));
  std::vector<Line> fresh;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isPair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
    if (text[i] != '\n' && text[i] != '\r') {
      changed += text[i];
      continue;
    }
    fresh.emplace_back().utf8 = std::exchange(changed, std::string());
    if (isPair) ++i;
  }
  fresh.emplace_back().utf8 = changed + rest;
  fresh.front().before = lines_[begin.line].before;
  fresh.front().isInDoubt = lines_[begin.line].isInDoubt;
  const auto first = lines_.begin() + static_cast<std::ptrdiff_t>(begin.line);
  const std::size_t former = end.line - begin.line + 1;
  const std::size_t same = std::min(former, fresh.size());
  const auto moved =
      std::move(fresh.begin(), fresh.begin() + static_cast<std::ptrdiff_t>(same), first);
  if (former > same) lines_.erase(moved, first + static_cast<std::ptrdiff_t>(former));
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(begin.line + same),
                std::make_move_iterator(fresh.begin() + static_cast<std::ptrdiff_t>(same)),
                std::make_move_iterator(fresh.end()));
  readFrom(begin.line, fresh.size());
}

CluiTextPosition CluiServedText::within(CluiTextPosition position) const {
  if (position.line >= lines_.size()) return {lines_.size() - 1, ColumnsOf(lines_.back().utf8)};
  return position;
}

std::string CluiServedText::textOf(std::size_t line, const CluiServedPiece& piece) const {
  return CutOut(lines_[line].utf8, piece);
}

// --- Reading

// Reads so many changed lines from the first on, and those after them until the state is as it was.
void CluiServedText::readFrom(std::size_t first, std::size_t changed) {
  for (std::size_t i = first; i < lines_.size(); ++i) {
    Line& line = lines_[i];
    const bool followsHeld = i > 0 && lines_[i - 1].isHeld;
    if (i == 0) line.before = preview_.present();
    YcluiPreviewState after = readLine(line, followsHeld);
    if (i + 1 == lines_.size()) return;
    Line& next = lines_[i + 1];
    const bool isInDoubt = line.isInDoubt || !line.changing.empty();
    const bool isAsBefore =
        i + 1 >= first + changed && next.before == after && next.isInDoubt == isInDoubt;
    next.before = std::move(after);
    next.isInDoubt = isInDoubt;
    if (isAsBefore) return;
  }
}

// Returns the state after the line. A line that ends where an argument is missing is held back and
// read together with the next one, and blank lines are part of that.
YcluiPreviewState CluiServedText::readLine(Line& line, bool followsHeld) {
  line.pieces.clear();
  line.findings.clear();
  line.missing.reset();
  line.changing.clear();
  line.isHeld = line.leavesCommand = false;
  line.isBlank = line.utf8.find_first_not_of(" \t") == std::string::npos;
  const std::string fault = present_.convert(line.utf8);
  if (!fault.empty()) {
    line.findings.push_back({0, 0, ColumnsOf(line.utf8), CluiServedFinding::Error, fault});
    return line.before;
  }
  if (followsHeld && line.isBlank) {
    line.isHeld = line.leavesCommand = true;
    return line.before;
  }
  preview_.read(present_.text().c_str(), line.before);
  line.isHeld = EndsInHeldArgument(preview_);
  line.leavesCommand = preview_.leavesCommand();
  addPieces(line);
  const YcluiPreviewState after = line.isHeld ? preview_.stateInside() : preview_.state();
  addFindings(line);
  return after;
}

void CluiServedText::addPieces(Line& line) {
  for (int i = 0; i < preview_.count(); ++i) {
    const YcluiPiece& piece = preview_.piece(i);
    if (piece.kind == YcluiPieceBlank) continue;
    line.pieces.push_back({present_.columnAt(piece.begin), present_.columnAt(piece.end), piece.kind,
                           piece.tokenId, piece.argument, piece.endsCommand});
    const bool isAccepted = piece.kind == YcluiPieceWord || piece.kind == YcluiPieceAnywhereWord;
    if (isAccepted && line.changing.empty() && changing_.contains(piece.tokenId)) {
      line.changing = CutOut(line.utf8, line.pieces.back());
    }
  }
}

// Values that the language does not expect, and the first mistake of the line.
void CluiServedText::addFindings(Line& line) {
  for (int i = 0; i < preview_.count(); ++i) {
    const YcluiPiece piece = preview_.piece(i);
    const std::string range = YcluiRangeFault(parser_.help(), piece, present_.text());
    if (range.empty()) continue;
    line.findings.push_back({0, present_.columnAt(piece.begin), present_.columnAt(piece.end),
                             CluiServedFinding::Warning,
                             "expected " + YCharacters::Utf8FromBytes(range)});
  }
  const int refused = preview_.firstRefused();
  if (refused < 0) return;
  const YcluiPiece piece = preview_.piece(refused);
  const std::string text = YcluiMistakeText(preview_, offers_, present_.text(), refused);
  const bool isInDoubt = line.isInDoubt || !line.changing.empty();
  const CluiServedFinding finding = {
      0, present_.columnAt(piece.begin), present_.columnAt(piece.end),
      isInDoubt ? CluiServedFinding::Doubt : CluiServedFinding::Error,
      YCharacters::Utf8FromBytes(text)};
  if (line.isHeld && piece.begin == piece.end) {
    line.missing = finding;
  } else {
    line.findings.push_back(finding);
  }
}

std::vector<CluiServedFinding> CluiServedText::findings() const {
  std::vector<CluiServedFinding> all;
  std::size_t leftOut = 0;
  bool isInDoubt = false;
  for (std::size_t line = 0; line < lines_.size(); ++line) {
    for (const CluiServedFinding& finding : lines_[line].findings) {
      const bool isDoubt = finding.kind == CluiServedFinding::Doubt;
      if (isDoubt && isInDoubt) continue;
      if (all.size() == MostFindings) {
        ++leftOut;
        continue;
      }
      all.push_back(finding);
      all.back().line = line;
      if (isDoubt) all.back().text += doubtAbout(line);
      isInDoubt = isInDoubt || isDoubt;
    }
  }
  if (lines_.back().leavesCommand) all.push_back(unfinished());
  if (leftOut > 0) all.back().text += "; and " + std::to_string(leftOut) + " more in this file";
  return all;
}

// About the last line that is not blank: in a run an unfinished command is reported.
CluiServedFinding CluiServedText::unfinished() const {
  std::size_t line = lines_.size() - 1;
  while (line > 0 && lines_[line].isBlank) --line;
  if (lines_[line].missing) {
    CluiServedFinding finding = *lines_[line].missing;
    finding.line = line;
    return finding;
  }
  return {line, 0, ColumnsOf(lines_[line].utf8), CluiServedFinding::Warning,
          "the text ends inside a command"};
}

// The reason why a finding in the line, and all later ones of its kind, may be none.
std::string CluiServedText::doubtAbout(std::size_t line) const {
  std::size_t changing = 0;
  while (changing < line && lines_[changing].changing.empty()) ++changing;
  return "; after \"" + lines_[changing].changing + "\" in line " + std::to_string(changing + 1) +
         " ran, this and what follows may differ";
}

// --- At a position

void CluiServedText::previewAt(CluiTextPosition position, std::size_t& offset) {
  const CluiTextPosition at = within(position);
  const Line& line = lines_[at.line];
  present_.convert(line.utf8);
  preview_.read(present_.text().c_str(), line.before);
  offset = present_.offsetAt(std::min<std::size_t>(at.column, ColumnsOf(line.utf8)));
}

YcluiOffers& CluiServedText::offersAt(CluiTextPosition position, const CluiServedLine*& line) {
  std::size_t offset = 0;
  previewAt(position, offset);
  line = &present_;
  offers_.find(preview_, present_.text(), offset);
  return offers_;
}

const YcluiTyping& CluiServedText::typingAt(CluiTextPosition position) {
  std::size_t offset = 0;
  previewAt(position, offset);
  return preview_.at(static_cast<std::uint32_t>(offset));
}
