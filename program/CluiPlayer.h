// Plays recordings back.

#ifndef PROGRAM_CLUIPLAYER_H_
#define PROGRAM_CLUIPLAYER_H_

#include <string>

#include "program/CluiDiagnostics.h"
#include "program/CluiFeeder.h"
#include "program/CluiProgress.h"
#include "program/CluiReading.h"

class CluiPlayer {
 public:
  CluiPlayer(CluiReading& reading, CluiDiagnostics& diagnostics, CluiFeeder& feeder,
             CluiProgress& progress, CluiOutcome& outcome)
      : reading_(reading),
        diagnostics_(diagnostics),
        feeder_(feeder),
        progress_(progress),
        outcome_(outcome) {}

  // Plays a file; its name is in bytes of the file system.
  void play(const std::string& file);
  // Shows the progress of the playback, if one of an input file is running.
  void showProgress();

 private:
  CluiReading& reading_;
  CluiDiagnostics& diagnostics_;
  CluiFeeder& feeder_;
  CluiProgress& progress_;
  CluiOutcome& outcome_;

  bool begin(const std::string& file, std::string& name);
  void playNamed(const std::string& name);
};

#endif  // PROGRAM_CLUIPLAYER_H_
