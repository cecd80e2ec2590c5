// A dry run: everything is read as in a run, and no command runs.

#ifndef PROGRAM_CLUIDRYRUN_H_
#define PROGRAM_CLUIDRYRUN_H_

#include <string>

#include "foundation/YString_Array.h"
#include "program/CluiDiagnostics.h"
#include "program/CluiReading.h"
#include "workshop/CluiDoubt.h"
#include "workshop/CluiEffects.h"

class YcluiToken;

// Passes over commands, remembers what they may have changed, and checks the values of arguments.
class CluiDryRun {
 public:
  CluiDryRun(CluiReading& reading, CluiDiagnostics& diagnostics, CluiEncoding& encoding)
      : reading_(reading), diagnostics_(diagnostics), encoding_(encoding) {}

  // From now on no text of the parser runs. The script is read for what its commands may change.
  void start(const std::string& language);
  // Warns of numbers outside their range, and of values that are not in their list. REQUIRES: the
  // lexer has read the token, and the syntax has not seen it yet.
  void check(const YcluiToken& token);

 private:
  CluiReading& reading_;
  CluiDiagnostics& diagnostics_;
  CluiEncoding& encoding_;
  CluiEffects effects_;
  CluiDoubt doubt_;
  YString_Array values_;
  bool isAsking_ = false;  // for the values of an argument

  void pass(const char* text);
  void checkRange(const YcluiToken& token, int index);
  void checkValues(const YcluiToken& token, int index);
};

#endif  // PROGRAM_CLUIDRYRUN_H_
