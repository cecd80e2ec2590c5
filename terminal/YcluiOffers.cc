#include "terminal/YcluiOffers.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "foundation/YAscii.h"
#include "foundation/YCharacters.h"
#include "foundation/YKanji.h"
#include "foundation/YNumber.h"
#include "parser/YcluiHelp.h"
#include "terminal/YcluiCodeText.h"
#include "terminal/YcluiFileNames.h"

namespace {

YcluiOffers::Group GroupOf(YcluiCandidateKind kind) {
  switch (kind) {
    case YcluiCandidateNext:
      return YcluiOffers::Group::Next;
    case YcluiCandidateAnywhere:
      return YcluiOffers::Group::Anywhere;
    case YcluiCandidateAlias:
      return YcluiOffers::Group::Alias;
    case YcluiCandidateVariable:
      return YcluiOffers::Group::Variable;
  }
  return YcluiOffers::Group::Next;
}

// " from 1 to 10", " from 1" or " to 10"
std::string RangeText(double low, double high) {
  char digits[YNumberRoom];
  std::string text;
  if (std::isfinite(low)) {
    YPrintDouble(low, digits);
    text.append(" from ").append(digits);
  }
  if (std::isfinite(high)) {
    YPrintDouble(high, digits);
    text.append(" to ").append(digits);
  }
  return text;
}

}  // namespace

void YcluiOffers::locate(YcluiPreview& preview, const std::string& text, std::size_t cursor) {
  preview_ = nullptr;
  count_ = 0;
  isQuoted_ = false;
  typing_ = preview.at(static_cast<std::uint32_t>(cursor));
  cursor_ = cursor;
  typed_ = text.substr(typing_.begin, cursor - typing_.begin);
  follows_ = text.substr(cursor);
}

void YcluiOffers::findHere(YcluiPreview& preview) {
  if (typing_.kind == YcluiTypingArgument) return findValues();
  preview_ = &preview;
  count_ = static_cast<std::size_t>(preview.findCandidates());
}

// What is typed may be quoted already.
void YcluiOffers::findValues() {
  const YcluiHelp& help = parser_.help();
  isQuoted_ = typed_.starts_with('"') || typed_.starts_with('\'');
  if (isQuoted_) typed_.erase(0, 1);
  const std::uint32_t id = typing_.tokenId;
  if (help.isFileName(id, typing_.argument)) {
    YcluiFindFileNames(typed_, values_);
  } else {
    help.findValues(id, typing_.argument, typed_.c_str(), values_);
  }
  count_ = static_cast<std::size_t>(values_.size());
}

YcluiOffers::Offer YcluiOffers::at(std::size_t index) const {
  const int i = static_cast<int>(index);
  if (preview_ == nullptr) return {values_.at(i).buffer, Group::Value, YcluiIdNone};
  const YcluiCandidate& candidate = preview_->candidate(i);
  return {candidate.name, GroupOf(candidate.kind), candidate.tokenId};
}

// --- What is put in

// Of names in order, the first and the last differ as early as any.
std::string YcluiOffers::common() const {
  if (empty()) return std::string();
  std::string_view common = at(0).name;
  const auto narrow = [&common](std::string_view name) {
    const auto end = std::mismatch(common.begin(), common.end(), name.begin(), name.end()).first;
    common = common.substr(0, static_cast<std::size_t>(end - common.begin()));
  };
  for (std::size_t i = 0; i < count_; i = endOfGroup(i)) {
    narrow(at(i).name);
    narrow(at(endOfGroup(i) - 1).name);
  }
  common = common.substr(0, YCharacters::CutBetween(at(0).name, common.size()));
  if (preview_ != nullptr) return std::string(common);
  return opened(common, isQuoted_ || (!common.empty() && needsQuotes(common)));
}

// Of offers whose names are in order; values are not.
std::size_t YcluiOffers::endOfGroup(std::size_t index) const {
  const Group group = at(index).group;
  if (group == Group::Value) return index + 1;
  std::size_t end = count_;
  while (end - index > 1) {
    const std::size_t middle = index + (end - index) / 2;
    (at(middle).group == group ? index : end) = middle;
  }
  return end;
}

std::string YcluiOffers::inserted(std::size_t index) const {
  const Offer offer = at(index);
  const std::string name = offer.name;
  if (offer.group == Group::Variable) return name + "}";
  if (offer.group != Group::Value) {
    const bool goesOn = name.ends_with(':') || follows_.starts_with('\n');
    return goesOn ? name : name + " ";
  }
  const bool isQuoted = isQuoted_ || needsQuotes(name);
  const bool isFolder = name.ends_with('/');
  return opened(name, isQuoted) + (isQuoted && !isFolder ? "\"" : "");
}

std::size_t YcluiOffers::endFor(const std::string& inserted) const {
  const bool isThere = !inserted.empty() && follows_.starts_with(inserted.back()) &&
                       std::string_view(" }\"").find(inserted.back()) != std::string_view::npos;
  return cursor_ + (isThere ? 1 : 0);
}

std::string YcluiOffers::rest(std::size_t index) const {
  const std::string_view name = at(index).name;
  return std::string(name.substr(std::min(typed_.size(), name.size())));
}

// Whether the lexer would not read the value as one string.
bool YcluiOffers::needsQuotes(std::string_view value) const {
  return value.empty() || !std::all_of(value.begin(), value.end(), [this](char byte) {
           const bool isSpecial = std::string_view("\"'\\$#,").find(byte) != std::string_view::npos;
           return !YIsWhiteSpace(byte) && !isSpecial && !parser_.lex()->isDelimiter(byte);
         });
}

std::string YcluiOffers::opened(std::string_view value, bool isQuoted) const {
  if (!isQuoted) return std::string(value);
  std::string text = "\"";
  YKanjiWalk walk;
  for (const char& byte : value) {
    const bool isWhole = walk.next(&byte) == 0;
    if (isWhole && (byte == '"' || byte == '\\' || byte == '$')) text += '\\';
    text += byte;
  }
  return text;
}

// --- What they are

std::string YcluiOffers::help(std::size_t index) const {
  const Offer offer = at(index);
  if (offer.group == Group::Alias) {
    const YcluiKeyword* alias = parser_.lex()->keyword(offer.name);
    const char* text = alias == nullptr ? nullptr : alias->aliasText();
    return text == nullptr ? std::string() : std::string("= ") + text;
  }
  const char* text = offer.tokenId == YcluiIdNone ? nullptr : parser_.help().text(offer.tokenId);
  return text == nullptr ? std::string() : text;
}

// "WIDTH: a number from 1 to 20, in metres"
std::string YcluiOffers::argumentText() const {
  if (typing_.kind != YcluiTypingArgument) return std::string();
  const YcluiHelp& help = parser_.help();
  const char* name = help.argumentName(typing_.tokenId, typing_.argument);
  const char* text = help.argumentText(typing_.tokenId, typing_.argument);
  std::string about = name == nullptr ? "argument " + std::to_string(typing_.argument) : name;
  const bool isFile = help.isFileName(typing_.tokenId, typing_.argument);
  about.append(": ").append(isFile ? "a file name" : YcluiTypeText(typing_.type));
  double low = 0;
  double high = 0;
  if (help.range(typing_.tokenId, typing_.argument, low, high)) about += RangeText(low, high);
  return text == nullptr ? about : about + ", " + text;
}
