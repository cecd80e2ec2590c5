// The operations of a parser. Each forwards to the part that implements it.

#include "parser/YcluiParser.h"

#include <new>
#include <ostream>
#include <typeinfo>

#include "foundation/YErr.h"
#include "parser/YcluiParserCore.h"
#include "platform/engine/ScmVMExternal.h"

YcluiParser::YcluiParser(YWord context)
    : core(YChecked(new (std::nothrow) YcluiParserCore(*this, context))) {}

YcluiParser::~YcluiParser() {
  core->takeLeave();
}

// --- Text

int YcluiParser::interpret(const char* text) {
  if (core->frames.current() == nullptr) return static_cast<int>(cluiWarning(YErrNoSyntax));
  return core->interpret(text);
}

void YcluiParser::exhaust() {
  if (lex() != nullptr) lex()->reset();
}

YWord YcluiParser::pushToken(YcluiToken& token) {
  return core->pushToken(token) ? 1 : 0;
}

YWord YcluiParser::pushToken(const char* text) {
  return core->pushToken(text) ? 1 : 0;
}

YWord YcluiParser::pushDummyToken(const char* text) {
  if (core->frames.current() == nullptr) return cluiWarning(YErrNoSyntax);
  YcluiToken token(text);
  return pushToken(token);
}

YWord YcluiParser::tokenIsOpen() const {
  return core->workToken.isOpen() ? 1 : 0;
}

const YcluiToken* YcluiParser::openToken() const {
  return core->workToken.isOpen() ? &*core->workToken : nullptr;
}

void YcluiParser::dropOpenToken() {
  core->workToken.dropOpen();
}

int YcluiParser::lastTokenOffset() const {
  return static_cast<int>(core->offsets.token());
}

int YcluiParser::lastFaultOffset() const {
  return core->outerOffset(lex() == nullptr ? -1 : lex()->faultOffset());
}

int YcluiParser::lastArgumentOffset(int index) const {
  return core->outerOffset(lex() == nullptr ? -1 : lex()->argumentOffset(index));
}

YWord YcluiParser::isAliasRun() const {
  return core->isAliasRun ? 1 : 0;
}

YWord YcluiParser::admits(const YcluiToken& /*token*/) {
  return 1;
}

YWord YcluiParser::evaluate(const char* text) {
  if (!YScmIsThere()) return 0;
  YStatus status{0};
  char printed[256];
  ScmVMExternal::ExecuteString(text, printed, sizeof printed, status);
  return YStatusIsGood(status) ? 1 : 0;
}

// --- Tokens of the current frame

const YcluiToken* YcluiParser::currentToken() const {
  const YcluiLineParser* frame = core->frames.current();
  return frame == nullptr ? nullptr : frame->currentToken();
}

const YcluiToken* YcluiParser::tokenAt(YWord index) const {
  const YcluiLineParser* frame = core->frames.current();
  return frame == nullptr ? nullptr : frame->tokenAt(index);
}

YWord YcluiParser::numberOfToken() const {
  const YcluiLineParser* frame = core->frames.current();
  return frame == nullptr ? 0 : frame->numberOfToken();
}

YWord YcluiParser::lastIsIndefinite() const {
  const YcluiLineParser* frame = core->frames.current();
  return frame == nullptr ? 0 : frame->lastIsIndefinite();
}

const char* YcluiParser::currentLine() const {
  const YcluiLineParser* frame = core->frames.current();
  return frame == nullptr ? "" : frame->currentLine();
}

const char* YcluiParser::wholeLine() const {
  const YcluiLineParser* frame = core->frames.current();
  return frame == nullptr ? "" : frame->wholeLine();
}

int YcluiParser::findToken(const YcluiToken& token) const {
  const YcluiLineParser* frame = core->frames.current();
  return frame == nullptr ? -1 : frame->findToken(token);
}

int YcluiParser::findToken(const char* text) const {
  return findToken(makeToken(text));
}

const YcluiToken* YcluiParser::popToken() {
  return core->popToken();
}

YWord YcluiParser::removeToken(YWord index) {
  YcluiLineParser* frame = core->frames.current();
  if (frame == nullptr) return 0;
  const YWord removed = frame->removeToken(index);
  core->echo();
  return removed;
}

YcluiToken YcluiParser::makeToken(const char* text) const {
  const YcluiKeyword* keyword =
      lex() == nullptr || text == nullptr ? nullptr : lex()->keyword(text);
  return keyword == nullptr ? YcluiToken() : YcluiToken(*keyword);
}

void YcluiParser::reset() {
  core->reset();
}

void YcluiParser::dmpCommandLine(std::ostream& out) const {
  for (YWord i = 0; i < numberOfToken(); ++i) {
    const char* word = tokenAt(i)->string();
    out << '[' << (word == nullptr ? "" : word) << "].";
  }
  out << std::endl;
}

// --- Syntax and frames

void YcluiParser::setSyntaxGraph(YcluiSyntaxGraph* newGraph) {
  if (newGraph != nullptr) core->setSyntaxGraph(newGraph);
}

void YcluiParser::addIndefiniteNode(YcluiSyntaxNode* node) {
  core->frames.addIndefinite(node);
}

const YcluiSyntaxGraph* YcluiParser::syntaxGraph() const {
  return core->frames.graph();
}

const YcluiSyntaxNode* YcluiParser::indefiniteRoot() const {
  return core->frames.indefiniteRoot();
}

YWord YcluiParser::pushFrame() {
  const YcluiLineParser* below = core->frames.current();
  if (below == nullptr) return 0;
  return core->frames.push(below->wholeLine()) ? 1 : cluiFatal(YErrNoMemory);
}

YWord YcluiParser::pushIndependentFrame() {
  const YcluiLineParser* below = core->frames.current();
  if (below == nullptr) return 0;
  return core->frames.push(below->wholeLine(), true) ? 1 : cluiFatal(YErrNoMemory);
}

YWord YcluiParser::popFrame() {
  core->popFrame();
  return 0;
}

int YcluiParser::nestingDepth() const {
  return core->frames.depth();
}

// --- Callbacks

YcluiTokProc YcluiParser::setTokCallback(YcluiTokProc proc, void* data) {
  return core->tokenCallback.replace(proc, data);
}

YcluiTokRefuseProc YcluiParser::setTokRefuseCallback(YcluiTokRefuseProc proc, void* data) {
  return core->refuseCallback.replace(proc, data);
}

YcluiEchoProc YcluiParser::setEchoProcedure(YcluiEchoProc proc, void* data) {
  return core->hostEcho.replace(proc, data);
}

YcluiSynProc YcluiParser::setSynCallback(YcluiSynProc proc, void* data) {
  return core->hostSyntax.replace(proc, data);
}

YcluiEchoProc YcluiParser::sysSetEchoProcedure(YcluiEchoProc proc, void* data) {
  core->systemEcho.replace(proc, data);
  return core->hostEcho.proc;
}

YcluiSynProc YcluiParser::sysSetSynCallback(YcluiSynProc proc, void* data) {
  core->systemSyntax.replace(proc, data);
  return core->hostSyntax.proc;
}

YcluiGoneProc YcluiParser::sysSetGoneProcedure(YcluiGoneProc proc, void* data) {
  return core->goneCallback.replace(proc, data);
}

void YcluiParser::enableEcho(YWord flag) {
  core->echoEnabled = flag != 0;
}

// --- Log and playback

YWord YcluiParser::startLogging(const char* path, YWord append) {
  const YcluiParserCore::Running scope(*core);
  const YcluiLogFile file(path);
  if (core->playback.reads(file)) return cluiWarning(YErrFileIsPlayed);
  return core->log.start(file, append != 0) ? 1 : 0;
}

YWord YcluiParser::shutLogging() {
  const YcluiParserCore::Running scope(*core);
  return core->log.shut() ? 1 : 0;
}

YWord YcluiParser::writeToLog(const char* text) {
  return core->writeToLog(text) ? 1 : 0;
}

YWord YcluiParser::isLogging() const {
  return core->log.isOpen() ? 1 : 0;
}

void YcluiParser::nestStyle(YcluiLogNestStyle style) {
  core->log.setNestStyle(style);
}

YWord YcluiParser::playbackFromLog(const char* path) {
  const YcluiParserCore::Running scope(*core);
  const YcluiLogFile file(path);
  if (core->log.writes(file)) return cluiWarning(YErrFileIsLogged);
  return core->playback.play(file) ? 1 : 0;
}

void YcluiParser::pausePlayback() {
  core->playback.pause();
}

YWord YcluiParser::continuePlayback() {
  const YcluiParserCore::Running scope(*core);
  return core->playback.resume() ? 1 : 0;
}

YWord YcluiParser::isPlaybackRun() const {
  return core->playback.isRunning() ? 1 : 0;
}

const char* YcluiParser::playbackName() const {
  return core->playback.name();
}

long YcluiParser::playbackLine() const {
  return core->playback.line();
}

long YcluiParser::playbackPosition() const {
  return core->playback.position();
}

YWord YcluiParser::playedToken(YcluiPlayedToken& token) const {
  return core->playback.find(core->offsets.token(), token) ? 1 : 0;
}

YWord YcluiParser::playedToken(YcluiPlayedToken& token, int offset) const {
  return core->playback.find(offset, token) ? 1 : 0;
}

int YcluiParser::playbackReadErrors() const {
  return core->playback.readErrors();
}

// --- Live parsers and the mortuary

void YcluiParser::CreateMortuary() {
  YcluiParserRegistry::CreateMortuary();
}

void YcluiParser::DestroyMortuary() {
  YcluiParserRegistry::DestroyMortuary();
}

void YcluiParser::AddDeadBody(YcluiParser* parser) {
  if (parser != nullptr) YcluiParserRegistry::Condemn(parser->core->life);
}

void YcluiParser::CleanupMortuary() {
  while (YcluiParser* body = YcluiParserRegistry::TakeBody()) {
    if (typeid(*body) != typeid(YcluiParser)) continue;
    body->YcluiParser::~YcluiParser();
    ::operator delete(body);
  }
}

YcluiParser::Hold::Hold(const YcluiParser& parser) : core_(*parser.core) {
  core_.enter();
}

YcluiParser::Hold::~Hold() {
  core_.exit();
}

YWord YcluiParser::isCondemned() const {
  return core->life.isCondemned ? 1 : 0;
}

YcluiParser* YcluiParser::FindLive(long address) {
  return YcluiParserRegistry::Find(address);
}

YcluiParser* YcluiParser::Live(int index) {
  return YcluiParserRegistry::At(index);
}

YcluiHelp& YcluiParser::help() const {
  return core->help;
}

// --- The lexer's operations

YcluiLex* YcluiParser::lex() const {
  return core->lexer.get();
}

YWord YcluiParser::setAlias(const char* name, const char* text) {
  return lex() == nullptr ? 0 : lex()->addAlias(name, text);
}

YWord YcluiParser::unsetAlias(const char* name) {
  return lex() == nullptr ? 0 : lex()->delAlias(name);
}

YWord YcluiParser::setVariable(const char* name, const YAttribValue& value) {
  return lex() == nullptr ? 0 : lex()->addVariable(name, value);
}

YWord YcluiParser::setVariable(const char* name, const YAttribValue& value, YWord index) {
  return lex() == nullptr ? 0 : lex()->addVariable(name, value, index);
}

YWord YcluiParser::setVariable(const char* name, YWord count, const YAttribValue* values) {
  return lex() == nullptr ? 0 : lex()->addVariable(name, count, values);
}
