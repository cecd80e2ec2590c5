#include "tests/support/PreviewCheck.h"

#include <algorithm>
#include <set>
#include <sstream>
#include <vector>

#include "lex/YcluiVariable.h"
#include "tests/support/syntax.h"

namespace {

constexpr int MostPieces = 24;  // of a text or a syntax
constexpr int NoCommand = 1 << 30;

constexpr const char* TextParts[] = {
    " ",    "a ",       "b ", "c ",    "d ", "e ",    "box: ", "at: ",  "say: ",
    "1,2 ", "3 , 4",    ",",  "\"q\"", "\"", "'",     "x ",    "y ",    "z",
    "${v}", "${w}[1]",  "${", "${v}=", "7",  "7.5",   "# c\n", "nope ", "free: ",
    "\\-",  "\x95\x5C", "\n", "-",     ";",  "${n} ", "lo ",   "LONG ", "\"a${v}b\"",
};
constexpr const char* SyntaxParts[] = {
    "1 ",  "2 ", "3 ", "4{c} ", "5 ",    "6{c} ",     "16 ",          "18 ", "19 ", "( ", ") ",
    ")* ", "| ", "[ ", "] ",    "1{c} ", "2^100,90 ", "3^90,100{c} ", "12 ", "14 ", "13 "};

template <std::size_t Count>
std::string Join(Choices& choices, const char* const (&parts)[Count], unsigned most) {
  std::string text;
  for (unsigned i = choices.below(most); i > 0; --i) text += parts[choices.below(Count)];
  return text;
}

bool IsWordPiece(const YcluiPiece& piece) {
  return piece.argument == 0 && piece.kind >= YcluiPieceWord &&
         piece.kind != YcluiPiecePunctuation && piece.kind != YcluiPieceUnread;
}

// The pieces from an offset on, blanks and comments left out. isSupposed is left out.
std::string PiecesOf(const YcluiPreview& preview, std::uint32_t from = 0) {
  std::ostringstream out;
  for (int i = 0; i < preview.count(); ++i) {
    const YcluiPiece& piece = preview.piece(i);
    if (piece.kind <= YcluiPieceComment || piece.end <= from) continue;
    out << std::max(piece.begin, from) - from << '-' << piece.end - from << ':' << piece.kind << ' '
        << piece.tokenId << ' ' << piece.argument << ' ' << piece.code << ' ' << piece.endsCommand
        << ';';
  }
  out << preview.ending() << preview.leavesCommand();
  return out.str();
}

bool IsRefused(const YcluiPiece& piece) {
  return piece.kind == YcluiPieceRefused || piece.kind == YcluiPieceOpenQuote;
}

}  // namespace

PreviewCheck::PreviewCheck(Choices& choices) : choices_(choices), preview_(*this), onward_(*this) {
  const YcluiValueType types[] = {YcluiValueInteger, YcluiValueFloat, YcluiValuePoint,
                                  YcluiValueString};
  std::uint32_t id = 0;
  for (const char* word : {"a", "b", "c", "d", "e"}) lex()->addKeyword(word, nullptr, ++id);
  lex()->addKeyword("box:", 2, types, ++id);
  lex()->addKeyword("at:", 1, &types[2], 16);
  lex()->addKeyword("say:", 1, &types[3], 18);
  lex()->addKeyword("longword", "lo", 19);
  lex()->addKeyword(';', 12);
  lex()->addKeyword("ever", nullptr, 13);
  // Its short form is no beginning of it, so its name finds the other word.
  lex()->addKeyword("never", "x", 14);
  lex()->addKeyword("nevermore", "ne", 15);
  setVariable("v", YAttribValue("a b", 0));
  YAttribValue five;
  five.SetLong(5);
  setVariable("n", five);
  setVariable("w", YAttribValue("box: 1,", 0), 1);
  // An alias of itself would be read many times over.
  std::string expansion = text();
  std::erase_if(expansion, [](char byte) { return byte == 'x' || byte == 'y'; });
  setAlias("x", expansion.c_str());
  expansion = text();
  std::erase(expansion, 'y');
  setAlias("y", expansion.c_str());
  setSyntaxGraph(SyntaxOf(language()).release());
  if (choices_.below(2) == 1) addIndefiniteNode(new YcluiSyntaxNode(13, "c"));
  setTokCallback(
      [](void* me, YcluiToken& token) {
        auto& self = *static_cast<PreviewCheck*>(me);
        Outcome& outcome = self.outcomes_[self.lastTokenOffset()];
        self.errors_ = YErr.count();
        ++self.events_;
        outcome.isExpanded = outcome.isExpanded || token.id() == YcluiIdAlias;
        return YcluiTokenPass;
      },
      this);
  setTokRefuseCallback(
      [](void* me, const YcluiToken&, std::uint32_t code) {
        auto& self = *static_cast<PreviewCheck*>(me);
        const bool isRecorded = YErr.count() != self.errors_ && code != YErrAmbiguous;
        self.refuse(isRecorded ? code : YErrNothing);
      },
      this);
  setSynCallback(
      [](void* me, const char*, const char*) {
        auto& self = *static_cast<PreviewCheck*>(me);
        self.outcomes_[self.lastTokenOffset()].endsCommand = true;
        ++self.events_;
      },
      this);
  // What is refused because it is nested too deep is not reported otherwise.
  YErr.setListener(
      [](void* me, unsigned code, YErrSeverity) {
        if (code == YErrTooDeep) static_cast<PreviewCheck*>(me)->refuse(code);
      },
      this);
}

void PreviewCheck::refuse(unsigned code) {
  Outcome& outcome = outcomes_[lastTokenOffset()];
  if (!outcome.isRefused) outcome.code = code;
  outcome.isRefused = true;
  errors_ = YErr.count();
  ++events_;
}

YWord PreviewCheck::evaluate(const char* /*text*/) {
  firstCommand_ = std::min(firstCommand_, lastTokenOffset());
  ++events_;
  return 1;
}

std::string PreviewCheck::language() {
  return Join(choices_, SyntaxParts, MostPieces);
}

std::string PreviewCheck::text() {
  return Join(choices_, TextParts, MostPieces);
}

std::string PreviewCheck::step() {
  switch (choices_.below(10)) {
    case 0:
      pushFrame();
      state_ = YcluiPreviewState();
      return "";
    case 1:
      popFrame();
      state_ = YcluiPreviewState();
      return "";
    case 2:
      dropOpenToken();
      state_ = YcluiPreviewState();
      return "";
    case 3:
      return readFromStates();
    case 4:
      return readLinesAsOne();
    default:
      return read(text());
  }
}

// Everything of the parser that can be seen.
std::string PreviewCheck::observed() const {
  std::ostringstream out;
  out << nestingDepth() << wholeLine() << '|' << lastTokenOffset() << '|' << lastFaultOffset()
      << '|' << YErr.count() << '|' << lex()->wordChanges() << '|' << lex()->unreadText() << '|'
      << events_ << '|' << isAliasRun() << tokenIsOpen() << lex()->cursorOffset();
  if (openToken() != nullptr) out << openToken()->argc() << openToken()->wholeString();
  for (YWord i = 0; i < numberOfToken(); ++i) out << tokenAt(i)->wholeString() << ',';
  YString_Array words;
  possibleWords(words);
  for (int i = 0; i < words.size(); ++i) out << words[i].buffer << ' ';
  for (YAssocSetItr i(*lex()->variables()); i.item != nullptr; ++i) {
    auto& variable = *static_cast<YcluiVariable*>(i.item);
    out << variable.name() << '=' << variable.elementCount();
    if (variable.matches("presenttime") != 0) continue;
    for (std::uint32_t k = 0; k < variable.elementCount(); ++k) {
      YAttribValue value(*variable.element(k));
      if (StringifyValue(value) != 0) out << value.GetString() << ',';
    }
    if (variable.valuePointer() == nullptr) continue;
    YAttribValue value(*variable.valuePointer());
    if (StringifyValue(value) != 0) out << value.GetString();
  }
  return out.str();
}

std::string PreviewCheck::read(const std::string& text) {
  const std::string before = observed();
  preview_.read(text.c_str());
  const std::string wrong = wrongCandidates(text);
  if (!wrong.empty()) return wrong;
  preview_.read(text.c_str());
  const std::string wrongState = readOn(text);
  if (!wrongState.empty()) return wrongState;
  if (observed() != before) return "something changed: " + before + " -> " + observed();
  outcomes_.clear();
  firstCommand_ = NoCommand;
  errors_ = YErr.count();
  const bool wasUnread = *lex()->unreadText() != '\0';
  interpret(text.c_str());
  const std::string different = wasUnread ? "" : differences(text);
  return different.empty() ? "" : different + " in \"" + text + "\"";
}

// The texts before, read one after another, leave what the parser that interpreted them is in.
std::string PreviewCheck::readOn(const std::string& text) {
  if (!onward_.read(text.c_str(), state_) && state_ != YcluiPreviewState()) return "void state";
  state_ = onward_.state();
  const std::string pieces = PiecesOf(onward_);
  return pieces == PiecesOf(preview_) ? "" : "another state before \"" + text + "\"";
}

// A state can be returned to, and what follows does not distinguish equal ones.
std::string PreviewCheck::readFromStates() {
  std::vector<YcluiPreviewState> states = {preview_.present()};
  std::vector<std::string> texts;
  std::vector<std::string> pieces;
  for (int i = 0; i < 4; ++i) {
    texts.push_back(text());
    preview_.read(texts.back().c_str(), states.back());
    pieces.push_back(PiecesOf(preview_));
    states.push_back(preview_.state());
  }
  for (std::size_t i = texts.size(); i-- > 0;) {
    onward_.read(texts[i].c_str(), states[i]);
    if (PiecesOf(onward_) != pieces[i]) return "other pieces from a state: \"" + texts[i] + "\"";
    if (onward_.state() != states[i + 1]) return "another state after \"" + texts[i] + "\"";
    for (std::size_t other = 0; other < i; ++other) {
      if (states[other] != states[i]) continue;
      onward_.read(texts[i].c_str(), states[other]);
      if (PiecesOf(onward_) != pieces[i]) return "equal states differ: \"" + texts[i] + "\"";
    }
  }
  return "";
}

// A line that ends after a comma, and the next one, mean what they mean together.
std::string PreviewCheck::readLinesAsOne() {
  const std::string first = text() + "\n";
  const std::string second = text() + "\n";
  preview_.read(first.c_str());
  const YcluiTextEnding ending = preview_.ending();
  if (ending != YcluiEndsAfterComma && ending != YcluiEndsInPoint) return "";
  // Of a word that is refused in the first line, the arguments in the next one show it.
  if (preview_.piece(preview_.firstRefused()).argument == 0) return "";
  onward_.read(second.c_str(), preview_.stateInside());
  preview_.read((first + second).c_str());
  const std::string pieces = PiecesOf(preview_, static_cast<std::uint32_t>(first.size()));
  if (PiecesOf(onward_) == pieces) return "";
  return "other in one text: \"" + first + second + "\"";
}

// Whether it is the part of a variable form that could not be read.
bool PreviewCheck::followsForm(int index) const {
  if (index == 0) return false;
  const YcluiPiece& before = preview_.piece(index - 1);
  return before.kind == YcluiPieceVariable && before.argument == 0 && before.tokenId == YcluiIdNone;
}

std::string PreviewCheck::differences(const std::string& text) {
  std::uint32_t end = 0;
  std::map<int, Outcome> previewed;
  int token = -1;
  for (int i = 0; i < preview_.count(); ++i) {
    const YcluiPiece& piece = preview_.piece(i);
    if (piece.begin != end) return "gap before " + std::to_string(piece.begin);
    end = piece.end;
    const int begin = static_cast<int>(piece.begin);
    if (IsWordPiece(piece) && !(IsRefused(piece) && followsForm(i))) token = begin;
    const std::string unread = lex()->unreadText();
    const bool isLeft = piece.kind == YcluiPieceUnread && tokenIsOpen() != 0;
    if (isLeft && !unread.ends_with(text.substr(piece.begin)))
      return "other text is unread: [" + unread + "] [" + text.substr(piece.begin) + "]";
    if (token < 0 || piece.kind == YcluiPieceUnread) continue;
    const bool isSupposed = token > firstCommand_;
    if (IsWordPiece(piece) && !IsRefused(piece) && piece.isSupposed != isSupposed) {
      return "supposed at " + std::to_string(begin);
    }
    Outcome& outcome = previewed[token];
    if (IsRefused(piece) && !outcome.isRefused) {
      outcome.isRefused = true;
      outcome.code = piece.code;
    }
    outcome.endsCommand = outcome.endsCommand || piece.endsCommand;
  }
  if (end != text.size()) return "text is left after " + std::to_string(end);
  if ((preview_.ending() == YcluiEndsInToken) != (tokenIsOpen() != 0) && outcomes_.size() > 0 &&
      *lex()->unreadText() != '\0') {
    return "open token";
  }
  if (tokenIsOpen() != 0) previewed.erase(token);
  for (auto& [offset, outcome] : outcomes_) {
    const Outcome& seen = previewed[offset];
    if (offset < 0 || (tokenIsOpen() != 0 && offset == token)) continue;
    if (seen.isRefused != outcome.isRefused) return "verdict at " + std::to_string(offset);
    if (seen.code != outcome.code) return "code at " + std::to_string(offset);
    if (!outcome.isExpanded && seen.endsCommand != outcome.endsCommand)
      return "end at " + std::to_string(offset);
  }
  const bool isInCommand = numberOfToken() > 0 || tokenIsOpen() != 0;
  return preview_.leavesCommand() == isInCommand ? "" : "command left open";
}

// At the end of the text, exactly what is offered is accepted.
std::string PreviewCheck::wrongCandidates(const std::string& text) {
  const YcluiTyping typing = preview_.at(static_cast<std::uint32_t>(text.size()));
  // A word would continue what is unread.
  if (typing.kind != YcluiTypingWord || *lex()->unreadText() != '\0') return "";
  const std::string prefix = text.substr(typing.begin);
  for (const char c : prefix) {
    if (c < 'a' || c > 'z') return "";
  }
  std::set<std::string> offered;
  const int count = preview_.findCandidates();
  for (int i = 0; i < count; ++i) {
    const YcluiCandidate& candidate = preview_.candidate(i);
    const bool isNew = offered.insert(candidate.name).second;
    if (!isNew) return std::string("offered twice: ") + candidate.name;
    if (candidate.kind == YcluiCandidateAlias) offered.erase(candidate.name);
  }
  for (const char* name :
       {"a", "b", "c", "d", "e", "box:", "at:", "say:", "longword", ";", "ever", "never"}) {
    if (!std::string(name).starts_with(prefix)) continue;
    preview_.read((text.substr(0, typing.begin) + name + " ").c_str());
    const int index = preview_.pieceAt(typing.begin);
    const bool isAccepted = index >= 0 && !IsRefused(preview_.piece(index)) &&
                            preview_.piece(index).kind != YcluiPieceUnread;
    if (isAccepted != (offered.count(name) != 0))
      return std::string("offered or not: ") + name + " in \"" + text + "\"";
  }
  return "";
}
