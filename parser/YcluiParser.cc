// Text in, tokens through the callbacks, the syntax and the log, commands out.

#include "parser/YcluiParser.h"

#include <cstring>
#include <new>
#include <ostream>
#include <utility>

#include "foundation/YErr.h"
#include "parser/YcluiCommandTemplate.h"
#include "parser/YcluiParserScopes.h"
#include "platform/engine/ScmVMExternal.h"

namespace {

long LengthOf(const char* text) {
  return static_cast<long>(std::strlen(text));
}

}  // namespace

YcluiParser::YcluiParser(YWord contextWord)
    : context(contextWord),
      lexer(new (std::nothrow) YcluiLex),
      workToken(new (std::nothrow) YcluiToken) {
  joinLive();
}

YcluiParser::~YcluiParser() {
  leaveLive();
  tellGone();
  leaveMortuary();
  closeLog();
  closeAllPlayback();
  delete lexer;
  dropAllFrames();
  delete graph;
  deleteIndefiniteNodes();
  delete workToken;
  for (; spareTokens.isEmpty() == 0; spareTokens.drop()) delete spareTokens.topSlot();
}

// --- Text

int YcluiParser::interpret(const char* text) {
  if (currentFrame() == nullptr) return static_cast<int>(cluiWarning(YErrNoSyntax));
  const Running scope(*this);
  if (text == nullptr) text = "";
  if (interpretDepth - suspendedDepth >= YcluiMostNestedCommands) return leaveToLoopOutside(text);
  takeText(text);
  const Depth depth(interpretDepth);
  int taken = 0;
  while (lexer->more() != 0) {
    if (readToken() == 0) {
      refuseWord();
    } else if (workToken->underConstruction() != 0) {
      showOpenToken();
      break;
    } else if (workToken->id() == YcluiIdVariable) {
      echoCallback();
    } else if (pushWorkToken() == 1) {
      ++taken;
    }
  }
  return taken;
}

void YcluiParser::exhaust() {
  if (lexer != nullptr) lexer->reset();
}

int YcluiParser::leaveToLoopOutside(const char* text) {
  if (lexer->more() == 0) return static_cast<int>(cluiError(YErrTooDeep));
  appendText(text);
  return 0;
}

void YcluiParser::takeText(const char* text) {
  if (interpretDepth == 0) beginOuterText();
  if (lexer->more() != 0) {
    appendText(text);
    return;
  }
  textBase += textLength;
  textLength = LengthOf(text);
  lexer->setString(text);
}

void YcluiParser::appendText(const char* text) {
  textLength += LengthOf(text);
  lexer->putString(text);
}

// From now on offsets count from the end of all text that came before.
void YcluiParser::beginOuterText() {
  outerSuspended = suspendedDepth;
  tokenOffset -= textBase + textLength;
  textBase = -textLength;
}

YWord YcluiParser::readToken() {
  if (workTokenLent) renewWorkToken();
  // The texts of aliases are not part of the text that the offset speaks of.
  const bool isOutermost = suspendedDepth == outerSuspended;
  const bool begins = workToken->underConstruction() == 0;
  if (begins && isOutermost) {
    lexer->beginExpansion();
    expansions = 0;
  }
  const YWord good = lexer->getNextToken(*workToken);
  if (begins && isOutermost) tokenOffset = textBase + lexer->tokenOffset();
  return good;
}

int YcluiParser::lastFaultOffset() const {
  return outerOffset(lexer == nullptr ? -1 : lexer->faultOffset());
}

int YcluiParser::lastArgumentOffset(int index) const {
  return outerOffset(lexer == nullptr ? -1 : lexer->argumentOffset(index));
}

int YcluiParser::outerOffset(long lexerOffset) const {
  const bool isKnown = lexerOffset >= 0 && suspendedDepth == outerSuspended;
  return static_cast<int>(isKnown ? textBase + lexerOffset : tokenOffset);
}

// The work token stays with whoever uses it. A copy takes its place, since what the lexer leaves in
// a token shows in the next one.
void YcluiParser::renewWorkToken() {
  const YcluiToken* used = workToken;
  if (spareTokens.isEmpty() != 0) {
    workToken = YChecked(new (std::nothrow) YcluiToken);
  } else {
    workToken = spareTokens.topSlot();
    spareTokens.drop();
  }
  *workToken = *used;
  workTokenLent = false;
}

void YcluiParser::refuseWord() {
  const TokenUse token(*this);
  refuseCallback(*token);
  echoCallback();
  workToken->setNeedMore(0);
}

YWord YcluiParser::pushWorkToken() {
  const TokenUse token(*this);
  if (tokProc != nullptr) renewWorkToken();  // a callback may change the one it gets
  return pushToken(*token);
}

void YcluiParser::showOpenToken() {
  YcluiLineParser* frame = currentFrame();
  if (frame == nullptr) return;
  const FrameUse use(*frame);
  frame->showToken(*workToken);
  echoCallback();
  frame->hideToken();
}

YWord YcluiParser::tokenIsOpen() const {
  return workToken != nullptr && workToken->underConstruction() != 0 ? 1 : 0;
}

void YcluiParser::dropOpenToken() {
  if (workToken != nullptr) workToken->setNeedMore(0);
}

// --- Tokens on their way

YWord YcluiParser::pushToken(YcluiToken& token) {
  YcluiLineParser* frame = currentFrame();
  if (frame == nullptr) return 0;
  const Running scope(*this);
  const FrameUse use(*frame);
  if (token.id() == YcluiIdNone) {
    frame->pushToken(token);
    echoCallback();
    return 0;
  }
  if (tokCallback(token) == YcluiTokenDrop) return 0;
  if (token.id() == YcluiIdAlias) return expand(token);

  const YcluiSyntaxNode* accepted = stepInto(*frame, token);
  echoCallback();
  if (accepted == nullptr) {
    refuseCallback(token);
    return 0;
  }
  if (frame->isTerminated() != 0) synCallback();
  const char* text = frame->actionText(*accepted);
  if (text != nullptr) action(text, context, frame->tokens);
  if (frame == currentFrame() && frame->isTerminated() != 0) reset();
  return 1;
}

// The step, the log and the priority check. Null when the token is refused.
const YcluiSyntaxNode* YcluiParser::stepInto(YcluiLineParser& frame, const YcluiToken& token) {
  const YcluiSyntaxNode* accepted = frame.next(token);
  logToken(token);
  if (accepted == nullptr || admits(frame, *accepted) != 0) return accepted;
  frame.popLastToken();
  cluiNote(YErrInterruptRefused);
  return nullptr;
}

YWord YcluiParser::expand(const YcluiToken& token) {
  const YAttribValue* value = token[1];
  if (value == nullptr) {
    echoCallback();
    refuseCallback(token);
    return 0;
  }
  if (expansions >= YcluiMostExpansions) return cluiError(YErrTooDeep);
  ++expansions;
  const YcluiLevels<YString>::Use text(levelTexts);
  text->assign(value->GetString());
  aliasRun = 1;
  const YWord taken = pushToken(text->buffer);
  aliasRun = 0;
  return taken;
}

YWord YcluiParser::pushToken(const char* text) {
  if (currentFrame() == nullptr) return cluiWarning(YErrNoSyntax);
  const Running scope(*this);
  if (lexer->pushString("") == 0) return 0;
  const long base = textBase;
  const long length = textLength;
  textBase += textLength;
  textLength = 0;
  ++suspendedDepth;
  const int taken = interpret(text);
  --suspendedDepth;
  textBase = base;
  textLength = length;
  lexer->popString();
  return taken >= 0 ? 1 : 0;
}

YWord YcluiParser::pushDummyToken(const char* text) {
  if (currentFrame() == nullptr) return cluiWarning(YErrNoSyntax);
  YcluiToken token(text);
  return pushToken(token);
}

YWord YcluiParser::action(const char* commandTemplate, YWord contextWord,
                          const YcluiToken_Stack& tokens) {
  const YcluiLevels<YString>::Use text(levelTexts);
  text->truncate(0);
  const YWord filled =
      YcluiFillTemplate(commandTemplate, contextWord, reinterpret_cast<long>(this), tokens, *text);
  return filled == 0 ? cluiError(YErrTextTooLong) : evaluate(text->buffer);
}

YWord YcluiParser::evaluate(const char* text) {
  if (!YScmIsThere()) return 0;
  YStatus status{0};
  char printed[256];
  ScmVMExternal::ExecuteString(text, printed, sizeof printed, status);
  return YStatusIsGood(status) ? 1 : 0;
}

// --- Callbacks

YcluiTokenCtrl YcluiParser::tokCallback(YcluiToken& token) {
  return tokProc == nullptr ? YcluiTokenPass : tokProc(tokData, token);
}

void YcluiParser::refuseCallback(const YcluiToken& token) {
  if (refuseProc != nullptr) refuseProc(refuseData, token, YErr.code(0));
}

void YcluiParser::echoCallback() {
  if (echoEnabled == 0 || (echoProc == nullptr && sysEchoProc == nullptr)) return;
  YcluiLineParser* frame = currentFrame();
  if (frame == nullptr) return;
  const Running scope(*this);
  const TextUse use(*frame);
  const char* whole = frame->wholeLine();
  if (echoProc != nullptr) echoProc(echoData, whole);
  if (sysEchoProc != nullptr) sysEchoProc(sysEchoData, whole);
}

void YcluiParser::synCallback() {
  if (synProc == nullptr && sysSynProc == nullptr) return;
  YcluiLineParser* frame = currentFrame();
  if (frame == nullptr) return;
  const TextUse use(*frame);
  const char* line = frame->currentLine();
  const char* whole = frame->wholeLine();
  if (synProc != nullptr) synProc(synData, line, whole);
  if (sysSynProc != nullptr) sysSynProc(sysSynData, line, whole);
}

YcluiTokProc YcluiParser::setTokCallback(YcluiTokProc proc, void* word) {
  tokData = word;
  return std::exchange(tokProc, proc);
}

YcluiTokRefuseProc YcluiParser::setTokRefuseCallback(YcluiTokRefuseProc proc, void* word) {
  refuseData = word;
  return std::exchange(refuseProc, proc);
}

YcluiEchoProc YcluiParser::setEchoProcedure(YcluiEchoProc proc, void* word) {
  echoData = word;
  return std::exchange(echoProc, proc);
}

YcluiSynProc YcluiParser::setSynCallback(YcluiSynProc proc, void* word) {
  synData = word;
  return std::exchange(synProc, proc);
}

YcluiEchoProc YcluiParser::sysSetEchoProcedure(YcluiEchoProc proc, void* word) {
  sysEchoProc = proc;
  sysEchoData = word;
  return echoProc;
}

YcluiSynProc YcluiParser::sysSetSynCallback(YcluiSynProc proc, void* word) {
  sysSynProc = proc;
  sysSynData = word;
  return synProc;
}

YcluiGoneProc YcluiParser::sysSetGoneProcedure(YcluiGoneProc proc, void* word) {
  sysGoneData = word;
  return std::exchange(sysGoneProc, proc);
}

// --- Tokens of the current frame

const YcluiToken* YcluiParser::currentToken() const {
  const YcluiLineParser* frame = currentFrame();
  return frame == nullptr ? nullptr : frame->currentToken();
}

const YcluiToken* YcluiParser::tokenAt(YWord index) const {
  const YcluiLineParser* frame = currentFrame();
  return frame == nullptr ? nullptr : frame->tokenAt(index);
}

YWord YcluiParser::numberOfToken() const {
  const YcluiLineParser* frame = currentFrame();
  return frame == nullptr ? 0 : frame->numberOfToken();
}

YWord YcluiParser::lastIsIndefinite() const {
  const YcluiLineParser* frame = currentFrame();
  return frame == nullptr ? 0 : frame->lastIsIndefinite();
}

const char* YcluiParser::currentLine() const {
  const YcluiLineParser* frame = currentFrame();
  return frame == nullptr ? "" : frame->currentLine();
}

const char* YcluiParser::wholeLine() const {
  const YcluiLineParser* frame = currentFrame();
  return frame == nullptr ? "" : frame->wholeLine();
}

int YcluiParser::findToken(const YcluiToken& token) const {
  const YcluiLineParser* frame = currentFrame();
  return frame == nullptr ? -1 : frame->findToken(token);
}

int YcluiParser::findToken(const char* text) const {
  return findToken(makeToken(text));
}

const YcluiToken* YcluiParser::popToken() {
  YcluiLineParser* frame = currentFrame();
  if (frame == nullptr) return nullptr;
  const Running scope(*this);
  const FrameUse use(*frame);
  frame->popLastToken();
  echoCallback();
  return frame->own.isGone ? nullptr : frame->currentToken();
}

YWord YcluiParser::removeToken(YWord index) {
  YcluiLineParser* frame = currentFrame();
  if (frame == nullptr) return 0;
  const YWord removed = frame->removeToken(index);
  echoCallback();
  return removed;
}

YcluiToken YcluiParser::makeToken(const char* text) const {
  const YcluiKeyword* keyword =
      lexer == nullptr || text == nullptr ? nullptr : lexer->keyword(text);
  return keyword == nullptr ? YcluiToken() : YcluiToken(*keyword);
}

void YcluiParser::reset() {
  YcluiLineParser* frame = currentFrame();
  if (frame == nullptr) return;
  const Running scope(*this);
  frame->reset();
  echoCallback();
  writeToLog("\n");
}

void YcluiParser::dmpCommandLine(std::ostream& out) const {
  for (YWord i = 0; i < numberOfToken(); ++i) {
    const char* word = tokenAt(i)->string();
    out << '[' << (word == nullptr ? "" : word) << "].";
  }
  out << std::endl;
}

// --- The lexer's operations

YWord YcluiParser::setAlias(const char* name, const char* text) {
  return lexer == nullptr ? 0 : lexer->addAlias(name, text);
}

YWord YcluiParser::unsetAlias(const char* name) {
  return lexer == nullptr ? 0 : lexer->delAlias(name);
}

YWord YcluiParser::setVariable(const char* name, const YAttribValue& value) {
  return lexer == nullptr ? 0 : lexer->addVariable(name, value);
}

YWord YcluiParser::setVariable(const char* name, const YAttribValue& value, YWord index) {
  return lexer == nullptr ? 0 : lexer->addVariable(name, value, index);
}

YWord YcluiParser::setVariable(const char* name, YWord count, const YAttribValue* values) {
  return lexer == nullptr ? 0 : lexer->addVariable(name, count, values);
}
