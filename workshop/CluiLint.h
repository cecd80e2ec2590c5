// Looks for what the author of a language would want to know about it.

#ifndef WORKSHOP_CLUILINT_H_
#define WORKSHOP_CLUILINT_H_

#include <string>
#include <vector>

#include "workshop/CluiGrammarRecorder.h"

class YcluiLex;
class YcluiParser;

struct CluiFinding {
  CluiScriptPlace place;
  std::string kind;     // such as "unreached", in ASCII
  std::string subject;  // the word or the code concerned, in the encoding inside
  std::string text;     // what is wrong, and how to mend it, in the encoding inside

  auto operator<=>(const CluiFinding&) const = default;
};

// What is wrong with the language of a parser, in the order of the script. Reads texts with the
// lexer of the parser, and so ends an unfinished command; records codes. `recorder` has ended. Of a
// script that failed, only the words are examined.
std::vector<CluiFinding> CluiLint(YcluiParser& parser, const CluiGrammarRecorder& recorder,
                                  bool isLoaded);

#endif  // WORKSHOP_CLUILINT_H_
