#include "workshop/CluiTrackBuilder.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

using Kind = CluiFragment::Kind;

constexpr int MostLevels = 100;
constexpr int DefaultPriority = 127;

std::string NoteOf(const CluiFragment& priority) {
  std::string note;
  if (priority.priority != DefaultPriority) {
    note = "priority " + std::to_string(priority.priority);
  }
  if (priority.limit != DefaultPriority) {
    note += (note.empty() ? "admits up to " : ", admits up to ") + std::to_string(priority.limit);
  }
  return note;
}

bool IsDrawn(const CluiFragment& part) {
  return part.kind != Kind::Code && part.kind != Kind::Priority;
}

// The only part of a sequence without a note of its own; otherwise the fragment.
const CluiFragment& Unwrapped(const CluiFragment& fragment) {
  const CluiFragment* inner = &fragment;
  while (inner->kind == Kind::Sequence && inner->parts.size() == 1 && IsDrawn(inner->parts[0])) {
    inner = inner->parts.data();
  }
  return *inner;
}

// Replaces fragments of one kind by their parts, without recursion: lists that were joined one by
// one can be nested thousands of levels deep.
std::vector<const CluiFragment*> Flattened(const CluiFragment& fragment, Kind kind) {
  std::vector<const CluiFragment*> flat;
  std::vector<const CluiFragment*> open = {&fragment};
  while (!open.empty()) {
    const CluiFragment& next = Unwrapped(*open.back());
    open.pop_back();
    if (next.kind != kind) {
      flat.push_back(&next);
      continue;
    }
    for (auto part = next.parts.rbegin(); part != next.parts.rend(); ++part) open.push_back(&*part);
  }
  return flat;
}

CluiTrack TrackOfKind(CluiTrack::Kind kind, const CluiWordText* word = nullptr,
                      std::size_t argument = 0) {
  CluiTrack track;
  track.kind = kind;
  track.word = word;
  track.argument = argument;
  return track;
}

// One part alone needs nothing around it.
CluiTrack Joined(CluiTrack::Kind kind, std::vector<CluiTrack> parts) {
  if (parts.empty()) return {};
  if (parts.size() == 1) return std::move(parts.front());
  CluiTrack track = TrackOfKind(kind);
  track.parts = std::move(parts);
  return track;
}

// The arguments of a word from an index on, each with the comma before it. Of optional ones each
// needs those before it.
void AddArguments(const CluiWordText& word, std::size_t from, std::vector<CluiTrack>& parts) {
  for (std::size_t i = from; i < word.arguments.size(); ++i) {
    const bool beginsOption = i > from || from == 0;
    if (word.arguments[i].isOptional && beginsOption) {
      std::vector<CluiTrack> option;
      AddArguments(word, i, option);
      CluiTrack choice = TrackOfKind(CluiTrack::Kind::Choice);
      choice.parts.emplace_back();
      choice.parts.push_back(Joined(CluiTrack::Kind::Sequence, std::move(option)));
      parts.push_back(std::move(choice));
      return;
    }
    if (i > 0) parts.push_back(TrackOfKind(CluiTrack::Kind::Comma));
    parts.push_back(TrackOfKind(CluiTrack::Kind::Argument, &word, i));
  }
}

}  // namespace

CluiTrack CluiTrackBuilder::build(std::uint32_t tokenId) const {
  const CluiWordText& word = vocabulary_.word(tokenId);
  std::vector<CluiTrack> parts = {TrackOfKind(CluiTrack::Kind::Word, &word)};
  AddArguments(word, 0, parts);
  CluiTrack track = Joined(CluiTrack::Kind::Sequence, std::move(parts));
  track.isUnbroken = true;
  return track;
}

std::vector<const CluiFragment*> CluiTrackBuilder::AlternativesOf(const CluiFragment& fragment) {
  std::vector<const CluiFragment*> all = Flattened(fragment, Kind::Choice);
  std::erase_if(all, [](const CluiFragment* part) { return !IsDrawn(*part); });
  return all;
}

CluiTrack CluiTrackBuilder::trackOf(const CluiFragment& fragment, int depth) const {
  if (depth > MostLevels) return TrackOfKind(CluiTrack::Kind::Cut);
  const CluiFragment& inner = Unwrapped(fragment);
  switch (inner.kind) {
    case Kind::Word:
      return build(inner.tokenId);
    case Kind::Sequence:
      return sequenceOf(inner, depth + 1);
    case Kind::Choice:
      return choiceOf(inner, depth + 1);
    case Kind::Repetition:
      return loopOf(inner, depth + 1);
    default:
      return {};
  }
}

CluiTrack CluiTrackBuilder::sequenceOf(const CluiFragment& fragment, int depth) const {
  std::vector<CluiTrack> parts;
  std::string note;
  for (const CluiFragment* part : Flattened(fragment, Kind::Sequence)) {
    if (part->kind == Kind::Priority) note = NoteOf(*part);
    if (!IsDrawn(*part)) continue;
    parts.push_back(trackOf(*part, depth));
    parts.back().note = std::exchange(note, {});
  }
  return Joined(CluiTrack::Kind::Sequence, std::move(parts));
}

CluiTrack CluiTrackBuilder::choiceOf(const CluiFragment& fragment, int depth) const {
  std::vector<CluiTrack> parts;
  for (const CluiFragment* part : AlternativesOf(fragment)) parts.push_back(trackOf(*part, depth));
  // A straight track is drawn on top.
  std::stable_partition(parts.begin(), parts.end(),
                        [](const CluiTrack& part) { return part.kind == CluiTrack::Kind::Empty; });
  return Joined(CluiTrack::Kind::Choice, std::move(parts));
}

CluiTrack CluiTrackBuilder::loopOf(const CluiFragment& fragment, int depth) const {
  std::vector<CluiTrack> parts;
  for (const CluiFragment& part : fragment.parts) {
    for (const CluiFragment* each : AlternativesOf(part)) parts.push_back(trackOf(*each, depth));
  }
  if (parts.empty()) return {};
  CluiTrack loop = TrackOfKind(CluiTrack::Kind::Loop);
  loop.parts.push_back(Joined(CluiTrack::Kind::Choice, std::move(parts)));
  return loop;
}
