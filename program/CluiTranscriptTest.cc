#include "program/CluiTranscriptTest.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "program/CluiInput.h"
#include "program/CluiRun.h"
#include "program/CluiSource.h"
#include "workshop/CluiTranscript.h"

namespace {

void Report(const std::string& name, const std::string& problem) {
  std::fprintf(stderr, "%s: %s\n", name.c_str(), problem.c_str());
}

bool Fail(const std::string& name) {
  Report(name, std::strerror(errno));
  return false;
}

bool ReadFile(const std::string& name, std::string& text) {
  CluiSource source;
  std::string error;
  std::string line;
  CluiRead result = CluiRead::Failed;
  if (source.openFile(name, error)) {
    while ((result = source.next(line, error)) == CluiRead::Line) text += line;
  }
  if (result == CluiRead::Failed) Report(name, error);
  return result != CluiRead::Failed;
}

// Replaces the file at once, so that it is never half written.
bool ReplaceFile(const std::string& name, const std::string& text) {
  const std::string made = name + ".new";
  std::FILE* const file = std::fopen(made.c_str(), "w");
  if (file == nullptr) return Fail(made);
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  const bool isClosed = std::fclose(file) == 0;
  if (isWritten && isClosed && std::rename(made.c_str(), name.c_str()) == 0) return true;
  Fail(name);
  unlink(made.c_str());
  return false;
}

// Standard output and standard error of this process, both written to one file.
class Capture {
 public:
  Capture() : file_(std::tmpfile()), output_(dup(STDOUT_FILENO)), errors_(dup(STDERR_FILENO)) {}
  Capture(const Capture&) = delete;
  Capture& operator=(const Capture&) = delete;
  ~Capture() {
    end();
    if (file_ != nullptr) std::fclose(file_);
  }

  // There is no input: a command that reads finds its end.
  bool begin() {
    if (file_ == nullptr || output_ < 0 || errors_ < 0) return false;
    // Without a buffer, output and messages are in the order of writing.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    const int nothing = open("/dev/null", O_RDONLY);
    // The position of the file is shared by both streams, so neither overwrites the other.
    return nothing >= 0 && dup2(nothing, STDIN_FILENO) >= 0 &&
           dup2(fileno(file_), STDOUT_FILENO) >= 0 && dup2(fileno(file_), STDERR_FILENO) >= 0;
  }

  // What was written since the last call.
  std::string take() {
    std::fflush(stdout);
    std::string text;
    char bytes[4096];
    ssize_t length = 0;
    while ((length = pread(fileno(file_), bytes, sizeof bytes, taken_)) > 0) {
      text.append(bytes, static_cast<std::size_t>(length));
      taken_ += length;
    }
    return text;
  }

  void end() {
    dup2(output_, STDOUT_FILENO);
    dup2(errors_, STDERR_FILENO);
  }

 private:
  std::FILE* file_;
  int output_;
  int errors_;
  off_t taken_ = 0;
};

// Feeds the typed lines and stores what each printed.
class TranscriptInput : public CluiInput {
 public:
  TranscriptInput(CluiTranscript& transcript, Capture& capture)
      : transcript_(transcript), capture_(capture) {}

  bool next(std::string& line) override {
    store();
    isLoaded_ = true;
    isAtEnd_ = next_ == transcript_.count();
    if (isAtEnd_) return false;
    line = transcript_.typed(next_++) + "\n";
    return true;
  }

  // The end of the run may print something, too.
  void finish() { store(); }
  // Whether the language was loaded.
  bool isLoaded() const { return isLoaded_; }
  // What was printed last.
  const std::string& printed() const { return printed_; }

 private:
  CluiTranscript& transcript_;
  Capture& capture_;
  std::size_t next_ = 0;
  bool isLoaded_ = false;
  bool isAtEnd_ = false;
  std::string printed_;

  void store() {
    const std::string text = capture_.take();
    isAtEnd_ ? printed_.append(text) : printed_.assign(text);
    if (next_ == 0) return transcript_.setPrintedAtFirst(printed_);
    transcript_.setPrinted(next_ - 1, printed_);
  }
};

int Compare(const CluiOptions& options, const std::string& name, const CluiTranscript& transcript) {
  if (!transcript.differs()) return CluiRun::AllAccepted;
  if (!options.update) {
    const std::string diff = CluiUnifiedDiff(name, transcript.differences());
    std::fwrite(diff.data(), 1, diff.size(), stdout);
    return CluiRun::SomethingRefused;
  }
  if (!ReplaceFile(name, transcript.updated())) return CluiRun::Unable;
  if (!options.quiet) Report(name, "updated");
  return CluiRun::AllAccepted;
}

int RunTranscript(const CluiOptions& options, const std::string& name) {
  std::string text;
  if (!ReadFile(name, text)) return CluiRun::Unable;
  CluiTranscript transcript(text);
  Capture capture;
  if (!capture.begin()) {
    capture.end();
    Fail(name);
    return CluiRun::Unable;
  }
  CluiOptions silent = options;
  silent.task = CluiTask::Run;
  silent.quiet = true;
  TranscriptInput input(transcript, capture);
  const int status = CluiRun(silent).run(input);
  input.finish();
  capture.end();
  if (!input.isLoaded() || status == CluiRun::Interrupted) {
    std::fwrite(input.printed().data(), 1, input.printed().size(), stderr);
    return status;
  }
  return Compare(options, name, transcript);
}

// Runs the transcript in a child process. Returns its status.
int RunInChild(const CluiOptions& options, const std::string& name) {
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    const int status = RunTranscript(options, name);
    const bool isWritten = std::fflush(stdout) == 0;
    _exit(isWritten ? status : CluiRun::Unable);
  }
  int ending = 0;
  if (child < 0 || waitpid(child, &ending, 0) < 0) {
    Fail(name);
    return CluiRun::Unable;
  }
  if (WIFEXITED(ending)) return WEXITSTATUS(ending);
  Report(name, std::string("the process that ran it was ended: ") + strsignal(WTERMSIG(ending)));
  return CluiRun::Unable;
}

}  // namespace

int CluiTestTranscripts(const CluiOptions& options) {
  int worst = CluiRun::AllAccepted;
  std::size_t differing = 0;
  for (const std::string& name : options.files) {
    const int status = RunInChild(options, name);
    if (status == CluiRun::SomethingRefused) ++differing;
    worst = std::max(worst, status);
    if (status == CluiRun::Interrupted) return status;
  }
  if (!options.quiet && differing > 0) {
    Report("clui", std::to_string(differing) + " of " + std::to_string(options.files.size()) +
                       (options.files.size() == 1 ? " transcript" : " transcripts") +
                       (differing == 1 ? " differs" : " differ"));
  }
  return worst;
}
