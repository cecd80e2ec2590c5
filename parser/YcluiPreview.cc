#include "parser/YcluiPreview.h"

#include <algorithm>
#include <new>
#include <string_view>

#include "foundation/YMemory.h"
#include "foundation/YString.h"
#include "lex/YcluiVariable.h"
#include "parser/YcluiCandidateIndex.h"
#include "parser/YcluiCandidates.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiParserCore.h"
#include "parser/YcluiPieces.h"
#include "parser/YcluiTrial.h"
#include "parser/YcluiTrialState.h"

namespace {

constexpr std::string_view VariableOpening = "${";

// Where the name of the variable form begins that is open at the end of the text; npos without one.
std::size_t OpenVariable(std::string_view text) {
  const std::size_t opening = text.rfind(VariableOpening);
  const bool isOpen =
      opening != std::string_view::npos && text.find('}', opening) == std::string_view::npos;
  return isOpen ? opening + VariableOpening.size() : std::string_view::npos;
}

bool IsPartOfToken(const YcluiPiece& piece) {
  switch (piece.kind) {
    case YcluiPieceBlank:
    case YcluiPieceComment:
    case YcluiPiecePunctuation:
    case YcluiPieceUnread:
      return false;
    default:
      return true;
  }
}

}  // namespace

// The trials of one preview, and what was found.
class YcluiPreviewCore {
 public:
  explicit YcluiPreviewCore(const YcluiParserCore& parser)
      : parser_(parser), trial_(parser), trialAt_(parser) {}

  void read(const char* text);
  bool read(const char* text, const YcluiPreviewState& before);
  YcluiPreviewState present();
  YcluiPreviewState state();
  YcluiPreviewState stateInside();
  void at(std::uint32_t offset);
  int findCandidates();

  YcluiPieces pieces;
  bool leavesCommand = false;
  YcluiTyping typing;
  YcluiCandidateIndex candidates;

 private:
  // What the candidates depend on. Anywhere-words are only ever added to a root.
  struct Place {
    const YcluiSyntaxNode* node = nullptr;  // null: nothing is cached
    std::uint64_t generation = 0;
    std::uint64_t wordChanges = 0;
    const YcluiSyntaxNode* anywhere = nullptr;
    std::size_t anywhereCount = 0;
    bool operator==(const Place&) const = default;
  };

  const YcluiParserCore& parser_;
  YcluiTrial trial_;
  YcluiTrial trialAt_;  // of the text in front of what is being typed
  YcluiPieces piecesAt_;
  YcluiTrialState before_;  // in which the text is read
  YcluiTrialState spare_;
  YString text_;
  YString prefix_;  // what the span has up to the offset, in lower case
  YcluiCandidates words_{&YcluiNfa::acceptingNodes};
  YcluiCandidates::Words found_;
  Place indexed_;  // of the candidates

  void readText(const char* text);
  static YcluiPreviewState shared(const YcluiTrialState& state);
  std::string_view view() const { return {text_.buffer, text_.length}; }
  bool canGrow(const YcluiPiece& piece, std::uint32_t offset) const;
  void setVariable(std::size_t begin, std::uint32_t offset);
  void describe();
  Place place() const;
  void indexWords(std::string_view prefix);
  void addWords(std::size_t anywhere);
  void addAliases(std::string_view prefix);
  void addVariables();
};

// --- Reading

void YcluiPreviewCore::read(const char* text) {
  trial_.present(before_);
  readText(text);
}

bool YcluiPreviewCore::read(const char* text, const YcluiPreviewState& before) {
  const bool isPresent = trial_.isPresent(before.generation_);
  if (!isPresent) {
    trial_.present(before_);
  } else if (before.open_ != nullptr) {
    before_ = *before.open_;
  } else {
    trial_.clear(before_);
    before_.generation = before.generation_;
    before_.isSupposed = before.isSupposed_;
    before_.assignments = YcluiAssignments(before.assignments_);
  }
  readText(text);
  return isPresent;
}

void YcluiPreviewCore::readText(const char* text) {
  text_.assign(text);
  pieces.read(trial_, before_, view());
  leavesCommand = trial_.isInCommand();
  typing = YcluiTyping();
  candidates.selectNone();
}

YcluiPreviewState YcluiPreviewCore::present() {
  trial_.present(spare_);
  return shared(spare_);
}

YcluiPreviewState YcluiPreviewCore::state() {
  trial_.end(spare_);
  return shared(spare_);
}

YcluiPreviewState YcluiPreviewCore::stateInside() {
  const YcluiTextEnding ending = pieces.ending();
  if (ending != YcluiEndsAfterComma && ending != YcluiEndsInPoint) return state();
  trial_.endInside(spare_);
  return shared(spare_);
}

YcluiPreviewState YcluiPreviewCore::shared(const YcluiTrialState& state) {
  YcluiPreviewState result;
  if (state.generation == 0) return result;
  result.generation_ = state.generation;
  result.isSupposed_ = state.isSupposed;
  if (state.isBetweenCommands()) {
    result.assignments_ = state.assignments.last();
  } else {
    const YAllocator<YcluiTrialState> allocator;
    result.open_ = std::allocate_shared<YcluiTrialState>(allocator, state);
  }
  return result;
}

// --- What is being typed

// Whether a byte typed at the offset, which is in the piece or at its end, would belong to it.
bool YcluiPreviewCore::canGrow(const YcluiPiece& piece, std::uint32_t offset) const {
  if (offset < piece.end || piece.argument > 0) return true;
  const char last = text_.buffer[piece.end - 1];
  const bool isByte = piece.end - piece.begin == 1 && parser_.lexer->isDelimiter(last);
  const bool isReference = piece.kind == YcluiPieceVariable && piece.tokenId == YcluiIdAlias;
  return !isByte && !isReference && last != ':';
}

void YcluiPreviewCore::at(std::uint32_t offset) {
  typing = YcluiTyping();
  candidates.selectNone();
  offset = std::min(offset, static_cast<std::uint32_t>(text_.length));
  typing.begin = typing.end = offset;
  int index = offset == 0 ? -1 : pieces.indexAt(offset - 1);
  if (index >= 0) {
    const YcluiPiece& piece = pieces.at(index);
    if (piece.kind == YcluiPieceComment || piece.kind == YcluiPieceUnread) return;
    if (IsPartOfToken(piece) && canGrow(piece, offset)) {
      typing.begin = piece.begin;
      typing.end = piece.end;
      // A part that is refused follows the rest of its argument without a gap.
      for (; index > 0 && pieces.at(index - 1).argument == piece.argument &&
             IsPartOfToken(pieces.at(index - 1));
           --index) {
        typing.begin = pieces.at(index - 1).begin;
      }
    }
  }
  piecesAt_.read(trialAt_, before_, view().substr(0, typing.begin));
  prefix_.assign(text_.buffer + typing.begin, offset - typing.begin);
  describe();
  const std::size_t name = OpenVariable({prefix_.buffer, prefix_.length});
  if (name != std::string_view::npos) setVariable(typing.begin + name, offset);
  prefix_.toLower();  // as the names of the dictionary are
}

void YcluiPreviewCore::setVariable(std::size_t begin, std::uint32_t offset) {
  typing.kind = YcluiTypingVariable;
  typing.begin = static_cast<std::uint32_t>(begin);
  const std::size_t end = view().find_first_of("} \t\n\"',", offset);
  typing.end = std::min(typing.end, static_cast<std::uint32_t>(std::min(end, view().size())));
  prefix_.assign(text_.buffer + begin, offset - begin);
}

// By where the text in front of it ends.
void YcluiPreviewCore::describe() {
  typing.isSupposed = trialAt_.isSupposed();
  const bool isMissing = piecesAt_.missesArgument();
  if (trialAt_.leavesText() && !isMissing) return;
  if (!trialAt_.isOpen() && !isMissing) {
    typing.kind = YcluiTypingWord;
    return;
  }
  const YcluiToken& token = *trialAt_.token();
  typing.kind = YcluiTypingArgument;
  typing.tokenId = token.id();
  typing.word = token.string();
  typing.argument = isMissing ? trialAt_.lexer().faultArgument() : token.argc();
  typing.type = YcluiTypeOfArgument(trialAt_.lexer(), token, typing.argument);
}

// --- Candidates

int YcluiPreviewCore::findCandidates() {
  candidates.selectNone();
  const std::string_view prefix{prefix_.buffer, prefix_.length};
  if (typing.kind == YcluiTypingVariable) {
    addVariables();
  } else if (typing.kind == YcluiTypingWord) {
    const Place here = place();
    if (here.node == nullptr) {
      indexWords(prefix);
    } else if (!(here == indexed_)) {
      indexWords("");
    }
    indexed_ = here;
  } else {
    return 0;
  }
  candidates.select(prefix);
  return static_cast<int>(candidates.count());
}

// Which words an interrupted command admits is asked anew each time.
YcluiPreviewCore::Place YcluiPreviewCore::place() const {
  Place place;
  const YcluiNfa& walker = trialAt_.walker();
  if (trialAt_.interrupted() != nullptr || walker.isTerminated() != 0) return place;
  place.node = walker.place();
  place.generation = walker.generation();
  place.wordChanges = parser_.lexer->wordChanges();
  place.anywhere = parser_.frames.indefiniteRoot();
  for (YcluiSuccessorIterator i(*place.anywhere); i.ring != nullptr; ++i) ++place.anywhereCount;
  return place;
}

void YcluiPreviewCore::indexWords(std::string_view prefix) {
  candidates.clear();
  words_.findAdmitted(trialAt_.walker(), trialAt_.interrupted(), *parser_.lexer, prefix, found_);
  const std::size_t anywhere = found_.size();
  YcluiCandidates::AddSuccessors(*parser_.frames.indefiniteRoot(), *parser_.lexer, prefix, found_);
  addWords(anywhere);
  addAliases(prefix);
  candidates.sort();
}

// Those whose name finds them.
void YcluiPreviewCore::addWords(std::size_t anywhere) {
  for (std::size_t i = 0; i < found_.size(); ++i) {
    const YcluiKeyword* record = parser_.lexer->keyword(found_[i]);
    if (record == nullptr || record->name() != found_[i]) continue;
    const auto kind = i < anywhere ? YcluiCandidateNext : YcluiCandidateAnywhere;
    candidates.add({found_[i], kind, record->id()});
  }
}

void YcluiPreviewCore::addAliases(std::string_view prefix) {
  const YDictionary* words = parser_.lexer->words();
  if (words == nullptr) return;
  for (YAssocSetItr i(*words); i.item != nullptr; ++i) {
    const auto* record = static_cast<const YcluiKeyword*>(i.item);
    if (record->type() != YcluiTokenAlias || !record->nameView().starts_with(prefix)) continue;
    candidates.add({record->name(), YcluiCandidateAlias, YcluiIdAlias});
  }
}

// Those that the text sets are known, too.
void YcluiPreviewCore::addVariables() {
  candidates.clear();
  indexed_ = Place();
  for (const YDictionary* names : {parser_.lexer->variables(), trialAt_.lexer().variables()}) {
    if (names == nullptr) continue;
    for (YAssocSetItr i(*names); i.item != nullptr; ++i) {
      const char* name = static_cast<const YcluiVariable*>(i.item)->name();
      candidates.add({name, YcluiCandidateVariable, YcluiIdNone});
    }
  }
  candidates.sort();
}

// --- The operations

YcluiPreview::YcluiPreview(const YcluiParser& parser)
    : core_(YChecked(new (std::nothrow) YcluiPreviewCore(*parser.core))) {}

YcluiPreview::~YcluiPreview() = default;

void YcluiPreview::read(const char* text) {
  core_->read(text);
}

bool YcluiPreview::read(const char* text, const YcluiPreviewState& before) {
  return core_->read(text, before);
}

YcluiPreviewState YcluiPreview::present() const {
  return core_->present();
}

YcluiPreviewState YcluiPreview::state() const {
  return core_->state();
}

YcluiPreviewState YcluiPreview::stateInside() const {
  return core_->stateInside();
}

int YcluiPreview::count() const {
  return core_->pieces.count();
}

const YcluiPiece& YcluiPreview::piece(int index) const {
  return core_->pieces.at(index);
}

int YcluiPreview::pieceAt(std::uint32_t offset) const {
  return core_->pieces.indexAt(offset);
}

int YcluiPreview::firstRefused() const {
  for (int i = 0; i < count(); ++i) {
    if (piece(i).kind == YcluiPieceRefused || piece(i).kind == YcluiPieceOpenQuote) return i;
  }
  return -1;
}

YcluiTextEnding YcluiPreview::ending() const {
  return core_->pieces.ending();
}

bool YcluiPreview::leavesCommand() const {
  return core_->leavesCommand;
}

const YcluiTyping& YcluiPreview::at(std::uint32_t offset) {
  core_->at(offset);
  return core_->typing;
}

int YcluiPreview::findCandidates() {
  return core_->findCandidates();
}

const YcluiCandidate& YcluiPreview::candidate(int index) const {
  return core_->candidates.at(static_cast<std::size_t>(index));
}
