// The text that is being edited, and the cursor in it.

#ifndef TERMINAL_YCLUIEDITBUFFER_H_
#define TERMINAL_YCLUIEDITBUFFER_H_

#include <deque>
#include <string>
#include <string_view>

#include "foundation/YTypes.h"
#include "terminal/YcluiCells.h"
#include "terminal/YcluiKillRing.h"

// The text is bytes in the encoding inside the process; any bytes are allowed. The cursor is a byte
// offset that is always between two display units (YcluiCells): where a change joins bytes around
// it to one unit, it moves to the end of that.
//
// An operation that returns false has changed nothing at all; the caller rings the bell.
//
// Each change can be undone. Characters that are typed one after another are undone together, as
// far as they are of one word with the white space after it. Any other change is a step of its own.
class YQRT_API YcluiEditBuffer {
 public:
  // The oldest steps are forgotten beyond that.
  static constexpr std::size_t MostUndoSteps = 1000;

  const std::string& text() const { return text_; }
  std::size_t cursor() const { return cursor_; }
  bool empty() const { return text_.empty(); }
  bool isAtEnd() const { return cursor_ == text_.size(); }
  // The units of the text. The reference is good until the next change.
  const YcluiCells& cells() const { return cells_; }

  // Inserts before the cursor. A text of one unit counts as typed, a longer one as a step.
  bool insert(std::string_view bytes);
  // Replaces a part of the text and moves the cursor after it. Offsets inside a unit or beyond the
  // text are moved outward to its ends; false when the text would stay the same.
  bool replace(std::size_t begin, std::size_t end, std::string_view bytes);
  // Replaces all of the text, with the cursor at the end.
  bool set(std::string_view bytes);
  // Begins a new line with this text and the cursor at its end. Nothing of before can be undone;
  // what was killed is kept.
  void begin(std::string_view text);
  void clear() { begin(""); }

  // Moves the cursor; an offset inside a unit means its beginning.
  bool moveTo(std::size_t offset);
  bool left();
  bool right();
  bool home() { return moveTo(0); }
  bool end() { return moveTo(text_.size()); }
  // To the beginning of a word, and to the end of one. A word is letters, digits and underscores.
  bool wordLeft() { return moveTo(wordBegin()); }
  bool wordRight() { return moveTo(wordEnd()); }

  // Erase one unit.
  bool eraseLeft();
  bool eraseRight();
  // Kills keep the text for yank. Consecutive ones make one text.
  bool killToEnd() { return kill(cursor_, text_.size()); }
  bool killToBeginning() { return kill(0, cursor_); }
  bool killToSpace() { return kill(spaceBefore(), cursor_); }  // back to white space
  bool killWordLeft() { return kill(wordBegin(), cursor_); }
  bool killWordRight() { return kill(cursor_, wordEnd()); }
  // Inserts what was killed last.
  bool yank();
  // Right after yank or yankPop: replaces what that has inserted by what was killed before it,
  // after the oldest text by the newest again. False anywhere else.
  bool yankPop();
  // Exchanges the units around the cursor, at the end the last two, and moves after them.
  bool transpose();

  // The cursor is where it was before the change, or after it.
  bool undo();
  bool redo();

 private:
  // One change: at `offset`, `removed` was replaced by `inserted`.
  struct Step {
    std::size_t offset;
    std::string removed;
    std::string inserted;
    std::size_t cursor;  // before it
  };
  // What the last operation was, where the next one may continue it.
  enum class Series { None, Typing, Killing, Yanking };

  std::string text_;
  YcluiCells cells_;
  std::size_t cursor_ = 0;
  std::deque<Step> done_;    // oldest first
  std::deque<Step> undone_;  // the next one to be redone last
  YcluiKillRing kills_;
  Series series_ = Series::None;
  std::size_t yankBegin_ = 0;  // while Yanking: where, and which one
  std::size_t yanked_ = 0;

  std::size_t index() const { return cells_.indexAt(cursor_); }
  std::size_t offsetOf(std::size_t index) const;
  std::size_t wordBegin() const;
  std::size_t wordEnd() const;
  std::size_t spaceBefore() const;
  void exchange(std::size_t offset, std::size_t length, std::string_view bytes);
  void change(std::size_t begin, std::size_t end, std::string_view bytes);
  bool continuesTyping(const YcluiCells& typed) const;
  bool kill(std::size_t begin, std::size_t end);
};

#endif  // TERMINAL_YCLUIEDITBUFFER_H_
