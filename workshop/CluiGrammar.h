// A language as its script declared it.

#ifndef WORKSHOP_CLUIGRAMMAR_H_
#define WORKSHOP_CLUIGRAMMAR_H_

#include <cstdint>
#include <string>
#include <vector>

// Where a call is in the script; line 0 when that is unknown.
struct CluiPlace {
  std::string file;
  int line = 0;
  int column = 0;  // from 1
};

struct CluiWord {
  std::uint32_t id = 0;
  std::string name;
  std::string abbreviation;  // empty without one
  std::vector<int> types;    // of the arguments: 1 string, 2 float, 3 integer, 4 point
  CluiPlace place;
};

// A part of the syntax, as it was written: an argument of the call that created the fragment
// around it, or such a call with its arguments.
struct CluiFragment {
  enum class Kind {
    Word,        // a token id
    Code,        // the command template of the word before it
    Priority,    // of the word after it
    Sequence,    // clui-syntax
    Choice,      // clui-oneof
    Repetition,  // clui-anyof
  };
  Kind kind = Kind::Sequence;
  CluiPlace place;
  std::uint32_t tokenId = 0;        // of a word
  std::string code;                 // of Code
  int priority = 127;               // of Priority
  int limit = 127;                  // the highest priority that may interrupt, of Priority
  std::vector<CluiFragment> parts;  // of the last three
};

// A word that is accepted at any point of a command.
struct CluiAnywhereWord {
  std::uint32_t tokenId = 0;
  std::string code;
  CluiPlace place;
};

// The declarations of one parser, in the order in which the script made them.
struct CluiGrammar {
  std::vector<CluiWord> words;
  CluiFragment syntax;  // of the last clui-set-syntax
  std::vector<CluiAnywhereWord> anywhere;
};

#endif  // WORKSHOP_CLUIGRAMMAR_H_
