// The line that is being typed: what keys do to it, and what a user sees of it.

#ifndef TERMINAL_YCLUILINEEDITOR_H_
#define TERMINAL_YCLUILINEEDITOR_H_

#include <cstddef>
#include <string>

#include "foundation/YTypes.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiPreview.h"
#include "terminal/YcluiColours.h"
#include "terminal/YcluiEditBuffer.h"
#include "terminal/YcluiHistory.h"
#include "terminal/YcluiKeys.h"
#include "terminal/YcluiOfferList.h"
#include "terminal/YcluiOffers.h"
#include "terminal/YcluiPicture.h"

// Edits a line for a parser, with a preview of what it means. Nothing is run or changed in the
// parser. It neither reads from a terminal nor writes to one: keys go in by `handle`, and what is
// to be seen is asked for by `picture`.
//
// A line may contain ends of line: pasted ones, and those that Return puts after a comma.
class YQRT_API YcluiLineEditor {
 public:
  // What a key asks its caller for.
  enum class Request {
    None,       // nothing but to show the picture
    Line,       // the line is finished: it is in text(), and in the history
    Leave,      // the user wants to leave; what is typed is in the history
    Interrupt,  // the same, but for another line
    Suspend,    // to stop the process
    Clear,      // to clear the screen
  };

  // Both must outlive it.
  YcluiLineEditor(const YcluiParser& parser, YcluiHistory& history);

  YcluiColours& colours() { return colours_; }
  // The second one is shown while a command is half typed.
  void setPrompts(const std::string& ready, const std::string& open);

  // The beginning of a line of which each word is sent at its end.
  struct Sent {
    std::string shown;  // the command line of the parser, shown before the text
    std::string typed;  // the same as it was typed, for hints from the history
    // Whether a comma at the start of the text separates an argument from one that was sent.
    bool endsInArgument = false;
  };

  // Begins an empty line, for the parser as it is now.
  void begin();
  // Begins a line that goes on after words that were sent: what is edited is the word that was not.
  // A completed word gets no blank, which would send it. Nothing of `text` can be undone.
  void beginAfter(const Sent& sent, const std::string& text = "");
  Request handle(const YcluiKey& key);
  const std::string& text() const { return buffer_.text(); }
  std::size_t cursor() const { return buffer_.cursor(); }
  bool isAtEnd() const { return buffer_.isAtEnd(); }
  // Whether the last key could do nothing.
  bool rings() const { return rings_; }

  // Changes by the caller, for the parser as it is then; they can be undone. setText moves the
  // cursor to the end, and moveTo to the offset.
  void setText(const std::string& text);
  void insert(const std::string& text);
  void moveTo(std::size_t offset);

  // Whether the key is one of an open list with a selection, or of a search through the history.
  // Any other key closes the list, and ends the search with the line that was found.
  bool isForChoice(const YcluiKey& key) const;
  void endChoice();

  // The text with a comma at its start replaced by a blank: as the parser reads it after an
  // argument that was sent. All offsets stay the same.
  static std::string WithoutFirstComma(std::string text);

  // Prompt, line, cursor and hint.
  YcluiPicture picture() const;
  // The rows below the line: a message or the open list, in a window of that width.
  void addRows(YcluiPicture& picture, std::size_t width, std::size_t room);
  bool hasRows() const { return !message_.empty() || list_.isOpen(); }
  // For a terminal that cannot show rows, after they were printed.
  void dropRows();

 private:
  const YcluiParser& parser_;
  YcluiHistory& history_;
  YcluiColours colours_;
  YcluiEditBuffer buffer_;
  YcluiPreview preview_;
  YcluiPreview hinted_;  // of the line whose rest is a hint
  YcluiOffers offers_;
  YcluiOfferList list_;
  std::string ready_ = "> ";
  std::string open_ = "... ";
  bool sendsWords_ = false;
  Sent sent_;              // empty unless it sends words
  std::string previewed_;  // the text that the preview has read
  std::string accepted_;   // an earlier line that `hinted_` has found no mistake in
  std::string message_;    // below the line, until the next key
  std::string note_;       // below the line, too: what is wrong with a value that is accepted
  bool rings_ = false;
  bool addedBlank_ = false;    // the last key has completed a word and put a blank after it
  bool followsBlank_ = false;  // the key before it has
  bool tabbed_ = false;        // the last key was Tab and could only complete a part
  std::string hint_;           // after the line
  // What Right takes into the line: nothing, the only offer, or the hint itself.
  enum class Taken { Nothing, Offer, Hint } hintTakes_ = Taken::Nothing;
  std::size_t unfinished_ = 0;  // what ends there may become a word; npos for none

  // A search through the history.
  bool searches_ = false;
  std::string sought_;
  std::size_t found_ = 0;  // the index of the line
  YcluiEditBuffer before_;

  void restart();
  void preview();
  void refresh();
  std::string readable(const std::string& text) const;
  std::string restOfEarlierLine();
  void updateHint();
  void updateNotes();
  void act(bool done) { rings_ = !done; }
  Request edit(const YcluiKey& key);
  Request editByName(YcluiKeyName name);
  Request editByControl(char letter);
  void editByAlt(char letter);
  void type(const std::string& bytes);
  Request finish();
  Request drop(Request request);
  bool asksForList(const std::string& bytes);
  void openList(bool selects);
  void complete();
  bool takeOffer(std::size_t index);
  void chooseFromList(const YcluiKey& key);
  bool takeHint();
  void recall(const std::string* line);
  void search(const YcluiKey& key);
  void beginSearch();
  void endSearch(bool takesLine);
  void seek(std::size_t from, YcluiHistory::Direction direction);
};

#endif  // TERMINAL_YCLUILINEEDITOR_H_
