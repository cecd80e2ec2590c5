#include "parser/YcluiTrial.h"

#include "foundation/YcluiLimits.h"
#include "parser/YcluiParserCore.h"

YcluiTrial::YcluiTrial(const YcluiParserCore& core) : core_(core), lexer_(core.lexer.get()) {}

void YcluiTrial::present(YcluiTrialState& state) const {
  const YcluiLineParser* frame = core_.frames.current();
  state.generation = 0;
  state.assignments = YcluiAssignments();
  state.isSupposed = false;
  if (frame == nullptr || !core_.workToken.exists()) return;
  state.walker = *frame;
  state.generation = frame->generation();
  state.first = frame->firstNode();
  state.hasTokens = frame->numberOfToken() > 0;
  keepToken(state, core_.workToken, YcluiTrialLex::ExpandedIn(*core_.lexer));
  state.unread.assign(core_.lexer->more() != 0 ? core_.lexer->unreadText() : "");
}

bool YcluiTrial::isPresent(std::uint64_t generation) const {
  const YcluiLineParser* frame = core_.frames.current();
  return generation != 0 && frame != nullptr && frame->generation() == generation;
}

void YcluiTrial::clear(YcluiTrialState& state) const {
  state.walker = *core_.frames.current();
  state.clear();
}

void YcluiTrial::keepOpen(YcluiTrialState& state, const YcluiToken& token, std::size_t expanded) {
  state.word.assign(token.string());
  state.tokenId = token.id();
  state.type = token.type();
  state.argc = token.argc();
  state.expanded = expanded;
}

void YcluiTrial::keepToken(YcluiTrialState& state, const YcluiWorkToken& token,
                           std::size_t expanded) {
  state.isOpen = token.isOpen();
  if (state.isOpen) keepOpen(state, *token, expanded);
}

void YcluiTrial::begin(const YcluiTrialState& state, std::string_view text) {
  isOver_ = state.generation == 0 || !token_.exists();
  depth_ = expansions_ = 0;
  isSupposed_ = hasTokens_ = false;
  leavesText_ = isOver_;
  generation_ = state.generation;
  if (isOver_) return;
  const YErrAside aside;
  walker_ = state.walker;
  first_ = state.first;
  interrupted_ = core_.frames.interruptedNode();
  hasTokens_ = state.hasTokens;
  isSupposed_ = state.isSupposed;
  lexer_.begin();
  token_.dropOpen();
  setVariables(state.assignments);
  if (state.isOpen) {
    token_.open(state.word.buffer, state.tokenId, state.type, state.argc);
    lexer_.setExpanded(state.expanded);
  }
  lexer_.setString(state.unread.buffer);
  text_.assign(text.data(), text.size());
  if (lexer_.more() != 0) {
    unreadBefore_ = static_cast<long>(state.unread.length);
    lexer_.putString(text_.buffer);
  } else {
    unreadBefore_ = 0;
    lexer_.setString(text_.buffer);
  }
}

// The lexer keeps what it has if it is part of what is wanted. An assignment that failed may have
// left it a copy of a variable, so it keeps nothing when nothing is wanted.
void YcluiTrial::setVariables(const YcluiAssignments& wanted) {
  if (wanted.count() == 0 || !assignments_.isBeginningOf(wanted)) {
    lexer_.forgetVariables();
    assignments_ = YcluiAssignments();
  }
  missing_.clear();
  const YcluiAssignment* const known = assignments_.last().get();
  for (const auto* i = wanted.last().get(); i != known; i = i->before.get()) {
    missing_.push_back(i);
  }
  for (; !missing_.empty(); missing_.pop_back()) {
    lexer_.setString(missing_.back()->text.buffer);
    lexer_.getNextToken(token_.forReading());
  }
  assignments_ = wanted;
}

void YcluiTrial::end(YcluiTrialState& state) const {
  state.generation = generation_;
  if (generation_ == 0) return;
  state.walker = walker_;
  state.first = first_;
  state.hasTokens = hasTokens_;
  state.isSupposed = isSupposed_;
  keepToken(state, token_, YcluiTrialLex::ExpandedIn(lexer_));
  state.unread.assign(lexer_.unreadText());
  state.assignments = assignments_;
}

void YcluiTrial::endInside(YcluiTrialState& state) const {
  end(state);
  state.unread.assign(lexer_.faultText());
  state.isOpen = true;
  keepOpen(state, *token_, YcluiTrialLex::ExpandedIn(lexer_));
}

bool YcluiTrial::next(Step& step) {
  const YErrAside aside;
  if (isOver_ || !findToken()) return false;
  step = Step();
  step.depth = depth_;
  step.isSupposed = isSupposed_;
  read(step, aside);
  return true;
}

// Goes back to the text around an alias at the end of the alias's text.
bool YcluiTrial::findToken() {
  for (; lexer_.more() == 0; --depth_) {
    if (depth_ == 0) return false;
    lexer_.popString();
  }
  return true;
}

void YcluiTrial::read(Step& step, const YErrAside& aside) {
  YcluiToken& token = token_.forReading();
  step.isContinued = token_.isOpen();
  if (depth_ == 0 && !step.isContinued) {
    lexer_.beginExpansion();
    expansions_ = 0;
  }
  const bool isRead = lexer_.getNextToken(token) != 0;
  step.tokenId = token.id();
  step.begin = lexer_.tokenOffset();
  step.wordEnd = lexer_.wordEnd();
  if (!isRead) {
    step.verdict = Verdict::Unread;
    step.code = aside.code();
    if (depth_ == 0) leavesText_ = step.code != YErrNothing && lexer_.more() == 0;
    if (lexer_.faultArgument() > 0) {
      lookAhead(step);
    } else {
      step.tokenId = YcluiIdNone;
    }
    token_.dropOpen();
  } else if (token_.isOpen()) {
    step.verdict = Verdict::Open;
    lookAhead(step);
    leaveText();
  } else if (token.id() == YcluiIdVariable) {
    step.verdict = Verdict::Set;
    const std::size_t length = static_cast<std::size_t>(step.wordEnd - step.begin);
    assignments_.add({lexer_.unreadText() - length, length});
  } else if (token.id() == YcluiIdAlias) {
    expand(step, aside);
  } else {
    accept(step);
  }
}

// An open token ends its text: the rest of an alias's text is dropped.
void YcluiTrial::leaveText() {
  if (depth_ > 0) {
    lexer_.popString();
    --depth_;
  } else {
    isOver_ = true;
    leavesText_ = lexer_.more() != 0;
  }
}

void YcluiTrial::expand(Step& step, const YErrAside& aside) {
  const YAttribValue* text = (*token_)[1];
  step.verdict = Verdict::Refused;
  if (text == nullptr) return;
  if (expansions_ >= YcluiMostExpansions) {
    step.code = YErrTooDeep;
    return;
  }
  ++expansions_;
  if (lexer_.pushString(text->GetString()) == 0) {
    step.code = aside.code();
    return;
  }
  ++depth_;
  step.verdict = Verdict::Replaced;
}

void YcluiTrial::accept(Step& step) {
  step.node = stepInto(step);
  step.verdict = step.node == nullptr ? Verdict::Refused : Verdict::Accepted;
  if (step.node == nullptr) return;
  hasTokens_ = true;
  if (walker_.actionText(*step.node) != nullptr) isSupposed_ = true;
  if (walker_.isTerminated() == 0) return;
  step.endsCommand = true;
  walker_.reset();
  first_ = nullptr;
  hasTokens_ = false;
}

// The step and the priority check. Null when the token is refused.
const YcluiSyntaxNode* YcluiTrial::stepInto(Step& step) {
  YcluiSyntaxNode* before = walker_.currentSyntaxNode();
  const YcluiSyntaxNode* accepted = walker_.stepNext(token_->id());
  if (accepted == nullptr) return nullptr;
  const YcluiSyntaxNode* now = walker_.currentSyntaxNode();
  const bool isOfCommand = now->tokenId != 0 && now->kind != YcluiNodeIndefinite;
  const YcluiSyntaxNode* first = first_ == nullptr && isOfCommand ? now : first_;
  if (interrupted_ == nullptr || first == nullptr || interrupted_->admitsInterruptBy(*first) != 0) {
    first_ = first;
    return accepted;
  }
  if (accepted->kind != YcluiNodeIndefinite) walker_.goBack(before);
  step.code = YErrInterruptRefused;
  return nullptr;
}

void YcluiTrial::lookAhead(Step& step) {
  const YcluiSyntaxNode* first = first_;
  Step ahead;
  spare_ = walker_;
  step.node = stepInto(ahead);
  walker_ = spare_;
  first_ = first;
}
