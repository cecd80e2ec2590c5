// A language as its script declared it.

#ifndef WORKSHOP_CLUIGRAMMAR_H_
#define WORKSHOP_CLUIGRAMMAR_H_

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

// Names and code are in the encoding inside (YEncoding), names of files in UTF-8.

// Where a call is in a script, from 1; 0 when that is unknown.
struct CluiScriptPlace {
  std::string file;
  int line = 0;
  int column = 0;

  auto operator<=>(const CluiScriptPlace&) const = default;
};

// Each call is recorded with two places: `place` is that of the call itself, or, when the call is
// in a procedure that made several, that of the top-level form that called the procedure; `form` is
// always the latter.

struct CluiWord {
  std::uint32_t id = 0;      // 0 for a declaration that was refused
  std::string name;          // as written; the words of a parser are in lower case
  std::string abbreviation;  // empty without one
  std::vector<int> types;    // of the arguments: 1 string, 2 float, 3 integer, 4 point
  bool isCharacter = false;  // a word of one character, which needs no blanks around it
  CluiScriptPlace place;
  CluiScriptPlace form;
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
  CluiScriptPlace place;  // of a word and of code: of the call around it
  CluiScriptPlace form;
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
  CluiScriptPlace place;
  CluiScriptPlace form;
};

// The declarations of one parser, in the order in which the script made them.
struct CluiGrammar {
  std::vector<CluiWord> words;
  std::vector<CluiWord> refusedWords;      // whose names were in use
  CluiFragment syntax;                     // of the last clui-set-syntax; without parts before it
  std::vector<CluiAnywhereWord> anywhere;  // declared after it
  std::vector<CluiFragment> formerSyntaxes;
};

#endif  // WORKSHOP_CLUIGRAMMAR_H_
