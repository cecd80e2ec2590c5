#include "terminal/YcluiMistake.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "foundation/YErrCodes.h"
#include "foundation/YNumber.h"
#include "terminal/YcluiCodeText.h"

namespace {

constexpr std::size_t MostNamed = 12;

std::string TextOf(const YcluiPiece& piece, const std::string& text) {
  return "\"" + text.substr(piece.begin, piece.end - piece.begin) + "\"";
}

// The words that could come, the first ones by name.
std::string Expected(YcluiOffers& offers) {
  std::string text;
  const std::size_t named = std::min(offers.count(), MostNamed);
  for (std::size_t i = 0; i < named; ++i)
    text += (i == 0 ? "" : ", ") + std::string(offers.at(i).name);
  if (named < offers.count()) text += " and " + std::to_string(offers.count() - named) + " more";
  return text;
}

std::string WordText(YcluiPreview& preview, YcluiOffers& offers, const std::string& text,
                     const YcluiPiece& piece) {
  if (piece.code == YErrInterruptRefused) {
    return TextOf(piece, text) + " may not interrupt the current command";
  }
  // A word that has an id is refused itself, whatever its arguments are.
  const bool isWord = piece.tokenId != YcluiIdNone && piece.tokenId != YcluiIdAlias;
  if (piece.code != YErrNothing && !isWord) return YcluiCodeText(piece.code);
  const bool isUnknown = piece.tokenId == YcluiIdNone || piece.tokenId == YcluiIdFreeWord;
  const std::string fault = isUnknown ? "no such word " + TextOf(piece, text)
                                      : TextOf(piece, text) + " is not allowed here";
  offers.find(preview, text, piece.begin);
  return offers.empty() ? fault : fault + "; expected " + Expected(offers);
}

std::string ArgumentText(YcluiPreview& preview, YcluiOffers& offers, const std::string& text,
                         const YcluiPiece& piece) {
  offers.find(preview, text, piece.begin);
  const YcluiTyping& typing = offers.typing();
  const std::string found = piece.begin == piece.end ? "nothing" : TextOf(piece, text);
  std::string fault = YcluiCodeText(piece.code);
  const bool isAsked = piece.code == YErrNotANumber || piece.code == YErrNothing;
  if (isAsked && typing.kind == YcluiTypingArgument) {
    fault = std::string("expected ") + YcluiTypeText(typing.type);
  }
  if (piece.kind != YcluiPieceOpenQuote) fault += ", found " + found;
  if (typing.kind != YcluiTypingArgument || typing.word == nullptr) return fault;
  return "argument " + std::to_string(typing.argument) + " of \"" + typing.word + "\": " + fault;
}

std::string Digits(double value) {
  char digits[YNumberRoom];
  return std::string(digits, YPrintDouble(value, digits));
}

}  // namespace

int YcluiFirstMistake(const YcluiPreview& preview) {
  const int refused = preview.firstRefused();
  return refused >= 0 && preview.piece(refused).isSupposed ? -1 : refused;
}

std::string YcluiMistakeText(YcluiPreview& preview, YcluiOffers& offers, const std::string& text,
                             int index) {
  const YcluiPiece piece = preview.piece(index);
  return piece.argument == 0 ? WordText(preview, offers, text, piece)
                             : ArgumentText(preview, offers, text, piece);
}

std::string YcluiRangeFault(const YcluiHelp& help, const YcluiPiece& piece,
                            const std::string& text) {
  double low = 0;
  double high = 0;
  double value = 0;
  const bool isNumber = piece.kind == YcluiPieceInteger || piece.kind == YcluiPieceFloat;
  if (!isNumber || !help.range(piece.tokenId, piece.argument, low, high)) return "";
  const std::string digits = text.substr(piece.begin, piece.end - piece.begin);
  if (YReadDecimal(digits.c_str(), value) == nullptr || (low <= value && value <= high)) return "";
  if (!std::isfinite(high)) return Digits(low) + " or more";
  if (!std::isfinite(low)) return Digits(high) + " or less";
  return Digits(low) + " to " + Digits(high);
}
