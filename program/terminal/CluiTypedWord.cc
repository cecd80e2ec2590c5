#include "program/terminal/CluiTypedWord.h"

#include "parser/YcluiParser.h"
#include "terminal/YcluiPainter.h"

namespace {

constexpr char Blanks[] = " \t\r\n\v\f";

}  // namespace

void CluiTypedWord::read(const std::string& word, bool mayBeginWithComma) {
  word_ = text_ = word;
  isComma_ = false;
  const YcluiToken* open = parser_.openToken();
  const std::size_t first = text_.find_first_not_of(Blanks);
  const bool isAfterArgument = mayBeginWithComma && open != nullptr && open->argc() > 1;
  if (isAfterArgument && first != std::string::npos && text_[first] == ',') {
    text_[first] = ' ';
    isComma_ = text_.find_first_not_of(Blanks) == std::string::npos;
  }
  preview_.read(text_.c_str());
}

YcluiTextEnding CluiTypedWord::ending() const {
  return isComma_ ? YcluiEndsAfterComma : preview_.ending();
}

char CluiTypedWord::openQuote() const {
  return text_[preview_.piece(preview_.count() - 1).begin];
}

void CluiTypedWord::paint(const YcluiColours& colours, YcluiStyledText& to) {
  const YcluiStyledText painted = YcluiPaint(preview_, word_, unfinished(), colours);
  for (std::size_t i = 0; i < word_.size(); ++i) to.add(word_.substr(i, 1), painted.styleAt(i));
}

// The end of the text where what is refused may become a word or a point; npos elsewhere.
std::size_t CluiTypedWord::unfinished() {
  if (ending() == YcluiEndsInPoint) return text_.size();
  const YcluiTyping& typing = preview_.at(static_cast<std::uint32_t>(text_.size()));
  const bool begins = typing.begin < typing.end && preview_.findCandidates() > 0;
  return begins ? text_.size() : std::string::npos;
}
