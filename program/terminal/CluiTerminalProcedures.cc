#include "program/terminal/CluiTerminalProcedures.h"

#include "foundation/YErr.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"
#include "program/terminal/CluiLineSession.h"
#include "program/terminal/CluiPrelude.h"
#include "program/terminal/CluiSession.h"
#include "program/terminal/CluiTypedWord.h"
#include "terminal/YcluiHalfTyped.h"
#include "terminal/YcluiOffers.h"

namespace {

using Scm = ScmVMExternal;

CluiTerminalSettings* Settings = nullptr;

CluiSession* Session() {
  return CluiSession::Current();
}

void PushFalse() {
  Scm::StackPushBoolean(0);
}

void PushText(const std::string* text) {
  text == nullptr ? PushFalse() : Scm::StackPushString(text->c_str());
}

// Argument 1 as a parser. Null, with a bad status, when it is not a live one.
YcluiParser* PopParser(YStatus& status) {
  const long address = Scm::VMEAssertIsALong(1, status, -1);
  if (!YStatusIsGood(status)) return nullptr;
  YcluiParser* parser = YcluiParser::FindLive(address);
  if (parser != nullptr) return parser;
  YErr.pushError(YErrNotAlive, YErrWarning);
  Scm::VMESetErrorArgNum(1, status);
  Scm::VMESetErrorBadType(YScmArgLong, status, -1);
  return nullptr;
}

void TerminalField(std::uint32_t, YStatus&) {
  YuiTextField* field = Session() == nullptr ? nullptr : &Session()->field();
  Scm::StackPushHandle(field, nullptr, nullptr);
}

void TerminalPrint(std::uint32_t, YStatus& status) {
  const char* text = Scm::VMEAssertIsAString(1, status, -1);
  if (!YStatusIsGood(status)) return;
  if (Session() != nullptr) Session()->screen().print(text);
  if (CluiLineSession* lines = CluiLineSession::Current()) lines->print(text);
  Scm::StackPushNull();
}

void TerminalPrompt(std::uint32_t, YStatus& status) {
  const char* open = Scm::VMEAssertIsAString(2, status, -1);
  if (!YStatusIsGood(status)) return;
  const char* ready = Scm::VMEAssertIsAString(1, status, -1);
  if (!YStatusIsGood(status)) return;
  Settings->prompts = {ready, open};
  Scm::StackPushNull();
}

void TerminalSendWords(std::uint32_t, YStatus& status) {
  const bool sendsWords = Scm::VMEAssertIsABoolean(1, status, -1) != 0;
  if (!YStatusIsGood(status)) return;
  Settings->sendsWords = sendsWords;
  Scm::StackPushNull();
}

void TerminalColours(std::uint32_t, YStatus& status) {
  const char* text = Scm::VMEAssertIsAString(1, status, -1);
  if (!YStatusIsGood(status)) return;
  YcluiColours colours;
  std::string error;
  const bool isValid = colours.read(text, error);
  if (isValid) Settings->colours = text;
  isValid ? Scm::StackPushNull() : PushText(&error);
}

void TerminalLeave(std::uint32_t, YStatus&) {
  Settings->leaves = true;
  Scm::StackPushNull();
}

void TerminalReload(std::uint32_t, YStatus&) {
  const bool isRunning = Session() != nullptr && Session()->isRunning();
  Settings->reloads = isRunning || CluiLineSession::Current() != nullptr;
  Scm::StackPushBoolean(Settings->reloads ? 1 : 0);
}

// --- Completion

bool MayBeginWithComma() {
  return Session() == nullptr || Session()->mayBeginWithComma();
}

// What the word becomes as far as all offers agree.
std::string Completed(const std::string& word, YcluiOffers& offers) {
  const std::string before = word.substr(0, offers.begin());
  if (offers.count() > 1) return before + offers.common();
  const YcluiOffers::Group group = offers.at(0).group;
  const bool isWord = group != YcluiOffers::Group::Variable && group != YcluiOffers::Group::Value;
  return before + (isWord ? offers.at(0).name : offers.inserted(0));
}

void TerminalComplete(std::uint32_t, YStatus& status) {
  const char* text = Scm::VMEAssertIsAString(2, status, -1);
  if (!YStatusIsGood(status)) return;
  const std::string word = text;
  YcluiParser* parser = PopParser(status);
  if (parser == nullptr) return;
  const YcluiParser::Hold hold(*parser);
  YcluiOffers offers(*parser);
  CluiTypedWord typed(*parser, word, MayBeginWithComma());
  typed.find(offers);
  if (offers.empty()) return PushFalse();
  const std::string completed = Completed(word, offers);
  if (completed.empty()) return PushFalse();
  if (offers.count() == 1 && completed == word) return Scm::StackPushBoolean(1);
  Scm::StackPushString(completed.c_str());
}

void TerminalList(std::uint32_t, YStatus& status) {
  const char* text = Scm::VMEAssertIsAString(2, status, -1);
  if (!YStatusIsGood(status)) return;
  const std::string word = text;
  YcluiParser* parser = PopParser(status);
  if (parser == nullptr) return;
  Scm::StackPushBoolean(Session() != nullptr && Session()->list(*parser, word) ? 1 : 0);
}

// --- The word being typed

void TerminalEdit(std::uint32_t, YStatus&) {
  if (Session() != nullptr) Session()->editByKey();
  Scm::StackPushNull();
}

void TerminalInsert(std::uint32_t, YStatus& status) {
  const char* text = Scm::VMEAssertIsAString(1, status, -1);
  if (!YStatusIsGood(status)) return;
  if (Session() != nullptr) Session()->insert(text);
  Scm::StackPushNull();
}

void TerminalAtEnd(std::uint32_t, YStatus&) {
  Scm::StackPushBoolean(Session() == nullptr || Session()->isAtEnd() ? 1 : 0);
}

void TerminalBinding(std::uint32_t, YStatus&) {
  YuiModificationCallBack* binding = Session() == nullptr ? nullptr : Session()->field().binding();
  Scm::StackPushHandle(binding, nullptr, nullptr);
}

void TerminalTyped(std::uint32_t, YStatus&) {
  const std::string word = Session() == nullptr ? std::string() : Session()->word();
  Scm::StackPushString(word.c_str());
}

// --- History

void TerminalOlder(std::uint32_t, YStatus& status) {
  const char* word = Scm::VMEAssertIsAString(1, status, -1);
  if (!YStatusIsGood(status)) return;
  PushText(Session() == nullptr ? nullptr : Session()->history().older(word));
}

void TerminalNewer(std::uint32_t, YStatus&) {
  CluiSession* session = Session();
  PushText(session == nullptr ? nullptr : session->history().newer(session->field().word()));
}

// --- The unfinished command

void TerminalGiveUp(std::uint32_t, YStatus& status) {
  YcluiParser* parser = PopParser(status);
  if (parser == nullptr) return;
  if (Session() != nullptr) {
    Session()->giveUp();
  } else if (CluiLineSession::Current() != nullptr) {
    YcluiGiveUp(*parser);
  }
  Scm::StackPushNull();
}

void TerminalTakeBack(std::uint32_t, YStatus& status) {
  if (PopParser(status) == nullptr) return;
  if (Session() != nullptr) Session()->takeBack();
  Scm::StackPushNull();
}

void TerminalEmpty(std::uint32_t, YStatus&) {
  Scm::StackPushBoolean(Session() == nullptr || Session()->isEmpty() ? 1 : 0);
}

// False directly after the ":" of a word and after a comma, where the argument has not begun.
bool EndsInArgument(const YcluiParser& parser, const std::string& word) {
  const CluiTypedWord typed(parser, word, MayBeginWithComma());
  if (typed.ending() == YcluiEndsInQuote) return true;
  const std::size_t last = word.find_last_not_of(' ');
  if (last == std::string::npos || word[last] == ':' || word[last] == ',') return false;
  return parser.openToken() != nullptr || word.find(':') != std::string::npos;
}

// An end of line ends everything but an argument that a comma announces, and a point; a blank ends
// no comment, either.
void TerminalEnded(std::uint32_t, YStatus& status) {
  const char* end = Scm::VMEAssertIsAString(3, status, -1);
  if (!YStatusIsGood(status)) return;
  const std::string blank = end;
  const char* text = Scm::VMEAssertIsAString(2, status, -1);
  if (!YStatusIsGood(status)) return;
  const std::string word = text;
  const YcluiParser* parser = PopParser(status);
  if (parser == nullptr) return;
  const CluiTypedWord typed(*parser, word, MayBeginWithComma());
  const YcluiTextEnding ending = typed.ending();
  const bool isWhole =
      (ending == YcluiEndsWhole || ending == YcluiEndsInToken) && !typed.endsInComment();
  const bool announces = ending == YcluiEndsAfterComma || ending == YcluiEndsInPoint;
  if (blank == "\n" ? announces : !isWhole) return PushFalse();
  Scm::StackPushString((typed.text() + blank).c_str());
}

void TerminalInArgument(std::uint32_t, YStatus& status) {
  const char* text = Scm::VMEAssertIsAString(2, status, -1);
  if (!YStatusIsGood(status)) return;
  const std::string word = text;
  const YcluiParser* parser = PopParser(status);
  if (parser == nullptr) return;
  Scm::StackPushBoolean(EndsInArgument(*parser, word) ? 1 : 0);
}

// --- Keys and screen

void TerminalLastKey(std::uint32_t, YStatus&) {
  const char key = Session() == nullptr ? '\0' : Session()->lastKey();
  const std::string text(1, key);
  key == '\0' ? PushFalse() : Scm::StackPushString(text.c_str());
}

void TerminalPasting(std::uint32_t, YStatus&) {
  Scm::StackPushBoolean(Session() != nullptr && Session()->isPasting() ? 1 : 0);
}

void TerminalBell(std::uint32_t, YStatus&) {
  if (Session() != nullptr) Session()->screen().ring();
  Scm::StackPushNull();
}

void TerminalClear(std::uint32_t, YStatus&) {
  if (Session() != nullptr) Session()->screen().clear();
  Scm::StackPushNull();
}

constexpr struct {
  const char* name;
  void (*procedure)(std::uint32_t, YStatus&);
  std::uint32_t required;
} Procedures[] = {
    {"terminal-field", TerminalField, 0},         {"terminal-print", TerminalPrint, 1},
    {"terminal-prompt", TerminalPrompt, 2},       {"terminal-leave", TerminalLeave, 0},
    {"terminal-complete", TerminalComplete, 2},   {"terminal-list", TerminalList, 2},
    {"terminal-older", TerminalOlder, 1},         {"terminal-newer", TerminalNewer, 0},
    {"terminal-give-up", TerminalGiveUp, 1},      {"terminal-take-back", TerminalTakeBack, 1},
    {"terminal-last-key", TerminalLastKey, 0},    {"terminal-pasting?", TerminalPasting, 0},
    {"terminal-empty?", TerminalEmpty, 0},        {"terminal-in-argument?", TerminalInArgument, 2},
    {"terminal-bell", TerminalBell, 0},           {"terminal-clear", TerminalClear, 0},
    {"terminal-ended", TerminalEnded, 3},         {"terminal-send-words", TerminalSendWords, 1},
    {"terminal-set-colours", TerminalColours, 1}, {"terminal-edit", TerminalEdit, 0},
    {"terminal-insert", TerminalInsert, 1},       {"terminal-at-end?", TerminalAtEnd, 0},
    {"terminal-attached", TerminalBinding, 0},    {"terminal-typed", TerminalTyped, 0},
    {"terminal-reload", TerminalReload, 0},
};

}  // namespace

bool CluiBindTerminalProcedures(CluiTerminalSettings& settings) {
  Settings = &settings;
  for (const auto& entry : Procedures) {
    ScmVM::bindProcedure(entry.name, entry.procedure, entry.required, 0);
  }
  return CluiRunPrelude();
}

bool CluiRunPrelude() {
  YStatus status = {0};
  char result[64];
  ScmVMExternal::ExecuteString(CluiPrelude, result, sizeof result, status);
  return YStatusIsGood(status);
}
