// Records the words of a run.

#ifndef PROGRAM_CLUIRECORDER_H_
#define PROGRAM_CLUIRECORDER_H_

#include "program/CluiDiagnostics.h"
#include "program/CluiOptions.h"
#include "program/CluiReading.h"

class YcluiToken;

// Without the option --log it only gives the warnings, since a language can record too.
class CluiRecorder {
 public:
  CluiRecorder(const CluiOptions& options, CluiReading& reading, CluiDiagnostics& diagnostics,
               CluiOutcome& outcome)
      : options_(options), reading_(reading), diagnostics_(diagnostics), outcome_(outcome) {}

  // Reports the reason and returns false when the recording cannot be started.
  bool start();
  void end();
  // Goes on with the recording for another parser, after end().
  void resume();
  // Whether end() could not write all of the recording.
  bool isIncomplete() const { return isIncomplete_; }

  // Warns about arguments that a playback of the recording would change.
  void warnOfLosses(const YcluiToken& token);

 private:
  const CluiOptions& options_;
  CluiReading& reading_;
  CluiDiagnostics& diagnostics_;
  CluiOutcome& outcome_;
  bool isIncomplete_ = false;

  bool isRead() const;
  bool startLogging(bool append);
  void notStarted(const std::string& reason);
};

#endif  // PROGRAM_CLUIRECORDER_H_
