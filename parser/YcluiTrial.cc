#include "parser/YcluiTrial.h"

#include "foundation/YcluiLimits.h"
#include "parser/YcluiParserCore.h"

YcluiTrial::YcluiTrial(const YcluiParserCore& core) : core_(core), lexer_(core.lexer.get()) {}

void YcluiTrial::begin(std::string_view text) {
  const YcluiLineParser* frame = core_.frames.current();
  isOver_ = frame == nullptr || !token_.exists();
  depth_ = expansions_ = 0;
  isSupposed_ = hasTokens_ = false;
  leavesText_ = isOver_;
  if (isOver_) return;
  const YErrAside aside;
  walker_ = *frame;
  first_ = frame->firstNode();
  interrupted_ = core_.frames.interruptedNode();
  hasTokens_ = frame->numberOfToken() > 0;
  token_.forReading() = *core_.workToken;
  lexer_.begin();
  const char* unread = core_.lexer->unreadText();
  lexer_.setString(unread);
  text_.assign(text.data(), text.size());
  if (lexer_.more() != 0) {
    unreadBefore_ = static_cast<long>(std::string_view(unread).size());
    lexer_.putString(text_.buffer);
  } else {
    unreadBefore_ = 0;
    lexer_.setString(text_.buffer);
  }
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
