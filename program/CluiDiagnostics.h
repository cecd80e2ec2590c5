// Reports the faults of a run: refused words, codes of the error manager, failed commands.

#ifndef PROGRAM_CLUIDIAGNOSTICS_H_
#define PROGRAM_CLUIDIAGNOSTICS_H_

#include <optional>
#include <string>
#include <vector>

#include "foundation/YErr.h"
#include "platform/engine/ScmVM.h"
#include "program/CluiOptions.h"
#include "program/CluiOutcome.h"
#include "program/CluiReading.h"
#include "program/CluiRefusal.h"
#include "program/CluiReport.h"
#include "program/CluiTrace.h"
#include "workshop/CluiDoubt.h"

// Reports each fault once, at its position in the input, and counts it in the outcome. Of the words
// refused in one line, only the first is shown, followed by the number of the others, unless every
// one is wanted. All operations may be called while a token is being read, from the parser's
// callbacks.
class CluiDiagnostics {
 public:
  CluiDiagnostics(const CluiOptions& options, CluiEncoding& encoding, CluiReading& reading,
                  CluiReport& report, CluiTrace& trace, CluiOutcome& outcome)
      : options_(options),
        encoding_(encoding),
        reading_(reading),
        report_(report),
        trace_(trace),
        outcome_(outcome),
        refusal_(encoding) {}

  // For a dry run: asked about each refusal whether it is certain. Null, as at first, if all are.
  void setDoubt(CluiDoubt* doubt) { doubt_ = doubt; }

  // Another input begins.
  void beginInput();
  // The parser is about to read another text.
  void beginText();
  // The parser has read that text: reports the codes that are pending.
  void endText();

  // The current token is complete, and the syntax is about to accept or refuse it.
  void offered();
  // A command is about to run.
  void commandBegins();
  void refused(const YcluiToken& token);
  void failed(const ScmVMError& error);

  void addCode(unsigned int code, YErrSeverity severity);
  void reportCodes();
  // Removes the pending codes without a report. Returns the last one, 0 for none.
  unsigned int dropCodes();
  void dropCode(unsigned int code);

  // A message about something that has no position in the input. A std::string is UTF-8.
  void problem(const std::string& name, const std::string& message);
  void problem(const std::string& name, const std::wstring& message);
  // The input cannot be read beyond `line`; 0 for no line.
  void inputFailed(std::size_t line, const std::string& message);
  // The input ended inside `what`. Counts it.
  void endedInside(const std::wstring& what);
  // The playback was interrupted after so many seconds.
  void playbackStopped(double seconds);
  // The line, in the user's encoding, cannot be converted.
  void unreadable(const std::string& bytes, std::size_t number, const CluiFault& fault);
  // A warning about argument `index` of the current token; `message` follows the word's name.
  void warnOfArgument(const YcluiToken& token, int index, const std::wstring& message);

 private:
  // A code of the error manager that has not been reported yet: which message it belongs to is
  // known only when its word has been refused or its command has failed.
  struct Code {
    unsigned int code;
    YErrSeverity severity;
    CluiPlace place;
    CluiTokenStart token;
  };
  static constexpr std::size_t PendingAtMost = 64;

  const CluiOptions& options_;
  CluiEncoding& encoding_;
  CluiReading& reading_;
  CluiReport& report_;
  CluiTrace& trace_;
  CluiOutcome& outcome_;
  CluiRefusal refusal_;
  std::vector<Code> pending_;
  unsigned int reportedCode_ = 0;   // the last code reported in this text, 0 for none
  CluiPlace reportedPlace_;         // and its position
  CluiTokenStart offered_;          // the token offered last, until a command begins
  std::size_t acceptedBefore_ = 0;  // words accepted in earlier texts
  std::optional<CluiPlace> line_;   // of the refusal shown last; its column means nothing
  std::size_t unshown_ = 0;         // later refusals in that line, not yet reported as a number
  CluiDoubt* doubt_ = nullptr;
  bool hasDoubted_ = false;  // a doubtful refusal of this input has been shown
  bool isLast_ = false;      // no message has followed the refusal shown last

  void reportCode(const Code& code);
  unsigned int lastCode() const { return pending_.empty() ? 0 : pending_.back().code; }
  bool mustShow(const CluiRefused& refused, const CluiPlace& place) const;
  const CluiPassed* doubtAbout(const CluiRefused& refused, const CluiPlace& place) const;
  void refusedInDoubt(const CluiRefused& refused, CluiSpot& spot, const CluiPassed& passed);
  std::wstring doubtText(const CluiPassed& passed);
  bool isInLine(const CluiPlace& place) const;
  void reportUnshown();
  void report(const CluiPlace& place, const std::wstring& message);
  void reportAt(const CluiSpot& spot, const std::wstring& message);
  unsigned int takeCode();
  bool beganEarlier() const;
  bool reportCalls(const ScmVMError& error, const std::wstring& message);
  void loadFailed(const ScmVMError& error, const std::wstring& message);
};

#endif  // PROGRAM_CLUIDIAGNOSTICS_H_
