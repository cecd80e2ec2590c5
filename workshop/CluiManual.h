// The manual of a language, as a page for a browser.

#ifndef WORKSHOP_CLUIMANUAL_H_
#define WORKSHOP_CLUIMANUAL_H_

#include <cstddef>
#include <string>
#include <unordered_map>

#include "workshop/CluiCommands.h"
#include "workshop/CluiGrammar.h"
#include "workshop/CluiVocabulary.h"

// A page of HTML that needs no other file: all commands with pictures and words, a field that
// searches them, the aliases and the variables. All texts are UTF-8; those of the language are
// escaped wherever they are written.
class CluiManual {
 public:
  // `title` is the name of the language.
  explicit CluiManual(const std::string& title) : title_(title) {}

  // Adds the commands of a syntax under a heading. Linear in the size of the syntax and the texts
  // of each command's words.
  void addCommands(const std::string& heading, const CluiGrammar& grammar,
                   CluiVocabulary& vocabulary);
  // Adds its aliases and variables.
  void addNames(const CluiVocabulary& vocabulary);

  std::string page() const;

 private:
  std::string title_;
  std::string contents_;  // of the navigation
  std::string body_;
  std::size_t commands_ = 0;
  std::size_t anywhere_ = 0;
  std::unordered_map<std::string, int> anchors_;  // how many have that name

  void addGroup(const std::string& heading, std::vector<CluiCommand>& commands, bool isAnywhere);
  void addCommand(CluiCommand& command);
  void addTable(const char* heading, const char* name, const char* text,
                const std::vector<CluiNamedText>& rows);
  std::string anchorOf(const std::string& name);
};

#endif  // WORKSHOP_CLUIMANUAL_H_
