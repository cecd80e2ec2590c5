// The commands of a language.

#ifndef WORKSHOP_CLUICOMMANDS_H_
#define WORKSHOP_CLUICOMMANDS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "workshop/CluiGrammar.h"
#include "workshop/CluiTrack.h"
#include "workshop/CluiVocabulary.h"

// A command is an alternative of the outermost choice of a syntax, so commands whose common first
// words were written once are one. A word that is accepted anywhere is a command, too.
struct CluiCommand {
  std::string name;  // the words with which it begins
  bool isAnywhere = false;
  CluiTrack track;
};

// In the order in which they were written, words for anywhere last. Marks these words in the
// vocabulary, which must outlive the result.
std::vector<CluiCommand> CluiCommandsOf(const CluiGrammar& grammar, CluiVocabulary& vocabulary);

// Whether a command can begin with the word, and whether the word is in it.
bool CluiBeginsWith(const CluiTrack& track, const CluiWordText& word);
bool CluiContains(const CluiTrack& track, const CluiWordText& word);

#endif  // WORKSHOP_CLUICOMMANDS_H_
