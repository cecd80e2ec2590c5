// What the commands of a language may change in its parser.

#ifndef WORKSHOP_CLUIEFFECTS_H_
#define WORKSHOP_CLUIEFFECTS_H_

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

// A set of these, by their sum.
enum CluiEffect : unsigned {
  CluiChangesWords = 1,      // declares a word or an alias, or removes one
  CluiChangesSyntax = 2,     // the syntax, or the frames
  CluiChangesVariables = 4,  // those that texts refer to
  CluiResets = 8,            // drops the words of the present frame
  CluiDeletesLast = 16,      // drops the last of them
  CluiChangesAnything = 31,
};

// Judges code by the names in it: it may do what the primitives do that it names, or that the
// definitions name which it names, and so on. The definitions are read as text, from the script and
// from the files that it loads; nothing runs. It errs on the side of change: a name in a branch
// that is never taken counts, and code that cannot be followed, such as `eval`, may do anything.
class CluiEffects {
 public:
  // Adds the definitions of a script and of the files that it loads by name. A file that cannot be
  // read may define anything: from then on every command may change anything.
  void readScript(const std::string& file);
  // The same for a text. The files that it loads are relative to the folder.
  void readText(std::string_view text, const std::string& folder);

  // What the code of a command may change. Costs the length of the code.
  unsigned of(std::string_view code);
  // What some command of the language may change: all names in the strings of the script count.
  unsigned ofAny();

 private:
  using Names = std::unordered_set<std::string>;
  struct Form;  // of the text
  class FreeNames;

  std::unordered_map<std::string, Names> definitions_;  // the names that each definition uses
  std::unordered_map<std::string, unsigned> known_;     // what naming a name may do
  Names stored_;         // in what was passed on while the script ran
  Names inTemplates_;    // in the strings of the script
  unsigned always_ = 0;  // of every command
  Names files_;          // read already

  void learnTemplate(std::string_view text);
  void learn(const Form& form, const std::string& folder);
  void learnValue(const Form& form);
  void learnSettings(const Form& form);
  void learnPassedOn(const Form& form);
  void load(const Form& form, const std::string& folder);
  unsigned ofName(const std::string& name);
};

#endif  // WORKSHOP_CLUIEFFECTS_H_
