#include "workshop/CluiTrack.h"

#include "workshop/CluiMarkup.h"
#include "workshop/CluiVocabulary.h"

namespace {

constexpr std::size_t LongestText = 60;  // in characters

// Writes lines of text; stops when the line is long enough.
class LineWriter {
 public:
  explicit LineWriter(std::size_t most) : most_(most) {}

  std::string write(const CluiTrack& track) {
    add(track, false);
    return line_;
  }

 private:
  const std::size_t most_;
  std::string line_;

  void add(const CluiTrack& track, bool isPart) {
    if (line_.size() > most_) {
      if (!line_.ends_with("\u2026")) line_ += "\u2026";
      return;
    }
    switch (track.kind) {
      case CluiTrack::Kind::Empty:
        break;
      case CluiTrack::Kind::Cut:
        line_ += "\u2026";
        break;
      case CluiTrack::Kind::Comma:
        line_ += ",";
        break;
      case CluiTrack::Kind::Word:
      case CluiTrack::Kind::Argument:
        line_ += CluiTrackText(track);
        break;
      case CluiTrack::Kind::Sequence:
        addSequence(track);
        break;
      case CluiTrack::Kind::Choice:
        addChoice(track, isPart);
        break;
      case CluiTrack::Kind::Loop:
        line_ += "[";
        add(track.parts.front(), false);
        line_ += "]...";
        break;
    }
  }

  void addSequence(const CluiTrack& track) {
    bool isFirst = true;
    for (const CluiTrack& part : track.parts) {
      if (!isFirst && part.kind != CluiTrack::Kind::Comma) line_ += " ";
      isFirst = false;
      add(part, true);
    }
  }

  void addChoice(const CluiTrack& track, bool isPart) {
    const bool isOptional =
        track.parts.size() == 2 && track.parts.front().kind == CluiTrack::Kind::Empty;
    if (isOptional) {
      line_ += "[";
      add(track.parts.back(), false);
      line_ += "]";
      return;
    }
    if (isPart) line_ += "(";
    bool isFirst = true;
    for (const CluiTrack& part : track.parts) {
      if (!isFirst) line_ += " | ";
      isFirst = false;
      add(part, false);
      if (line_.ends_with("\u2026")) break;
    }
    if (isPart) line_ += ")";
  }
};

}  // namespace

std::string CluiTrackText(const CluiTrack& track) {
  if (track.kind == CluiTrack::Kind::Comma) return ",";
  if (track.kind == CluiTrack::Kind::Cut) return "\u2026";
  const bool isWord = track.kind == CluiTrack::Kind::Word;
  return CluiCutTo(isWord ? track.word->name() : track.word->arguments[track.argument].name,
                   LongestText);
}

std::string CluiTrackLine(const CluiTrack& track, std::size_t most) {
  return LineWriter(most).write(track);
}
