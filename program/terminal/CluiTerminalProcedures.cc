#include "program/terminal/CluiTerminalProcedures.h"

#include "foundation/YErr.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"
#include "program/terminal/CluiCompletion.h"
#include "program/terminal/CluiLineSession.h"
#include "program/terminal/CluiListing.h"
#include "program/terminal/CluiPrelude.h"
#include "program/terminal/CluiSession.h"

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

std::wstring WideOf(const char* text) {
  return Session()->encoding().fromSystem(text);
}

void TerminalField(std::uint32_t, YStatus&) {
  YuiTextField* field = Session() == nullptr ? nullptr : &Session()->field();
  Scm::StackPushHandle(field, nullptr, nullptr);
}

void TerminalPrint(std::uint32_t, YStatus& status) {
  const char* text = Scm::VMEAssertIsAString(1, status, -1);
  if (!YStatusIsGood(status)) return;
  if (Session() != nullptr) Session()->screen().print(WideOf(text));
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

void TerminalLeave(std::uint32_t, YStatus&) {
  Settings->leaves = true;
  Scm::StackPushNull();
}

// --- Completion

CluiTextState StateOf(const YcluiParser& parser) {
  return Session() == nullptr ? CluiStateOf(parser, true) : Session()->textState(parser);
}

void TerminalComplete(std::uint32_t, YStatus& status) {
  const char* text = Scm::VMEAssertIsAString(2, status, -1);
  if (!YStatusIsGood(status)) return;
  const std::string word = text;
  YcluiParser* parser = PopParser(status);
  if (parser == nullptr) return;
  CluiCompletion completion(*parser, word.c_str());
  if (completion.text().empty()) return PushFalse();
  if (completion.isWord() && completion.text() == word) return Scm::StackPushBoolean(1);
  Scm::StackPushString(completion.text().c_str());
}

void TerminalList(std::uint32_t, YStatus& status) {
  const char* text = Scm::VMEAssertIsAString(2, status, -1);
  if (!YStatusIsGood(status)) return;
  const std::string word = text;
  YcluiParser* parser = PopParser(status);
  if (parser == nullptr) return;
  if (Session() == nullptr) return PushFalse();
  CluiScreen& screen = Session()->screen();
  const std::wstring listing =
      CluiListing(*parser, word.c_str(), StateOf(*parser), Session()->encoding(), screen.width(),
                  screen.rowsAboveLine());
  if (!listing.empty()) screen.print(listing);
  Scm::StackPushBoolean(listing.empty() ? 0 : 1);
}

// --- History

void TerminalOlder(std::uint32_t, YStatus& status) {
  const char* word = Scm::VMEAssertIsAString(1, status, -1);
  if (!YStatusIsGood(status)) return;
  PushText(Session() == nullptr ? nullptr : Session()->history().older(word));
}

void TerminalNewer(std::uint32_t, YStatus&) {
  PushText(Session() == nullptr ? nullptr : Session()->history().newer());
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
  if (CluiEndOf(parser, word, StateOf(parser)).kind == CluiTextEnd::Quote) return true;
  const std::size_t last = word.find_last_not_of(' ');
  if (last == std::string::npos || word[last] == ':' || word[last] == ',') return false;
  return parser.openToken() != nullptr || word.find(':') != std::string::npos;
}

// A leading comma, which the lexer would refuse, is replaced by a blank to keep all offsets.
void TerminalEnded(std::uint32_t, YStatus& status) {
  const char* end = Scm::VMEAssertIsAString(3, status, -1);
  if (!YStatusIsGood(status)) return;
  const std::string blank = end;
  const char* text = Scm::VMEAssertIsAString(2, status, -1);
  if (!YStatusIsGood(status)) return;
  std::string word = text;
  const YcluiParser* parser = PopParser(status);
  if (parser == nullptr) return;
  const CluiTextState begin = StateOf(*parser);
  const CluiTextEnd::Kind kind = CluiEndOf(*parser, word, begin).kind;
  // As in a file, an end of line ends everything but an argument announced by a comma.
  const bool isLine = blank == "\n";
  if (isLine ? kind == CluiTextEnd::Comma : kind != CluiTextEnd::Whole) return PushFalse();
  const std::size_t comma = CluiLeadingComma(word, begin);
  if (comma != std::string::npos) word[comma] = ' ';
  Scm::StackPushString((word + blank).c_str());
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
    {"terminal-field", TerminalField, 0},       {"terminal-print", TerminalPrint, 1},
    {"terminal-prompt", TerminalPrompt, 2},     {"terminal-leave", TerminalLeave, 0},
    {"terminal-complete", TerminalComplete, 2}, {"terminal-list", TerminalList, 2},
    {"terminal-older", TerminalOlder, 1},       {"terminal-newer", TerminalNewer, 0},
    {"terminal-give-up", TerminalGiveUp, 1},    {"terminal-take-back", TerminalTakeBack, 1},
    {"terminal-last-key", TerminalLastKey, 0},  {"terminal-pasting?", TerminalPasting, 0},
    {"terminal-empty?", TerminalEmpty, 0},      {"terminal-in-argument?", TerminalInArgument, 2},
    {"terminal-bell", TerminalBell, 0},         {"terminal-clear", TerminalClear, 0},
    {"terminal-ended", TerminalEnded, 3},       {"terminal-send-words", TerminalSendWords, 1},
};

}  // namespace

bool CluiBindTerminalProcedures(CluiTerminalSettings& settings) {
  Settings = &settings;
  for (const auto& entry : Procedures) {
    ScmVM::bindProcedure(entry.name, entry.procedure, entry.required, 0);
  }
  YStatus status = {0};
  char result[64];
  ScmVMExternal::ExecuteString(CluiPrelude, result, sizeof result, status);
  return YStatusIsGood(status);
}
