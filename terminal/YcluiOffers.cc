#include "terminal/YcluiOffers.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "foundation/YCharacters.h"
#include "terminal/YcluiCodeText.h"

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

}  // namespace

void YcluiOffers::clear() {
  typing_ = YcluiTyping();
  offers_.clear();
  sorted_ = 0;
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
  return std::string(
      common.substr(0, YCharacters::CutBetween(offers_.front().name, common.size())));
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

std::string YcluiOffers::quoted(const char* value) const {
  return value;
}

void YcluiOffers::addValues(const std::string& typed) {
  static_cast<void>(typed);
}

std::string YcluiOffers::help(std::size_t index) {
  static_cast<void>(index);
  return std::string();
}

std::string YcluiOffers::argumentText() const {
  if (typing_.kind != YcluiTypingArgument) return std::string();
  return "argument " + std::to_string(typing_.argument) + ": " + YcluiTypeText(typing_.type);
}
