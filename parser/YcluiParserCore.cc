#include "parser/YcluiParserCore.h"

#include <cstring>
#include <new>

#include "foundation/YErr.h"
#include "foundation/YcluiLimits.h"
#include "parser/YcluiCommandTemplate.h"
#include "parser/YcluiDepth.h"

namespace {

long LengthOf(const char* text) {
  return static_cast<long>(std::strlen(text));
}

}  // namespace

YcluiParserCore::YcluiParserCore(YcluiParser& parser, YWord context)
    : lexer(new (std::nothrow) YcluiLex),
      playback(*this),
      life(parser),
      parser_(parser),
      context_(context) {
  YcluiParserRegistry::Join(life);
}

void YcluiParserCore::takeLeave() {
  YcluiParserRegistry::Leave(life);
  {
    // The callback may try to delete the parser, which then waits in the mortuary.
    const Running scope(*this);
    goneCallback();
  }
  YcluiParserRegistry::Exhume(life);
  log.giveUp();
  playback.giveUp();
}

// --- Text

int YcluiParserCore::interpret(const char* text) {
  const Running scope(*this);
  if (text == nullptr) text = "";
  if (interpretDepth_ - suspendedDepth_ >= YcluiMostNestedCommands) return leaveToOuterLoop(text);
  takeText(text);
  const YcluiDepth depth(interpretDepth_);
  int accepted = 0;
  while (lexer->more() != 0) {
    if (!readToken()) {
      refuseWord();
    } else if (workToken.isOpen()) {
      showOpenToken();
      break;
    } else if (workToken->id() == YcluiIdVariable) {
      echo();
    } else if (pushWorkToken()) {
      ++accepted;
    }
  }
  return accepted;
}

int YcluiParserCore::leaveToOuterLoop(const char* text) {
  if (lexer->more() == 0) return static_cast<int>(cluiError(YErrTooDeep));
  appendText(text);
  return 0;
}

void YcluiParserCore::takeText(const char* text) {
  if (interpretDepth_ == 0) {
    outerSuspended_ = suspendedDepth_;
    offsets.beginOuter();
  }
  if (lexer->more() != 0) {
    appendText(text);
    return;
  }
  offsets.replaceText(LengthOf(text));
  lexer->setString(text);
}

void YcluiParserCore::appendText(const char* text) {
  offsets.appendText(LengthOf(text));
  lexer->putString(text);
}

bool YcluiParserCore::readToken() {
  YcluiToken& token = workToken.forReading();
  // Offsets count in the outermost text, and the texts of aliases are no part of it.
  const bool begins = suspendedDepth_ == outerSuspended_ && token.underConstruction() == 0;
  if (begins) {
    lexer->beginExpansion();
    expansions_ = 0;
  }
  const bool isRead = lexer->getNextToken(token) != 0;
  if (begins) offsets.setToken(lexer->tokenOffset());
  return isRead;
}

int YcluiParserCore::outerOffset(long lexerOffset) const {
  const bool isKnown = lexerOffset >= 0 && suspendedDepth_ == outerSuspended_;
  return static_cast<int>(isKnown ? offsets.of(lexerOffset) : offsets.token());
}

void YcluiParserCore::refuseWord() {
  const YcluiWorkToken::Use token(workToken);
  reportRefused(*token);
  echo();
  workToken.dropOpen();
}

bool YcluiParserCore::pushWorkToken() {
  const YcluiWorkToken::Use token(workToken);
  if (tokenCallback.isSet()) workToken.renew();  // the callback may change its token
  return pushToken(*token);
}

void YcluiParserCore::showOpenToken() {
  YcluiLineParser* frame = frames.current();
  if (frame == nullptr) return;
  const YcluiFrames::Use use(*frame);
  frame->showToken(*workToken);
  echo();
  frame->hideToken();
}

void YcluiParserCore::interpretPlayed(const char* text) {
  parser_.interpret(text);
}

long YcluiParserCore::nextOffset() const {
  return interpretDepth_ == 0 ? 0 : offsets.end();
}

// --- Tokens

bool YcluiParserCore::pushToken(YcluiToken& token) {
  YcluiLineParser* frame = frames.current();
  if (frame == nullptr) return false;
  const Running scope(*this);
  const YcluiFrames::Use use(*frame);
  if (token.id() == YcluiIdNone) {
    frame->pushToken(token);
    echo();
    return false;
  }
  if (tokenCallback.isSet() && tokenCallback.proc(tokenCallback.data, token) == YcluiTokenDrop) {
    return false;
  }
  if (parser_.admits(token) == 0) return false;
  if (token.id() == YcluiIdAlias) return expand(token);

  const YcluiSyntaxNode* accepted = stepInto(*frame, token);
  echo();
  if (accepted == nullptr) {
    reportRefused(token);
    return false;
  }
  if (frame->isTerminated() != 0) reportCommand();
  const char* command = frame->actionText(*accepted);
  if (command != nullptr) runCommand(command, frame->tokens);
  if (frame == frames.current() && frame->isTerminated() != 0) reset();
  return true;
}

// Makes the step, writes the log and checks the priority. Returns null when the token is refused.
const YcluiSyntaxNode* YcluiParserCore::stepInto(YcluiLineParser& frame, const YcluiToken& token) {
  const YcluiSyntaxNode* accepted = frame.next(token);
  log.writeToken(token, playback.isRunning());
  if (accepted == nullptr || frames.admits(frame, *accepted)) return accepted;
  frame.popLastToken();
  cluiNote(YErrInterruptRefused);
  return nullptr;
}

bool YcluiParserCore::expand(const YcluiToken& token) {
  const YAttribValue* value = token[1];
  if (value == nullptr) {
    echo();
    reportRefused(token);
    return false;
  }
  if (expansions_ >= YcluiMostExpansions) return cluiError(YErrTooDeep);
  ++expansions_;
  const YcluiLevels<YString>::Use text(levelTexts_);
  text->assign(value->GetString());
  isAliasRun = true;
  const bool isRead = pushToken(text->buffer);
  isAliasRun = false;
  return isRead;
}

bool YcluiParserCore::pushToken(const char* text) {
  if (frames.current() == nullptr) return cluiWarning(YErrNoSyntax);
  const Running scope(*this);
  if (lexer->pushString("") == 0) return false;
  int accepted = 0;
  {
    const YcluiTextOffsets::Suspended offsetsOfText(offsets);
    const YcluiDepth depth(suspendedDepth_);
    accepted = parser_.interpret(text);
  }
  lexer->popString();
  return accepted >= 0;
}

void YcluiParserCore::runCommand(const char* commandTemplate, const YcluiToken_Stack& tokens) {
  const YcluiLevels<YString>::Use text(levelTexts_);
  text->truncate(0);
  if (YcluiFillTemplate(commandTemplate, context_, reinterpret_cast<long>(&parser_), tokens,
                        *text)) {
    parser_.evaluate(text->buffer);
  } else {
    cluiError(YErrTextTooLong);
  }
}

// --- The current frame

const YcluiToken* YcluiParserCore::popToken() {
  YcluiLineParser* frame = frames.current();
  if (frame == nullptr) return nullptr;
  const Running scope(*this);
  const YcluiFrames::Use use(*frame);
  frame->popLastToken();
  echo();
  return use.isThere() ? frame->currentToken() : nullptr;
}

void YcluiParserCore::reset() {
  YcluiLineParser* frame = frames.current();
  if (frame == nullptr) return;
  const Running scope(*this);
  frame->reset();
  echo();
  writeToLog("\n");
}

void YcluiParserCore::popFrame() {
  if (frames.depth() <= 1) {
    reset();
    return;
  }
  const Running scope(*this);
  frames.drop();
  writeToLog("\n");
  echo();
}

void YcluiParserCore::setSyntaxGraph(YcluiSyntaxGraph* graph) {
  const Running scope(*this);
  frames.replaceSyntax(graph);
  const bool canRead = lexer != nullptr && workToken.exists();
  if (!canRead || !frames.push("")) cluiFatal(YErrNoMemory);
}

// --- Callbacks

void YcluiParserCore::reportRefused(const YcluiToken& token) {
  if (refuseCallback.isSet()) refuseCallback(token, YErr.code(0));
}

void YcluiParserCore::echo() {
  if (!echoEnabled || (!hostEcho.isSet() && !systemEcho.isSet())) return;
  YcluiLineParser* frame = frames.current();
  if (frame == nullptr) return;
  const Running scope(*this);
  const YcluiFrames::TextUse use(*frame);
  const char* whole = frame->wholeLine();
  hostEcho(whole);
  systemEcho(whole);
}

// Called when the frame is terminated.
void YcluiParserCore::reportCommand() {
  if (!hostSyntax.isSet() && !systemSyntax.isSet()) return;
  YcluiLineParser* frame = frames.current();
  if (frame == nullptr) return;
  const YcluiFrames::TextUse use(*frame);
  const char* line = frame->currentLine();
  const char* whole = frame->wholeLine();
  hostSyntax(line, whole);
  systemSyntax(line, whole);
}
