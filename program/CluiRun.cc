#include "program/CluiRun.h"

#include <cstdio>

#include "foundation/YErr.h"
#include "foundation/YErrCodes.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"
#include "program/CluiHelpProcedures.h"
#include "program/CluiInterrupt.h"
#include "program/CluiProcedures.h"
#include "program/terminal/CluiTerminalProcedures.h"
#include "script/YcluiLibrary.h"
#include "workshop/CluiLint.h"
#include "workshop/server/CluiLanguageServer.h"

namespace {

std::string NameOf(const std::string& file) {
  return file == "-" ? "<stdin>" : file;
}

int CountLive() {
  int count = 0;
  while (YcluiParser::Live(count) != nullptr) ++count;
  return count;
}

// Condemns the live parsers from `begin` to before `end`.
void CondemnLive(int begin, int end) {
  for (int i = begin; i < end; ++i) YcluiParser::AddDeadBody(YcluiParser::Live(begin));
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
      reading_(encoding_),
      diagnostics_(options, encoding_, reading_, report_, trace_, outcome_),
      feeder_(encoding_, reading_, diagnostics_),
      recorder_(options, reading_, diagnostics_, outcome_),
      player_(reading_, diagnostics_, feeder_, progress_, outcome_),
      typist_(reading_, diagnostics_, feeder_, outcome_),
      draw_(options, encoding_, reading_, diagnostics_, grammars_),
      dry_(reading_, diagnostics_, encoding_) {}

int CluiRun::run(CluiInput& input) {
  input_ = &input;
  return run();
}

int CluiRun::run() {
  std::string error;
  if (!encoding_.open(options_.encoding, error)) {
    std::fprintf(stderr, "clui: %s\n", error.c_str());
    return Unable;
  }
  if (options_.task == CluiTask::Serve) streams_.emplace();
  const bool isLoaded = start() && loadLanguage();
  const int found = isLoaded ? perform() : failToLoad();
  finish();
  typist_.close();
  if (isLoaded) summarise();
  return worst(found);
}

// Does the task, and returns what it says of the status by itself.
int CluiRun::perform() {
  switch (options_.task) {
    case CluiTask::Lint:
      return lint(true);
    case CluiTask::Serve:
      return serve() ? AllAccepted : SomethingRefused;
    case CluiTask::Diagram:
    case CluiTask::Graph:
    case CluiTask::Manual:
      draw();
      return AllAccepted;
    default:
      read();
      return AllAccepted;
  }
}

int CluiRun::failToLoad() {
  if (options_.task == CluiTask::Lint) lint(false);
  return CluiInterrupted() ? Interrupted : Unable;
}

void CluiRun::read() {
  if (!recorder_.start()) {
    outcome_.unable = true;
    return;
  }
  typist_.isOpen() ? typist_.run(options_.quiet) : readInputs();
  recorder_.end();
}

bool CluiRun::start() {
  std::string error;
  if (ScmVM::start(ScmVM::DefaultMemoryLimit, error) == 0) {
    diagnostics_.problem("clui", error);
    return false;
  }
  CluiCatchInterrupt();
  setPorts();
  const char* const library =
      options_.library.empty() ? YcluiLibraryFile : options_.library.c_str();
  if (ScmVM::openLibrary(library, YcluiLibraryName, error) == 0) {
    diagnostics_.problem("clui", error);
    return false;
  }
  CluiBindProcedures();
  if (!CluiBindHelpProcedures()) return false;
  if (options_.typed) typist_.open(encoding_, options_.language, report_);
  if (!CluiBindTerminalProcedures(typist_.settings())) return false;
  return !options_.examines() || grammars_.start();
}

// Scripts read and write in the encoding of the other files and streams.
void CluiRun::setPorts() {
  std::string text = "(for-each (lambda (port) (set-port-encoding! port \"" + options_.encoding +
                     "\")) (list (current-input-port) (current-output-port) (current-error-port)))";
  // Standard output is for the picture.
  if (options_.draws()) {
    text += "(set-current-output-port (current-error-port))";
  }
  char result[64];
  YStatus status = {0};
  ScmVMExternal::ExecuteString(text.c_str(), result, sizeof result, status);
}

bool CluiRun::loadLanguage() {
  YErr.setListener(
      [](void* data, unsigned int code, YErrSeverity severity) {
        static_cast<CluiDiagnostics*>(data)->addCode(code, severity);
      },
      &diagnostics_);
  ScmVM::setErrorListener(
      [](void* data, const ScmVMError& error) {
        static_cast<CluiDiagnostics*>(data)->failed(error);
      },
      &diagnostics_);
  typist_.setReload([this] { return reload(); });
  const bool loaded = ScmVM::loadFile(options_.language.c_str()) != 0;
  if (!options_.draws()) grammars_.end();
  diagnostics_.reportCodes();
  if (!loaded || !findParser(0)) return false;
  listen();
  return true;
}

// Loads the language with a parser of its own. When that fails, the bindings and settings are those
// of the old one again, which goes on.
bool CluiRun::reload() {
  YcluiParser* const parser = reading_.parser();
  const CluiTerminalSettings settings = typist_.settings();
  const int oldCount = CountLive();
  typist_.settings() = CluiTerminalSettings();
  ScmVM::setTextListener(nullptr, nullptr);
  reading_.setParser(nullptr);
  bool loaded =
      CluiKeepBindings() && CluiRunPrelude() && ScmVM::loadFile(options_.language.c_str()) != 0;
  diagnostics_.reportCodes();
  loaded = loaded && findParser(oldCount);
  typist_.settings().reloads = false;  // a script that asks while it is loaded would load for ever
  if (!loaded) {
    CluiRestoreBindings();
    typist_.settings() = settings;
    CondemnLive(oldCount, CountLive());
    YcluiParser::CleanupMortuary();
  }
  YcluiParser* const next = reading_.parser();
  reading_.setParser(parser);
  if (loaded) {
    recorder_.end();
    reading_.setParser(next);
    recorder_.resume();
    CondemnLive(0, oldCount);
  }
  listen();
  return loaded;
}

// The parser that the script has created first, after so many that are older.
bool CluiRun::findParser(int older) {
  YcluiParser* const parser = YcluiParser::Live(older);
  if (parser == nullptr) {
    diagnostics_.problem(options_.language, "the script created no parser");
    return false;
  }
  if (parser->nestingDepth() == 0) {
    diagnostics_.problem(options_.language, "the script's first parser has no syntax");
    return false;
  }
  reading_.setParser(parser);
  return true;
}

void CluiRun::listen() {
  ScmVM::setTextListener(
      [](void* data, const char* text) { static_cast<CluiRun*>(data)->onText(text); }, this);
  if (options_.task == CluiTask::DryRun) dry_.start(options_.language);
  YcluiParser& parser = *reading_.parser();
  parser.setTokCallback(
      [](void* data, YcluiToken& token) { return static_cast<CluiRun*>(data)->onToken(token); },
      this);
  parser.setTokRefuseCallback([](void* data, const YcluiToken& token,
                                 std::uint32_t) { static_cast<CluiRun*>(data)->onRefuse(token); },
                              this);
  parser.setEchoProcedure(
      [](void* data, const char* line) { static_cast<CluiRun*>(data)->onEcho(line); }, this);
}

void CluiRun::readInputs() {
  if (input_ != nullptr) return readInput(*input_);
  if (!options_.texts.empty()) readTexts();
  for (const std::string& file : options_.files) {
    if (CluiInterrupted()) return;
    options_.task == CluiTask::Play ? player_.play(file) : readFile(file);
  }
}

// Messages have no positions but the caret. Lines are counted from where a command can begin.
void CluiRun::readInput(CluiInput& input) {
  std::string bytes;
  std::size_t number = 0;
  reading_.setInput("");
  reading_.line().restart();
  feeder_.begin();
  diagnostics_.beginInput();
  while (!CluiInterrupted() && input.next(bytes)) {
    if (!reading_.isAlive()) {
      return diagnostics_.inputFailed(0, "the parser was deleted; the rest is not read");
    }
    if (isBetweenCommands()) {
      diagnostics_.beginInput();
      number = 0;
    }
    feeder_.feed(bytes, ++number);
  }
  if (!CluiInterrupted()) feeder_.end(number);
}

bool CluiRun::isBetweenCommands() {
  const YcluiParser& parser = *reading_.parser();
  return feeder_.held().empty() && parser.numberOfToken() == 0 && parser.tokenIsOpen() == 0 &&
         parser.lex()->more() == 0;
}

void CluiRun::readTexts() {
  std::string text;
  for (const std::string& part : options_.texts) text += part + "\n";
  CluiSource source;
  source.openText(text);
  reading_.setInput("-e");
  readLines(source);
}

// Texts may set the syntax that is to be drawn, as a mode does.
void CluiRun::draw() {
  draw_.loaded();
  for (const std::string& text : options_.texts) {
    CluiSource source;
    source.openText(text + "\n");
    reading_.setInput("-e");
    readLines(source);
    draw_.hasRead(text);
  }
  if (!draw_.print()) outcome_.unable = true;
}

void CluiRun::readFile(const std::string& name) {
  reading_.setInput(NameOf(name));
  CluiSource source;
  std::string error;
  if (!source.openFile(name, error)) return diagnostics_.inputFailed(0, error);
  readLines(source);
}

void CluiRun::readLines(CluiSource& source) {
  std::string bytes;
  std::string error;
  std::size_t number = 0;
  CluiRead result = CluiRead::End;
  reading_.line().restart();
  diagnostics_.beginInput();
  feeder_.begin();
  progress_.begin(reading_.input(), source.bytesOfFile());
  while (!CluiInterrupted() && (result = source.next(bytes, error)) == CluiRead::Line) {
    if (!reading_.isAlive()) {
      return diagnostics_.inputFailed(number, "the parser was deleted; the rest is not read");
    }
    feeder_.feed(bytes, ++number);
    progress_.show(source.bytesRead(), static_cast<long long>(number));
  }
  progress_.erase();
  if (CluiInterrupted()) return report_.print({reading_.input(), number, 0}, L"interrupted");
  if (result == CluiRead::Failed) diagnostics_.inputFailed(0, error);
  feeder_.end(number);
}

// Prints what is to be said about the language. Of a script that failed, only words are examined.
int CluiRun::lint(bool isLoaded) {
  const std::vector<CluiFinding> findings = CluiLint(grammars_, isLoaded);
  for (const CluiFinding& finding : findings) {
    const CluiScriptPlace& place = finding.place;
    const std::wstring text =
        encoding_.fromUtf8(place.file + ":" + std::to_string(place.line) + ":" +
                           std::to_string(place.column) + ": " + finding.kind + " ");
    const std::wstring rest = encoding_.fromSystem(finding.subject + ": " + finding.text);
    std::puts(encoding_.toUser(text + rest).c_str());
  }
  // The codes are about texts that were tried.
  diagnostics_.dropCodes();
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) outcome_.unable = true;
  return findings.empty() ? AllAccepted : SomethingRefused;
}

// Serves an editor. False when it leaves without a shutdown.
bool CluiRun::serve() {
  CluiLanguageServer server(*reading_.parser(), options_.language, streams_->messages());
  return server.serve();
}

// Destroys the parsers of the script, so that their logs are closed.
void CluiRun::finish() {
  ScmVM::setTextListener(nullptr, nullptr);
  ScmVM::setTextGate(nullptr, nullptr);
  reading_.setParser(nullptr);
  // Before the library is initialized there is no mortuary to condemn a parser to.
  while (YcluiParser* parser = YcluiParser::Live(0)) {
    YcluiParser::AddDeadBody(parser);
    if (parser->isCondemned() == 0) break;
  }
  YcluiParser::CleanupMortuary();
  // The recorder has reported an incomplete recording; destroying the parser records it again.
  if (recorder_.isIncomplete()) diagnostics_.dropCode(YErrNotClosed);
  diagnostics_.reportCodes();
  YErr.setListener(nullptr, nullptr);
  ScmVM::closeLibraries();
}

// The status of the run, of which its task has found `found`.
int CluiRun::worst(int found) const {
  // In a terminal an interrupt is a key, and a refusal is not a failure.
  if (found == Interrupted || (CluiInterrupted() && !options_.typed)) return Interrupted;
  if (outcome_.unable || found == Unable) return Unable;
  if (options_.typed) return AllAccepted;
  const bool isGood = outcome_.refused == 0 && outcome_.failed == 0 && !outcome_.ended;
  return isGood ? found : SomethingRefused;
}

void CluiRun::summarise() {
  const bool isGood = outcome_.refused == 0 && outcome_.failed == 0 && outcome_.doubtful == 0;
  if (options_.quiet || options_.typed || isGood) return;
  std::wstring text;
  if (outcome_.refused > 0) text = Plural(outcome_.refused, L"refusal");
  if (outcome_.doubtful > 0) {
    text += (text.empty() ? L"" : L", ") + Plural(outcome_.doubtful, L"word") +
            L" that only a run can judge";
  }
  if (outcome_.failed > 0) {
    text += (text.empty() ? L"" : L", ") + Plural(outcome_.failed, L"failed command");
  }
  report_.print({"clui", 0, 0}, text);
}

void CluiRun::onText(const char* text) {
  if (CluiAsksForValues(text)) return;
  diagnostics_.commandBegins();
  CluiSession* const session = typist_.session();
  if (session != nullptr && CluiSession::IsKey(text)) return;
  if (options_.trace) trace_.runs(text);
  if (session != nullptr) session->scriptRuns();
}

YcluiTokenCtrl CluiRun::onToken(const YcluiToken& token) {
  diagnostics_.reportCodes();
  if (typist_.session() != nullptr) typist_.session()->wordArrives();
  diagnostics_.offered();
  if (CluiInterrupted()) {
    reading_.parser()->pausePlayback();
    // pausePlayback() lets the current line of a recording finish. A fed line is dropped here.
    if (reading_.line().number() > 0) {
      reading_.parser()->exhaust();
      return YcluiTokenDrop;
    }
  }
  ++outcome_.accepted;
  player_.showProgress();
  recorder_.warnOfLosses(token);
  if (options_.task == CluiTask::DryRun) dry_.check(token);
  if (options_.trace) trace_.offered(token);
  return YcluiTokenPass;
}

void CluiRun::onRefuse(const YcluiToken& token) {
  if (CluiInterrupted() && reading_.line().number() > 0) return reading_.parser()->exhaust();
  diagnostics_.refused(token);
}

void CluiRun::onEcho(const char* line) {
  if (typist_.session() != nullptr) typist_.session()->lineChanges(line);
  if (options_.trace) trace_.echo(line);
}
