#include "workshop/CluiCommands.h"

#include <algorithm>
#include <utility>

#include "workshop/CluiMarkup.h"
#include "workshop/CluiTrackBuilder.h"

namespace {

using Kind = CluiTrack::Kind;

constexpr std::size_t LongestName = 60;

bool HasWord(const CluiTrack& track) {
  return track.kind == Kind::Word || track.kind == Kind::Cut ||
         std::any_of(track.parts.begin(), track.parts.end(), HasWord);
}

// Adds the words before the first branch. Returns false when there is one. Optional arguments are
// no branch.
bool AddFirstWords(const CluiTrack& track, std::string& name) {
  if (track.kind == Kind::Word) name += (name.empty() ? "" : " ") + track.word->name();
  if (track.kind != Kind::Sequence) return !HasWord(track) || track.kind == Kind::Word;
  return std::all_of(track.parts.begin(), track.parts.end(),
                     [&name](const CluiTrack& part) { return AddFirstWords(part, name); });
}

std::string NameOf(const CluiTrack& track) {
  std::string name;
  AddFirstWords(track, name);
  if (name.empty()) name = CluiTrackLine(track, LongestName);
  return CluiCutTo(name.empty() ? "(nothing)" : name, LongestName);
}

}  // namespace

std::vector<CluiCommand> CluiCommandsOf(const CluiGrammar& grammar, CluiVocabulary& vocabulary) {
  for (const CluiAnywhereWord& word : grammar.anywhere) vocabulary.setAnywhere(word.tokenId);
  const CluiTrackBuilder builder(vocabulary);
  std::vector<CluiCommand> commands;
  for (const CluiFragment* part : CluiTrackBuilder::AlternativesOf(grammar.syntax)) {
    CluiTrack track = builder.build(*part);
    std::string name = NameOf(track);
    commands.push_back({std::move(name), false, std::move(track)});
  }
  for (const CluiAnywhereWord& word : grammar.anywhere) {
    CluiTrack track = builder.build(word.tokenId);
    commands.push_back({NameOf(track), true, std::move(track)});
  }
  return commands;
}

bool CluiBeginsWith(const CluiTrack& track, const CluiWordText& word) {
  switch (track.kind) {
    case Kind::Word:
      return track.word == &word;
    case Kind::Choice:
      return std::any_of(track.parts.begin(), track.parts.end(),
                         [&word](const CluiTrack& part) { return CluiBeginsWith(part, word); });
    case Kind::Sequence:
    case Kind::Loop:
      return CluiBeginsWith(track.parts.front(), word);
    default:
      return false;
  }
}

bool CluiContains(const CluiTrack& track, const CluiWordText& word) {
  if (track.kind == Kind::Word) return track.word == &word;
  return std::any_of(track.parts.begin(), track.parts.end(),
                     [&word](const CluiTrack& part) { return CluiContains(part, word); });
}
