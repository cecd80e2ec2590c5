// What is reported of a run: refused words, codes of the error manager, failed commands.

#ifndef PROGRAM_CLUIDIAGNOSTICS_H_
#define PROGRAM_CLUIDIAGNOSTICS_H_

#include <string>

#include "platform/engine/ScmVM.h"
#include "program/CluiOptions.h"
#include "program/CluiOutcome.h"
#include "program/CluiPendingCodes.h"
#include "program/CluiReading.h"
#include "program/CluiRefusal.h"
#include "program/CluiReport.h"
#include "program/CluiTrace.h"

// Reports each fault once, at its position in the input, and counts it in the outcome. All
// operations may be called while a token is being read, from the parser's callbacks.
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

  // Another input begins.
  void beginInput() { refusal_.restart(); }
  // Another text is about to be given to the parser.
  void beginText();
  // The parser has read that text: what is pending belongs to it.
  void endText();

  // The token under way is being offered to the syntax.
  void offered() { offered_ = reading_.tokenStart(); }
  // A command begins.
  void commandBegins();
  void refused(const YcluiToken& token);
  void failed(const ScmVMError& error);

  void addCode(unsigned int code, YErrSeverity severity);
  void reportCodes();
  // Forgets the pending codes without a report. Returns the last one, 0 for none.
  unsigned int dropCodes();
  void dropCode(unsigned int code) { codes_.drop(code); }

  // A message, as UTF-8 or as characters, about something without a position in the input.
  void problem(const std::string& name, const std::string& message);
  void problem(const std::string& name, const std::wstring& message);
  // The input cannot be read any further.
  void inputFailed(std::size_t line, const std::string& message);
  // The input ended inside `what`.
  void endedInside(const std::wstring& what);
  // The playback was interrupted; `seconds` is how long it had taken.
  void playbackStopped(double seconds);
  // The line, in the user's encoding, cannot be converted.
  void unreadable(const std::string& bytes, std::size_t number, const CluiFault& fault);
  // Argument `index` of the token under way.
  void warnOfArgument(const YcluiToken& token, int index, const std::wstring& message);

 private:
  const CluiOptions& options_;
  CluiEncoding& encoding_;
  CluiReading& reading_;
  CluiReport& report_;
  CluiTrace& trace_;
  CluiOutcome& outcome_;
  CluiRefusal refusal_;
  CluiPendingCodes codes_;
  unsigned int reportedCode_ = 0;  // the last one of this text, 0 for none, and where
  CluiPlace reportedPlace_;
  CluiTokenStart offered_;       // the token offered last, until a command begins
  std::size_t takenBefore_ = 0;  // words taken in earlier texts

  void reportCode(const CluiCode& code);
  void reportAt(const CluiSpot& spot, const std::wstring& message);
  unsigned int takeCode();
  bool beganEarlier() const;
  void loadFailed(const ScmVMError& error, const std::wstring& message);
};

#endif  // PROGRAM_CLUIDIAGNOSTICS_H_
