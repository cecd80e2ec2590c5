// A railroad diagram as a tree, and its measures.

#ifndef WORKSHOP_CLUITRACK_H_
#define WORKSHOP_CLUITRACK_H_

#include <cstddef>
#include <string>
#include <vector>

struct CluiWordText;

// A part of a diagram. Its track enters on the left and leaves on the right, at the same height or
// further down. Lengths are in pixels.
struct CluiTrack {
  enum class Kind {
    Empty,     // a straight track
    Word,      // in a rounded box
    Argument,  // of `word`, in a box
    Comma,     // between arguments
    Cut,       // a part that is nested too deeply to be drawn
    Sequence,
    Choice,  // one of the parts
    Loop,    // its only part, any number of times or not at all
  };

  // A row of a sequence that is too wide for one.
  struct Row {
    std::size_t end = 0;  // the index after its last part
    int offset = 0;       // of its track, down from the entrance of the sequence
    int turn = 0;         // the same of the track that leads back to it
  };

  Kind kind = Kind::Empty;
  const CluiWordText* word = nullptr;
  std::size_t argument = 0;  // an index of the arguments of the word
  std::string note;          // written above it
  bool isUnbroken = false;   // a sequence that is always one row
  std::vector<CluiTrack> parts;

  // Set by CluiLayOut.
  int width = 0;
  int shape = 0;   // the width without the straight track that follows it
  int up = 0;      // from the entrance to the upper edge
  int drop = 0;    // from the entrance down to the exit
  int down = 0;    // from the exit to the lower edge
  int offset = 0;  // from the entrance of the choice around it down to its own
  std::vector<Row> rows;
};

// The text in the box of a word or an argument: the name, cut if it is very long.
std::string CluiTrackText(const CluiTrack& track);

// The track as a line of text: "from: X, Y (to: X, Y | end)", and "[a | b]..." for a loop. Not much
// longer than so many bytes; an ellipsis replaces what is left out.
std::string CluiTrackLine(const CluiTrack& track, std::size_t most);

#endif  // WORKSHOP_CLUITRACK_H_
