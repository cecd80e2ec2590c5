// Recording what is fed.

#ifndef PROGRAM_CLUIRECORDER_H_
#define PROGRAM_CLUIRECORDER_H_

#include "program/CluiDiagnostics.h"
#include "program/CluiOptions.h"
#include "program/CluiReading.h"

class YcluiToken;

// Does nothing without the option --log, but for the warnings: a language can record too.
class CluiRecorder {
 public:
  CluiRecorder(const CluiOptions& options, CluiReading& reading, CluiDiagnostics& diagnostics,
               CluiOutcome& outcome)
      : options_(options), reading_(reading), diagnostics_(diagnostics), outcome_(outcome) {}

  // False, reported, when the recording cannot be started.
  bool start();
  void end();
  // Whether `end` found that not everything could be recorded.
  bool isIncomplete() const { return isIncomplete_; }

  // Warns of the arguments of a token that is fed which a playback of the recording would change.
  void warnOfLosses(const YcluiToken& token);

 private:
  const CluiOptions& options_;
  CluiReading& reading_;
  CluiDiagnostics& diagnostics_;
  CluiOutcome& outcome_;
  bool isIncomplete_ = false;

  bool isRead() const;
  void notStarted(const std::string& reason);
};

#endif  // PROGRAM_CLUIRECORDER_H_
