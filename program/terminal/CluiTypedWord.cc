#include "program/terminal/CluiTypedWord.h"

#include <algorithm>

#include "foundation/YAscii.h"
#include "terminal/YcluiLineEditor.h"

CluiTypedWord::CluiTypedWord(const YcluiParser& parser, const std::string& word,
                             bool mayBeginWithComma)
    : text_(mayBeginWithComma && EndsInArgument(parser) ? YcluiLineEditor::WithoutFirstComma(word)
                                                        : word),
      isComma_(text_ != word && std::all_of(text_.begin(), text_.end(), YIsWhiteSpace)),
      preview_(parser) {
  preview_.read(text_.c_str());
}

bool CluiTypedWord::EndsInArgument(const YcluiParser& parser) {
  const YcluiToken* open = parser.openToken();
  return open != nullptr && open->argc() > 1;
}

YcluiTextEnding CluiTypedWord::ending() const {
  return isComma_ ? YcluiEndsAfterComma : preview_.ending();
}

bool CluiTypedWord::endsInComment() const {
  const int count = preview_.count();
  return count > 0 && preview_.piece(count - 1).kind == YcluiPieceComment;
}

char CluiTypedWord::openQuote() const {
  return text_[preview_.piece(preview_.count() - 1).begin];
}
