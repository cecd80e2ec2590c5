// Looks for what the author of a language would want to know about it.

#ifndef WORKSHOP_CLUILINT_H_
#define WORKSHOP_CLUILINT_H_

#include <string>
#include <vector>

#include "workshop/CluiGrammarRecorder.h"

struct CluiFinding {
  CluiScriptPlace place;
  std::string kind;     // such as "unreached", in ASCII
  std::string subject;  // the word or the code concerned, in the encoding inside
  std::string text;     // what is wrong, and how to mend it, in the encoding inside

  auto operator<=>(const CluiFinding&) const = default;
};

// What is wrong with the languages of all parsers that the recorder saw and that are alive, in the
// order of the script. Reads texts with their lexers, so an unfinished line is lost, and records
// codes. Of a script that failed, only the words are examined. `recorder` has ended.
std::vector<CluiFinding> CluiLint(const CluiGrammarRecorder& recorder, bool isLoaded);

#endif  // WORKSHOP_CLUILINT_H_
