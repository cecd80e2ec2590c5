// From the syntax of a script to railroad diagrams.

#ifndef WORKSHOP_CLUITRACKBUILDER_H_
#define WORKSHOP_CLUITRACKBUILDER_H_

#include <cstdint>
#include <vector>

#include "workshop/CluiGrammar.h"
#include "workshop/CluiTrack.h"
#include "workshop/CluiVocabulary.h"

// Tracks point to the texts of the vocabulary, which must outlive them.
class CluiTrackBuilder {
 public:
  explicit CluiTrackBuilder(const CluiVocabulary& vocabulary) : vocabulary_(vocabulary) {}

  // Choices inside choices, and sequences inside sequences, become one. Parts that are nested more
  // than a hundred levels deep after that are cut.
  CluiTrack build(const CluiFragment& fragment) const { return trackOf(fragment, 0); }
  // A word with its arguments.
  CluiTrack build(std::uint32_t tokenId) const;

  // The alternatives of a fragment: those of a choice, of the choices among them and so on, in the
  // order in which they were written; otherwise the fragment alone.
  static std::vector<const CluiFragment*> AlternativesOf(const CluiFragment& fragment);

 private:
  const CluiVocabulary& vocabulary_;

  CluiTrack trackOf(const CluiFragment& fragment, int depth) const;
  CluiTrack sequenceOf(const CluiFragment& fragment, int depth) const;
  CluiTrack choiceOf(const CluiFragment& fragment, int depth) const;
  CluiTrack loopOf(const CluiFragment& fragment, int depth) const;
};

#endif  // WORKSHOP_CLUITRACKBUILDER_H_
