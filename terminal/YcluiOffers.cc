#include "terminal/YcluiOffers.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>

#include "foundation/YAscii.h"
#include "foundation/YCharacters.h"
#include "foundation/YKanji.h"
#include "foundation/YNumber.h"
#include "parser/YcluiHelp.h"
#include "terminal/YcluiCodeText.h"
#include "terminal/YcluiFileNames.h"

namespace {

// Sorted at once, since a list shows so many.
constexpr std::size_t FirstSorted = 64;

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

bool IsBefore(const YcluiOffers::Offer& a, const YcluiOffers::Offer& b) {
  return a.group != b.group ? a.group < b.group : std::strcmp(a.name, b.name) < 0;
}

bool BeginsWithSpace(std::string_view text) {
  return !text.empty() && (text.front() == ' ' || text.front() == '\t' || text.front() == '\n');
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

void YcluiOffers::clear() {
  typing_ = YcluiTyping();
  offers_.clear();
  sorted_ = 0;
  isQuoted_ = false;
}

void YcluiOffers::find(YcluiPreview& preview, const std::string& text, std::size_t cursor) {
  clear();
  typing_ = preview.at(static_cast<std::uint32_t>(cursor));
  cursor_ = cursor;
  word_ = typing_.word == nullptr ? "" : typing_.word;
  follows_ = text.substr(cursor);
  if (typing_.kind == YcluiTypingArgument) {
    addValues(text.substr(typing_.begin, cursor - typing_.begin));
    return;
  }
  const int count = preview.findCandidates();
  for (int i = 0; i < count; ++i) {
    const YcluiCandidate& candidate = preview.candidate(i);
    if (*candidate.name == '\0') continue;
    offers_.push_back({candidate.name, GroupOf(candidate.kind), candidate.tokenId});
  }
}

const YcluiOffers::Offer& YcluiOffers::at(std::size_t index) {
  if (index >= sorted_) {
    const std::size_t wanted = std::min(count(), std::max({FirstSorted, index + 1, 2 * sorted_}));
    const auto first = offers_.begin() + static_cast<std::ptrdiff_t>(sorted_);
    const auto middle = offers_.begin() + static_cast<std::ptrdiff_t>(wanted);
    std::partial_sort(first, middle, offers_.end(), IsBefore);
    sorted_ = wanted;
  }
  return offers_[index];
}

std::string YcluiOffers::common() const {
  if (offers_.empty()) return std::string();
  std::string_view common = offers_.front().name;
  for (const Offer& offer : offers_) {
    const std::string_view name = offer.name;
    const auto end = std::mismatch(common.begin(), common.end(), name.begin(), name.end()).first;
    common = common.substr(0, static_cast<std::size_t>(end - common.begin()));
  }
  const std::size_t length = YCharacters::CutBetween(offers_.front().name, common.size());
  return (isQuoted_ ? "\"" : "") + std::string(common.substr(0, length));
}

std::string YcluiOffers::inserted(std::size_t index) {
  const Offer& offer = at(index);
  std::string text = offer.group == Group::Value ? quoted(offer.name) : offer.name;
  if (offer.group == Group::Variable) {
    return follows_.starts_with('}') ? text : text + "}";
  }
  if (offer.group == Group::Value) return text;
  const bool takesArguments = text.ends_with(':');
  return takesArguments || BeginsWithSpace(follows_) ? text : text + " ";
}

// A value that the lexer would not read as one string is quoted.
std::string YcluiOffers::quoted(const char* value) const {
  const std::string_view text = value;
  const bool isPlain = !text.empty() && std::all_of(text.begin(), text.end(), [this](char byte) {
    const bool isSpecial = std::strchr("\"'\\$#,", byte) != nullptr;
    return !YIsWhiteSpace(byte) && !isSpecial && !parser_.lex()->isDelimiter(byte);
  });
  if (isPlain && !isQuoted_) return std::string(text);
  std::string quoted = "\"";
  YKanjiWalk walk;
  for (const char& byte : text) {
    const bool isWhole = walk.next(&byte) == 0;
    if (isWhole && std::strchr("\"\\$", byte) != nullptr) quoted += '\\';
    quoted += byte;
  }
  // A folder goes on.
  return text.ends_with('/') ? quoted : quoted + "\"";
}

// What is typed may be quoted already.
void YcluiOffers::addValues(std::string typed) {
  const YcluiHelp& help = parser_.help();
  isQuoted_ = typed.starts_with('"') || typed.starts_with('\'');
  if (isQuoted_) typed.erase(0, 1);
  const std::uint32_t id = typing_.tokenId;
  if (help.isFileName(id, typing_.argument)) {
    YcluiFindFileNames(typed, values_);
  } else {
    help.findValues(id, typing_.argument, typed.c_str(), values_);
  }
  for (int i = 0; i < values_.size(); ++i) {
    offers_.push_back({values_[i].buffer, Group::Value, YcluiIdNone});
  }
}

std::string YcluiOffers::help(std::size_t index) {
  const Offer& offer = at(index);
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
  about.append(": ").append(YcluiTypeText(typing_.type));
  double low = 0;
  double high = 0;
  if (help.range(typing_.tokenId, typing_.argument, low, high)) about += RangeText(low, high);
  return text == nullptr ? about : about + ", " + text;
}
