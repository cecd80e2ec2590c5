#include "program/CluiRun.h"

#include <cstdio>
#include <utility>

#include "foundation/YErrCodes.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVMExternal.h"
#include "program/CluiInterrupt.h"
#include "program/CluiLiteral.h"
#include "program/CluiMessages.h"
#include "program/CluiProcedures.h"
#include "program/terminal/CluiTerminalProcedures.h"

namespace {

constexpr char LibraryName[] = "lib-CLUI";

std::string NameOf(const std::string& file) {
  return file == "-" ? "<stdin>" : file;
}

std::wstring Plural(std::size_t n, const wchar_t* what) {
  return std::to_wstring(n) + L" " + what + (n == 1 ? L"" : L"s");
}

}  // namespace

CluiRun::CluiRun(const CluiOptions& options)
    : options_(options),
      progress_(!options.quiet && !options.trace),
      report_(encoding_, progress_),
      trace_(report_, encoding_),
      line_(encoding_),
      played_(encoding_),
      refusal_(encoding_) {}

int CluiRun::run() {
  std::string error;
  if (!encoding_.open(options_.encoding, error)) {
    std::fprintf(stderr, "clui: %s\n", error.c_str());
    return Unable;
  }
  if (!start() || !loadLanguage()) {
    finish();
    return CluiInterrupted() ? Stopped : Unable;
  }
  if (startLog()) {
    session_ != nullptr ? typeIn() : readInputs();
    endLog();
  } else {
    unable_ = true;
  }
  finish();
  endSession();
  summarise();
  return status();
}

bool CluiRun::start() {
  std::string error;
  if (ScmVM::start(ScmVM::DefaultMemoryLimit, error) == 0) {
    tellProblem("clui", error);
    return false;
  }
  CluiCatchInterrupt();
  setPorts();
  const std::string library = options_.library.empty() ? CLUI_LIBRARY : options_.library;
  if (ScmVM::openLibrary(library.c_str(), LibraryName, error) == 0) {
    tellProblem("clui", error);
    return false;
  }
  CluiBindProcedures();
  if (options_.typed) openSession();
  return CluiBindTerminalProcedures();
}

// What scripts read and write is in the encoding of everything else.
void CluiRun::setPorts() {
  std::string text = "(for-each (lambda (port) (set-port-encoding! port \"" + options_.encoding +
                     "\")) (list (current-input-port) (current-output-port) (current-error-port)))";
  char answer[64];
  YStatus status = {0};
  ScmVMExternal::ExecuteString(text.c_str(), answer, sizeof answer, status);
}

bool CluiRun::loadLanguage() {
  YErr.setListener(
      [](void* word, unsigned int code, YErrSeverity severity) {
        static_cast<CluiRun*>(word)->onCode(code, severity);
      },
      this);
  ScmVM::setErrorListener(
      [](void* word, const ScmVMError& error) {
        static_cast<CluiRun*>(word)->onScriptError(error);
      },
      this);
  const bool loaded = ScmVM::loadFile(options_.language.c_str()) != 0;
  tellCodes();
  if (!loaded) return false;
  parser_ = YcluiParser::Live(0);
  if (parser_ == nullptr) {
    tellProblem(options_.language, "it made no parser");
    return false;
  }
  if (parser_->nestingDepth() == 0) {
    parser_ = nullptr;
    tellProblem(options_.language, "its first parser has no syntax");
    return false;
  }
  follow();
  return true;
}

void CluiRun::follow() {
  ScmVM::setTextListener(
      [](void* word, const char* text) { static_cast<CluiRun*>(word)->onText(text); }, this);
  parser_->setTokCallback(
      [](void* word, YcluiToken& token) { return static_cast<CluiRun*>(word)->onToken(token); },
      this);
  parser_->setTokRefuseCallback([](void* word, const YcluiToken& token,
                                   std::uint32_t) { static_cast<CluiRun*>(word)->onRefuse(token); },
                                this);
  parser_->setEchoProcedure(
      [](void* word, const char* line) { static_cast<CluiRun*>(word)->onEcho(line); }, this);
}

void CluiRun::readInputs() {
  if (!options_.texts.empty()) {
    std::string text;
    for (const std::string& part : options_.texts) text += part + "\n";
    CluiSource source;
    source.openText(text);
    input_ = "-e";
    readLines(source);
  }
  for (const std::string& file : options_.files) {
    if (CluiInterrupted()) return;
    options_.play ? playFile(file) : readFile(file);
  }
}

void CluiRun::readFile(const std::string& name) {
  input_ = NameOf(name);
  CluiSource source;
  std::string error;
  if (!source.openFile(name, error)) return giveUpInput(0, error);
  readLines(source);
}

void CluiRun::readLines(CluiSource& source) {
  std::string bytes;
  std::string error;
  std::size_t number = 0;
  CluiRead result = CluiRead::End;
  line_.restart();
  refusal_.restart();
  heldText_.clear();
  progress_.begin(input_, source.bytesOfFile());
  while (!CluiInterrupted() && (result = source.next(bytes, error)) == CluiRead::Line) {
    if (!isAlive()) return giveUpInput(number, "the parser was deleted; the rest is not read");
    feed(bytes, ++number);
    progress_.show(source.bytesRead(), static_cast<long long>(number));
  }
  progress_.erase();
  if (CluiInterrupted()) return report_.tell({input_, number, 0}, L"interrupted");
  if (result == CluiRead::Failed) giveUpInput(0, error);
  endInput(number);
}

void CluiRun::feed(std::string& bytes, std::size_t number) {
  if (number == 1 && encoding_.isUtf8() && bytes.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
  std::string text;
  CluiFault fault;
  if (encoding_.toSystem(bytes, text, fault)) return feedHeld(text, number);
  ++refused_;
  report_.tell({input_, number, fault.character + 1},
               CluiFaultText(fault, options_.encoding) + L"; the line is not read");
  report_.show(CluiExcerptOf(encoding_.fromUser(bytes), fault.character));
}

// The lexer refuses a text that ends behind the comma of an argument which is not declared, or
// inside a point; so such lines go to it together with the next one.
void CluiRun::feedHeld(std::string& text, std::size_t number) {
  const bool goesOn = holds(text);
  if (heldText_.empty()) heldNumber_ = number;
  heldText_ += text;
  if (!goesOn) flushHeld();
}

bool CluiRun::holds(const std::string& text) {
  if (!heldText_.empty() && CluiIsBlank(text)) return true;
  if (!CluiMayEndInComma(text) || parser_->lex()->more() != 0) return false;
  const CluiTextState begin = heldText_.empty() ? CluiStateOf(*parser_, false) : heldState_;
  const CluiTextEnd end = CluiEndOf(*parser_, text, begin);
  heldState_ = end.state;
  return end.kind == CluiTextEnd::Comma;
}

void CluiRun::flushHeld() {
  if (heldText_.empty()) return;
  std::string text = std::move(heldText_);
  heldText_.clear();
  interpret(text, heldNumber_);
}

void CluiRun::interpret(std::string& text, std::size_t number) {
  line_.take(text, number);
  offered_ = {};
  toldCode_ = 0;
  takenBefore_ = taken_;
  parser_->interpret(line_.text().c_str());
  if (options_.trace) trace_.settle();
  tellCodes();
}

void CluiRun::endInput(std::size_t number) {
  if (isAlive()) flushHeld();
  readLeftText(number);
  const std::wstring what = isAlive() ? unfinished() : std::wstring();
  if (what.empty()) return;
  ended_ = true;
  report_.tell({input_, 0, 0}, L"the input ended inside " + what);
  parser_->dropOpenToken();
  parser_->exhaust();
  while (isAlive() && parser_->nestingDepth() > 1) parser_->popFrame();
  parser_->reset();
}

// Text behind an argument that no comma follows has waited for the next line.
void CluiRun::readLeftText(std::size_t number) {
  std::uint32_t before = 0;
  while (isAlive() && parser_->lex()->more() != 0 && parser_->lex()->cursorOffset() != before) {
    before = parser_->lex()->cursorOffset();
    std::string nothing;
    interpret(nothing, number + 1);
  }
}

std::wstring CluiRun::unfinished() const {
  if (const YcluiToken* token = parser_->openToken()) {
    const YcluiKeyword* keyword = parser_->lex()->keyword(token->string());
    std::wstring what = L"the arguments of " + CluiQuoted(encoding_.fromSystem(token->string()));
    const int next = token->argc();
    if (keyword == nullptr || next > keyword->argCount()) return what;
    return what + L"; expected next: " + CluiTypeText(keyword->argType(next - 1));
  }
  YString_Array candidates;
  const bool goesOn = parser_->completionList("", candidates) > 0;
  if (parser_->numberOfToken() > 0 && goesOn) {
    return L"the command " + CluiQuoted(encoding_.fromSystem(parser_->currentLine()));
  }
  return parser_->nestingDepth() > 1 ? L"what interrupts another command" : std::wstring();
}

bool CluiRun::isAlive() const {
  return YcluiParser::FindLive(reinterpret_cast<long>(parser_)) != nullptr;
}

void CluiRun::giveUpInput(std::size_t line, const std::string& problem) {
  unable_ = true;
  report_.tell({input_, line, 0}, encoding_.fromUtf8(problem));
}

// The script's parsers go with the run, so that their logs are ended orderly.
void CluiRun::finish() {
  ScmVM::setTextListener(nullptr, nullptr);
  parser_ = nullptr;
  // Without a library there is no mortuary, and no parser either.
  while (YcluiParser* parser = YcluiParser::Live(0)) {
    YcluiParser::AddDeadBody(parser);
    if (parser->isCondemned() == 0) break;
  }
  YcluiParser::CleanupMortuary();
  // The parser tries once more to write out what could not be written.
  if (logLost_) std::erase_if(codes_, [](const Code& c) { return c.code == YErrNotClosed; });
  tellCodes();
  YErr.setListener(nullptr, nullptr);
  ScmVM::closeLibraries();
}

int CluiRun::status() const {
  // Where somebody types, an interrupt is a key, and a refusal no failure.
  if (CluiInterrupted() && !options_.typed) return Stopped;
  if (unable_) return Unable;
  if (options_.typed) return AllTaken;
  return refused_ > 0 || failed_ > 0 || ended_ ? SomethingRefused : AllTaken;
}

void CluiRun::summarise() {
  if (options_.quiet || options_.typed || (refused_ == 0 && failed_ == 0)) return;
  std::wstring text;
  if (refused_ > 0) text = Plural(refused_, L"refusal");
  if (failed_ > 0) text += (text.empty() ? L"" : L", ") + Plural(failed_, L"failed command");
  report_.tell({"clui", 0, 0}, text);
}
