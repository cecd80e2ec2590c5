#include "parser/YcluiPieces.h"

#include <algorithm>

#include "foundation/YAscii.h"
#include "foundation/YKanji.h"
#include "foundation/YNumber.h"
#include "lex/YcluiLexBytes.h"

namespace {

using Verdict = YcluiTrial::Verdict;

bool BeginsVariable(std::string_view text) {
  return text.starts_with("${");
}

// The length of the white space, or of the comment, with which the text begins; 0 without one.
std::size_t LengthOfBlank(std::string_view text) {
  const auto isBlank = [](char byte) { return YIsWhiteSpace(byte); };
  return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isBlank) -
                                  text.begin());
}

std::size_t LengthOfComment(std::string_view text) {
  return text.starts_with('#') ? std::min(text.find('\n'), text.size()) : 0;
}

// The lexer does not say where a literal ends that it cannot read: at white space, a separator or a
// delimiter, a variable form with its brace.
std::size_t LengthOfBadLiteral(std::string_view text, const YcluiLex& lexer) {
  std::size_t end = 0;
  if (BeginsVariable(text)) end = std::min(text.find('}'), text.size() - 1);
  YKanjiWalk walk;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int kind = walk.next(text.data() + i);
    if (i <= end || kind != 0) continue;
    if (YIsWhiteSpace(text[i]) || text[i] == ',' || lexer.isDelimiter(text[i])) return i;
  }
  return text.size();
}

// White space and comments.
std::size_t LengthOfGap(std::string_view text) {
  std::size_t length = 0;
  for (std::size_t part = 1; part > 0; length += part) {
    const std::string_view rest = text.substr(length);
    part = LengthOfBlank(rest);
    if (part == 0) part = LengthOfComment(rest);
  }
  return length;
}

// Whether the text is a number and perhaps a separator: the beginning of a point.
bool IsHalfPoint(const char* text) {
  double number = 0;
  const char* end = YReadDecimal(text, number);
  if (end == nullptr) return false;
  end += LengthOfGap(end);
  if (*end == ',') ++end;
  return end[LengthOfGap(end)] == '\0';
}

}  // namespace

YcluiValueType YcluiTypeOfArgument(const YcluiLex& lexer, const YcluiToken& token, int index) {
  const YcluiKeyword* keyword = token.string() == nullptr ? nullptr : lexer.keyword(token.string());
  const bool isDeclared = keyword != nullptr && index <= keyword->argCount();
  return isDeclared ? keyword->argType(index - 1) : YcluiValueString;
}

void YcluiPieces::read(YcluiTrial& trial, const YcluiTrialState& before, std::string_view text) {
  pieces_.clear();
  text_ = text;
  end_ = 0;
  alias_ = -1;
  ending_ = YcluiEndsWhole;
  missesArgument_ = false;
  step_ = YcluiTrial::Step();
  trial.begin(before, text);
  shift_ = trial.unreadBefore();
  while (trial.next(step_)) {
    if (step_.depth > 0) {
      addExpanded();
    } else {
      addToken(trial);
    }
  }
  addRest(trial);
}

int YcluiPieces::indexAt(std::uint32_t offset) const {
  const auto found =
      std::partition_point(pieces_.begin(), pieces_.end(),
                           [offset](const YcluiPiece& piece) { return piece.end <= offset; });
  return found == pieces_.end() ? -1 : static_cast<int>(found - pieces_.begin());
}

void YcluiPieces::addToken(const YcluiTrial& trial) {
  missesArgument_ = false;
  ending_ = step_.verdict == Verdict::Open ? YcluiEndsInToken : YcluiEndsWhole;
  const std::size_t before = pieces_.size();
  addWord(trial);
  addArguments(trial);
  if (step_.verdict == Verdict::Unread) addFault(trial);
  if (pieces_.size() > before) pieces_.back().endsCommand = step_.endsCommand;
}

// A token of the text of an alias counts for the alias.
void YcluiPieces::addExpanded() {
  if (alias_ < 0) return;
  YcluiPiece& piece = pieces_[static_cast<std::size_t>(alias_)];
  const bool isRefused = step_.verdict == Verdict::Refused || step_.verdict == Verdict::Unread;
  if (!isRefused) {
    piece.endsCommand = step_.endsCommand;
  } else if (piece.kind != YcluiPieceRefused) {
    piece.kind = YcluiPieceRefused;
    piece.code = step_.code;
    piece.isSupposed = step_.isSupposed;
  }
}

void YcluiPieces::addWord(const YcluiTrial& trial) {
  alias_ = -1;
  if (step_.isContinued || step_.wordEnd < 0) return;
  YcluiPiece* piece = add(step_.begin - shift_, step_.wordEnd - shift_, kindOfWord(trial), 0);
  if (piece == nullptr) return;
  if (piece->kind == YcluiPieceRefused) piece->code = step_.code;
  if (step_.verdict == Verdict::Replaced) alias_ = count() - 1;
}

YcluiPieceKind YcluiPieces::kindOfWord(const YcluiTrial& trial) const {
  const long begin = std::max(0L, step_.begin - shift_);
  const bool isForm = BeginsVariable(text_.substr(static_cast<std::size_t>(begin)));
  switch (step_.verdict) {
    case Verdict::Set:
      return YcluiPieceVariable;
    case Verdict::Replaced:
      return isForm ? YcluiPieceVariable : YcluiPieceAlias;
    case Verdict::Unread:
      if (trial.lexer().faultArgument() == 0) return YcluiPieceRefused;
      break;
    case Verdict::Refused:
      return YcluiPieceRefused;
    default:
      break;
  }
  if (step_.node == nullptr) return YcluiPieceRefused;
  return step_.node->kind == YcluiNodeIndefinite ? YcluiPieceAnywhereWord : YcluiPieceWord;
}

// Of a token that began in an earlier text, the arguments show that it is refused.
void YcluiPieces::addArguments(const YcluiTrial& trial) {
  const YcluiLex& lexer = trial.lexer();
  const bool fails = step_.verdict == Verdict::Unread;
  const bool isRefused = step_.isContinued && step_.verdict == Verdict::Refused;
  const int last = fails ? lexer.faultArgument() - 1 : trial.token()->argc() - 1;
  // Those that were read from earlier texts have no offsets; they may be many.
  int first = last + 1;
  while (first > 1 && lexer.argumentOffset(first - 1) >= 0) --first;
  for (int i = first; i <= last; ++i) {
    const long begin = lexer.argumentOffset(i) - shift_;
    const Kind kind = isRefused ? YcluiPieceRefused : kindOfArgument(trial, i, begin);
    YcluiPiece* piece = add(begin, lexer.argumentEnd(i) - shift_, kind, i);
    if (piece != nullptr && isRefused) piece->code = step_.code;
  }
}

YcluiPieceKind YcluiPieces::kindOfArgument(const YcluiTrial& trial, int index, long begin) const {
  const YcluiValueType type = YcluiTypeOfArgument(trial.lexer(), *trial.token(), index);
  if (type == YcluiValuePoint) return YcluiPiecePoint;
  if (begin >= 0 && BeginsVariable(text_.substr(static_cast<std::size_t>(begin)))) {
    return YcluiPieceVariable;
  }
  if (type == YcluiValueFloat) return YcluiPieceFloat;
  return type == YcluiValueInteger ? YcluiPieceInteger : YcluiPieceString;
}

// What could not be read, and what precedes it in the same argument or variable form.
void YcluiPieces::addFault(const YcluiTrial& trial) {
  const YcluiLex& lexer = trial.lexer();
  const int argument = lexer.faultArgument();
  if (argument == 0 && step_.wordEnd >= 0) return;
  const long begin = lexer.faultOffset() - shift_;
  long whole = argument == 0 ? step_.begin : lexer.argumentOffset(argument);
  if (whole >= 0) whole -= shift_;
  if (whole >= 0 && whole < begin) {
    add(whole, begin, argument == 0 ? YcluiPieceVariable : kindOfArgument(trial, argument, whole),
        argument);
  }
  ending_ = endingAtFault(trial);
  const bool reachesEnd = ending_ == YcluiEndsInQuote || ending_ == YcluiEndsInPoint;
  const std::string_view rest = text_.substr(static_cast<std::size_t>(std::max(0L, begin)));
  const std::size_t length = reachesEnd     ? rest.size()
                             : rest.empty() ? 0
                                            : LengthOfBadLiteral(rest, lexer);
  const bool isMissing = step_.code == YErrNothing;
  missesArgument_ = isMissing || ending_ == YcluiEndsInPoint;
  const Kind kind = ending_ == YcluiEndsInQuote ? YcluiPieceOpenQuote : YcluiPieceRefused;
  const long end = isMissing ? begin : std::max(0L, begin) + static_cast<long>(length);
  if (YcluiPiece* piece = add(begin, end, kind, argument)) piece->code = step_.code;
}

YcluiTextEnding YcluiPieces::endingAtFault(const YcluiTrial& trial) const {
  const YcluiLex& lexer = trial.lexer();
  const char* fault = lexer.faultText();
  const bool isWord = lexer.faultArgument() == 0 && lexer.faultOffset() == step_.begin;
  switch (step_.code) {
    case YErrNothing:
      return lexer.faultIsSeparated() ? YcluiEndsAfterComma : YcluiEndsWhole;
    case YErrEndOfInput:
      if (IsQuote(*fault) && !isWord) return YcluiEndsInQuote;
      return text_.ends_with('\\') ? YcluiEndsInEscape : YcluiEndsWhole;
    case YErrBadPoint:
      return IsHalfPoint(fault) ? YcluiEndsInPoint : YcluiEndsWhole;
    default:
      return YcluiEndsWhole;
  }
}

// White space, comments and separators up to the offset.
void YcluiPieces::addGap(long end) {
  while (static_cast<long>(end_) < end) {
    const std::string_view rest = text_.substr(end_, static_cast<std::size_t>(end) - end_);
    YcluiPiece piece;
    std::size_t length = LengthOfBlank(rest);
    if (length == 0) {
      length = LengthOfComment(rest);
      piece.kind = length == 0 ? YcluiPiecePunctuation : YcluiPieceComment;
    }
    if (length == 0) length = 1;
    piece.begin = static_cast<std::uint32_t>(end_);
    piece.end = static_cast<std::uint32_t>(end_ + length);
    piece.isSupposed = piece.kind == YcluiPiecePunctuation && step_.isSupposed;
    pieces_.push_back(piece);
    end_ += length;
  }
}

void YcluiPieces::addRest(const YcluiTrial& trial) {
  const long end = static_cast<long>(text_.size());
  if (end_ == text_.size()) return;
  if (trial.leavesText()) {
    step_.tokenId = YcluiIdNone;
    const bool isLeft = step_.verdict == Verdict::Open;
    addGap(isLeft ? static_cast<long>(trial.lexer().cursorOffset()) - shift_
                  : static_cast<long>(end_ + LengthOfBlank(text_.substr(end_))));
    add(static_cast<long>(end_), end, YcluiPieceUnread, 0);
  } else {
    addGap(end);
  }
}

// Null for what is in the unread text of before.
YcluiPiece* YcluiPieces::add(long begin, long end, Kind kind, int argument) {
  if (end < 0 || (end == 0 && begin < end)) return nullptr;
  addGap(begin);
  if (begin < end && static_cast<long>(end_) >= end) return nullptr;
  YcluiPiece piece;
  piece.begin = static_cast<std::uint32_t>(end_);
  piece.end = static_cast<std::uint32_t>(std::max(end, static_cast<long>(end_)));
  piece.kind = kind;
  piece.tokenId = step_.tokenId;
  piece.argument = argument;
  piece.isSupposed = step_.isSupposed;
  pieces_.push_back(piece);
  end_ = piece.end;
  return &pieces_.back();
}
