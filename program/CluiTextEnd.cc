#include "program/CluiTextEnd.h"

#include <algorithm>
#include <cstring>

#include "foundation/YAscii.h"
#include "foundation/YNumber.h"
#include "parser/YcluiParser.h"
#include "program/CluiLine.h"

namespace {

// The offset of the next byte that is neither white space nor in a comment.
std::size_t SkipWhiteSpace(const std::string& text, std::size_t offset) {
  while (offset < text.size() && (YIsWhiteSpace(text[offset]) || text[offset] == '#')) {
    offset = text[offset] == '#' ? text.find('\n', offset) : offset + 1;
  }
  return std::min(offset, text.size());
}

// The offset after a number, or the same offset when there is none.
std::size_t SkipNumber(const std::string& text, std::size_t offset) {
  double number = 0;
  const char* end = YReadDecimal(text.c_str() + offset, number);
  return end == nullptr ? offset : static_cast<std::size_t>(end - text.c_str());
}

// Reads a text by the rules of the lexer, without values and side effects.
class Reader {
 public:
  Reader(const YcluiLex& lexer, const std::string& text, const CluiTextState& begin)
      : lexer_(lexer), text_(text), state_(begin) {}

  CluiTextEnd end() {
    for (skipWhiteSpace(); reads_ && !atEnd(); skipWhiteSpace()) {
      state_.phase == CluiTextState::Words ? readWord() : readArguments();
    }
    if (reads_ && missesArgument()) end_.kind = CluiTextEnd::Comma;
    end_.state = state_;
    return end_;
  }

 private:
  const YcluiLex& lexer_;
  const std::string& text_;
  CluiTextState state_;
  std::size_t at_ = 0;
  bool reads_ = true;  // false once the text was found to end inside something, or was refused
  CluiTextEnd end_;

  bool atEnd() const { return at_ >= text_.size(); }
  char byte() const { return atEnd() ? '\0' : text_[at_]; }
  bool isQuote() const { return byte() == '"' || byte() == '\''; }
  bool opensForm() const { return text_.compare(std::min(at_, text_.size()), 2, "${") == 0; }
  void skipWhiteSpace() { at_ = SkipWhiteSpace(text_, at_); }
  void stop(CluiTextEnd::Kind kind = CluiTextEnd::Whole) {
    end_.kind = kind;
    reads_ = false;
  }

  int declared() const { return state_.keyword == nullptr ? 0 : state_.keyword->argCount(); }
  YcluiValueType typeOfNext() const {
    return state_.read < declared() ? state_.keyword->argType(state_.read) : YcluiValueString;
  }

  // Whether the lexer would refuse the end of the text for a missing argument.
  bool missesArgument() const {
    return state_.phase == CluiTextState::AfterComma &&
           (state_.halfPoint || state_.read >= declared());
  }

  void readWord() {
    if (opensForm()) return readFormAsWord();
    if (lexer_.isDelimiter(byte())) {
      ++at_;
      return;
    }
    std::string word;
    const bool announces = readPlain("", ':', word);
    if (!reads_) return;
    const YcluiKeyword* keyword = lexer_.keyword(word.c_str());
    const bool takesArguments = keyword == nullptr ? announces : keyword->argCount() > 0;
    if (takesArguments) state_ = {CluiTextState::BeforeArgument, keyword, 0, false};
  }

  void readFormAsWord() {
    skipForm();
    if (byte() != '=') return;
    ++at_;
    readString();
  }

  void readArguments() {
    if (!readArgument()) return;
    ++state_.read;
    state_.phase = CluiTextState::BeforeArgument;
    skipWhiteSpace();
    if (byte() == ',') return readComma();
    if (state_.read >= declared()) {
      state_ = {};
    } else if (!atEnd()) {
      stop();  // the rest waits for the next text
    }
  }

  void readComma() {
    ++at_;
    state_.phase = CluiTextState::AfterComma;
  }

  // True when a complete argument was read.
  bool readArgument() {
    const YcluiValueType type = typeOfNext();
    if (type == YcluiValuePoint) return readPoint();
    type == YcluiValueString ? readString() : readNumber();
    return reads_;
  }

  bool readPoint() {
    if (!state_.halfPoint) {
      readNumber();
      skipWhiteSpace();
      if (reads_ && byte() != ',') stop(atEnd() ? CluiTextEnd::HalfPoint : CluiTextEnd::Whole);
      if (!reads_) return false;
      readComma();
      state_.halfPoint = true;
      return false;
    }
    readNumber();
    state_.halfPoint = false;
    return reads_;
  }

  void readNumber() {
    if (opensForm()) return skipForm();
    const std::size_t end = SkipNumber(text_, at_);
    if (end == at_) stop();
    at_ = end;
  }

  void readString() {
    std::string text;
    if (isQuote()) {
      skipQuoted();
    } else if (opensForm()) {
      skipForm();
    } else {
      readPlain(",", '\0', text);
    }
  }

  void skipQuoted() {
    const char quote = text_[at_++];
    while (!atEnd() && byte() != quote) {
      at_ += byte() == '\\' ? 2 : CluiStepAt(text_, at_);
    }
    atEnd() ? stop(CluiTextEnd::Quote) : static_cast<void>(++at_);
  }

  // Appends the bytes up to a stop, or up to and including the introducer, to `word`. Returns
  // whether the introducer ended them.
  bool readPlain(const char* stops, char introducer, std::string& word) {
    while (!atEnd() && !endsPlain(stops)) {
      const std::size_t step = CluiStepAt(text_, at_);
      if (step == 1 && byte() == introducer) {
        word += text_[at_++];
        return true;
      }
      const bool isEscape = step == 1 && byte() == '\\';
      if (isEscape) ++at_;
      if (atEnd()) stop(CluiTextEnd::Escape);
      word.append(text_, std::min(at_, text_.size()), step);
      at_ += step;
    }
    return false;
  }
  bool endsPlain(const char* stops) const {
    return std::strchr(stops, byte()) != nullptr || lexer_.isDelimiter(byte()) ||
           YIsWhiteSpace(byte()) || opensForm();
  }

  // Skips ${name} and an index, which may contain such forms itself.
  void skipForm() {
    int brackets = 0;
    do {
      at_ = std::min(text_.find('}', at_), text_.size() - 1) + 1;
      if (byte() != '[') break;
      ++at_;
      ++brackets;
      skipWhiteSpace();
    } while (opensForm());
    if (brackets > 0 && !opensForm()) at_ = SkipNumber(text_, at_);
    for (; brackets > 0 && byte() == ']'; --brackets) ++at_;
  }
};

}  // namespace

CluiTextState CluiStateOf(const YcluiParser& parser) {
  const YcluiToken* token = parser.openToken();
  if (token == nullptr) return {};
  return {CluiTextState::BeforeArgument, parser.lex()->keyword(token->string()), token->argc() - 1,
          false};
}

CluiTextEnd CluiEndOf(const YcluiParser& parser, const std::string& text,
                      const CluiTextState& begin) {
  return Reader(*parser.lex(), text, begin).end();
}

bool CluiMayEndInComma(const std::string& text) {
  for (std::size_t i = text.rfind(','); i != std::string::npos; i = text.rfind(',', i - 1)) {
    const std::size_t next = text.find_first_not_of(" \t\r\v\f", i + 1);
    if (next == std::string::npos || text[next] == '\n' || text[next] == '#') return true;
    if (i == 0) return false;
  }
  return false;
}

bool CluiIsBlank(const std::string& text) {
  return SkipWhiteSpace(text, 0) == text.size();
}
