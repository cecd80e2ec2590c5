// Reads code as Scheme without running it.

#ifndef WORKSHOP_CLUICODEREADER_H_
#define WORKSHOP_CLUICODEREADER_H_

#include <cstddef>
#include <string>
#include <vector>

struct CluiCodeProblem {
  enum class Kind {
    Refused,  // the code cannot be read or expanded
    Unbound,  // it refers to a name that is bound nowhere
  };
  std::size_t code = 0;  // the number of the text
  Kind kind = Kind::Refused;
  std::string text;  // the message of Scheme, or the name
};

// Reads the texts in the module of the script. Macros of the script are expanded. A name that one
// text defines is bound for all. REQUIRES: a CluiGrammarRecorder was started, and the script has
// been loaded.
std::vector<CluiCodeProblem> CluiReadCode(const std::vector<std::string>& texts);

#endif  // WORKSHOP_CLUICODEREADER_H_
