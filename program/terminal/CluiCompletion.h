// How far a word can be carried on.

#ifndef PROGRAM_TERMINAL_CLUICOMPLETION_H_
#define PROGRAM_TERMINAL_CLUICOMPLETION_H_

#include <string>

class YcluiParser;

// Looks at all words that may come, those that work anywhere too, in any case of ASCII letters.
// Keeps none of them: costs their number.
class CluiCompletion {
 public:
  CluiCompletion(const YcluiParser& parser, const char* beginning);

  // What all words that begin like this have in common, in whole characters; empty when there is
  // none, or when an argument is wanted.
  const std::string& text() const { return common_; }
  // Whether that is the only one of them.
  bool isWord() const { return areSame_; }

 private:
  std::string common_;
  bool areSame_ = false;

  void take(const char* name);
  void cutAtCharacter();
};

#endif  // PROGRAM_TERMINAL_CLUICOMPLETION_H_
