// The completion of a word.

#ifndef PROGRAM_TERMINAL_CLUICOMPLETION_H_
#define PROGRAM_TERMINAL_CLUICOMPLETION_H_

#include <string>

class YcluiParser;

// The common beginning of all words that can come next, indefinite words included, ignoring ASCII
// case. Linear in the number of words; stores none of them.
class CluiCompletion {
 public:
  CluiCompletion(const YcluiParser& parser, const char* beginning);

  // The longest common beginning, in whole characters; empty when no word matches or an argument is
  // expected.
  const std::string& text() const { return common_; }
  // Whether text() is the only word that matches.
  bool isWord() const { return areSame_; }

 private:
  std::string common_;
  bool areSame_ = false;

  void add(const char* name);
  void cutAtCharacter();
};

#endif  // PROGRAM_TERMINAL_CLUICOMPLETION_H_
