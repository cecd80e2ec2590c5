// What a dry run cannot know, because commands did not run.

#ifndef WORKSHOP_CLUIDOUBT_H_
#define WORKSHOP_CLUIDOUBT_H_

#include <cstddef>
#include <string>

// A command that did not run, and where.
struct CluiPassed {
  std::string line;  // the words of the command, as they are echoed
  std::string input;
  std::size_t number = 0;  // of the line in the input, from 1
};

// What the refusal of a word rests on.
enum class CluiRests {
  OnWords,      // the word is unknown
  OnArguments,  // an argument cannot be read
  OnVariables,  // the same, or an unknown word, of text that a variable gives
  OnPlace,      // the syntax does not accept the word there
};

// Distinguishes what is refused for certain from what may be accepted in a run, after the commands
// that did not run. Once a word may be something else, the place of all that follows is in doubt;
// how its line is divided into words is, too, and the next lines until one begins with a known
// word. Where the place is in doubt, a run may come to commands that a dry run does not come to.
class CluiDoubt {
 public:
  // What some command of the language may change, a sum of CluiEffect.
  void setEffectsOfAny(unsigned effects) { any_ = effects; }

  // A command did not run that would have the effects, a sum of CluiEffect. `isAside`: all of the
  // line is the one word that works anywhere; `isWhole`: the command is complete.
  // Returns whether `describe` must be called, since this command is the first one of its kind.
  bool pass(unsigned effects, bool isAside, bool isWhole);
  void describe(const CluiPassed& command);

  // The lexer has read a word of the dictionary in that line.
  void readWord(std::size_t number) {
    if (number != lineInDoubt_) isLineInDoubt_ = false;
  }
  // A word is refused in the line. Returns the command after which it may be accepted; null when it
  // is refused for certain. Valid until the next `describe`.
  const CluiPassed* refuse(CluiRests rests, std::size_t number);
  // The command that puts the place in the syntax in doubt, null for none.
  const CluiPassed* ofPlace() const { return place_.line.empty() ? nullptr : &place_; }

 private:
  unsigned any_ = 0;
  unsigned effects_ = 0;  // so far, a sum of CluiEffect
  unsigned added_ = 0;    // by the command that is described next
  CluiPassed words_;      // that may have changed words, and so on; with an empty line for none
  CluiPassed variables_;
  CluiPassed place_;
  CluiPassed doubted_;  // on which the doubt about the line rests
  bool isLineInDoubt_ = false;
  std::size_t lineInDoubt_ = 0;

  void doubtPlace(const CluiPassed& command);
};

#endif  // WORKSHOP_CLUIDOUBT_H_
