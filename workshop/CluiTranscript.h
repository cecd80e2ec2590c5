// A transcript: lines that a user types, and what is printed for each.
//
//   # Comments and empty lines are layout.
//   > hello
//   Hello.
//   > hullo
//   no such word "hullo", did you mean "hello"?
//   hullo
//   ^
//
// A line that begins with ">" is typed: what follows a blank, if there is one. The lines below it
// are printed for it. Those above the first one are printed while the language is loaded. A printed
// line that would be read as something else, such as an empty one, begins with a backslash, which
// is not part of it.

#ifndef WORKSHOP_CLUITRANSCRIPT_H_
#define WORKSHOP_CLUITRANSCRIPT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// A difference between two texts in lines: a line of both, of the old one or of the new one.
struct CluiDifference {
  enum Kind : char { Both = ' ', Old = '-', New = '+' };
  Kind kind;
  std::string line;  // without its end
};

class CluiTranscript {
 public:
  explicit CluiTranscript(std::string_view text);

  // The lines that are typed, without their ends.
  std::size_t count() const { return parts_.size() - 1; }
  const std::string& typed(std::size_t index) const { return parts_[index + 1].typed; }

  // Sets what was printed while the language was loaded, and for a typed line. A missing end of the
  // last line is supplied.
  void setPrintedAtFirst(std::string_view printed) { setPrinted(parts_[0], printed); }
  void setPrinted(std::size_t index, std::string_view printed) {
    setPrinted(parts_[index + 1], printed);
  }

  // Whether something else was printed than the transcript says.
  bool differs() const;
  // All lines of the transcript, and of one that says what was printed. In the latter, layout
  // between printed lines that have changed follows them.
  std::vector<CluiDifference> differences() const;
  // The text of the transcript that says what was printed.
  std::string updated() const;

 private:
  // A typed line and what follows it; the first part has no typed line.
  struct Part {
    std::string typed;
    std::vector<std::string> lines;  // as written; the first one is the typed line
    std::vector<std::string> expected;
    std::vector<std::string> printed;
  };
  std::vector<Part> parts_;

  static void setPrinted(Part& part, std::string_view printed);
  static std::vector<std::string> updatedLines(const Part& part, bool isFirst);
};

// The differences with three lines of context around each, in the unified format; nothing without a
// difference.
std::string CluiUnifiedDiff(const std::string& name,
                            const std::vector<CluiDifference>& differences);

#endif  // WORKSHOP_CLUITRANSCRIPT_H_
