// The binding of a parser to a text field of the host's user interface. Internal to script/.

#ifndef SCRIPT_YCLUIFIELDBINDING_H_
#define SCRIPT_YCLUIFIELDBINDING_H_

#include <cstddef>
#include <cstdint>

#include "foundation/YLiveList.h"
#include "foundation/YString.h"
#include "foundation/YTypes.h"
#include "platform/ui/YuiModificationCallBack.h"
#include "platform/ui/YuiTextField.h"
#include "script/YcluiKeyAction.h"

class YcluiParser;

// The field offers each change to the binding before applying it. The binding keeps a copy of the
// field's text, passes each word to the parser when the blank after it is typed, runs script text
// for bound keys, and writes the command line that the parser echoes back into the field. The text
// before the current word has been passed to the parser and cannot be deleted any more.
//
// The field and the copy are the same after every change. Offsets into the copy are in bytes.
//
// Formats must be valid (YcluiFormatIsValid), with one text for the echo, two for a finished
// command and one for a key. The result of the script text is ignored, and in a process without a
// script engine nothing is run.
//
// The library does not own bindings: one exists until the host destroys it, as the callback of the
// field, or the process ends. Field, parser and binding may be destroyed in any order, even during
// a call of one of their functions; the others are notified. A second binding of a field or a
// parser replaces the first, which continues without it. A parser that a script has deleted
// receives no more words.
class YcluiFieldBinding : public YuiModificationCallBack {
 public:
  // Creates a binding of the two, each of which may be null, and shows the empty line if there is a
  // parser. A null format is treated as empty. Returns null when there is no memory, or when
  // showing the line destroyed the binding. Linear in the number of bindings.
  static YcluiFieldBinding* Attach(YuiTextField* field, YcluiParser* parser, const char* echoFormat,
                                   const char* synFormat);
  ~YcluiFieldBinding() override;

  // The existing binding at that address, if this thread attached it, or null; the address may be
  // anything.
  static YcluiFieldBinding* FindLive(const void* handle);

  // Returns 1 when the field shall apply the change. For an insertion the first byte decides:
  //   a bound key, no quote open      runs its format; 0
  //   a control character             not added to the copy; 1
  //   a blank, no quote open          passes the word and the blank to the parser; 0
  //   anything else                   added to the copy; 1
  // A double quote opens or closes a quote, unless a backslash of the word precedes it. For a
  // deletion returns 0 when the current word is empty, else 1.
  YWord OnModification(std::int32_t, std::int32_t, const char* text, std::uint32_t length) override;
  void OnRelease(YuiTextField* field) override;

  // Sets the action of a key, replacing a previous one. Returns 1.
  YWord setKeyAction(char key, const char* format);

  // Replaces the current word; `word` must not point into the binding's text. With `feed`, passes
  // the word to the parser as it is; otherwise it becomes the current word.
  void replaceCurrentWord(const char* word, YWord feed);

  // The word being typed. Valid until the binding changes.
  const char* currentWord() const { return fieldText.buffer + wordStart_; }
  // The copy of the field's text, and the offset of the current word in it.
  const YString& text() const { return fieldText; }
  std::uint32_t wordStart() const { return wordStart_; }

 private:
  class Watch;

  YuiTextField* field = nullptr;
  YcluiParser* parser = nullptr;
  YString echoFormat;
  YString synFormat;
  YString fieldText;
  std::uint32_t wordStart_ = 0;
  bool inQuote = false;
  YcluiKeyAction_Array keyActions;
  bool selfEdit = false;     // changes come from the binding and are accepted
  std::uint32_t shows = 0;   // number of calls of `show`
  Watch* watches = nullptr;  // the watches on this binding, innermost first
  YLiveList<YcluiFieldBinding>::Member membership{*this};

  static YLiveList<YcluiFieldBinding> All;

  YcluiFieldBinding(const char* theEchoFormat, const char* theSynFormat);

  void attachField(YuiTextField& attached);
  void attachParser(YcluiParser& attached);
  void releaseParser();

  void show();
  void showText(const char* shown);
  void onEcho(const char* wholeLine);
  void onSyntax(const char* line, const char* wholeLine);
  void feedParser(const char* word);
  // Fills the format and runs the result. The arguments are not used once it runs.
  static void Run(const YString& format, const char* first, const char* second = "");

  // Each returns whether the field shall apply the change.
  bool insert(const char* inserted, std::size_t length);
  bool endWord(const char* blank, std::size_t length);
  bool deleteLast();
  // Runs the action of the key; false when it has none.
  bool fireKeyAction(char key);
  int findKeyAction(char key) const;
  bool wordIsEmpty() const { return wordStart_ == fieldText.length; }
  bool followsBackslash(std::uint32_t offset) const;
};

// Detects whether a binding was destroyed by a call that runs commands or scripts.
class YcluiFieldBinding::Watch {
 public:
  explicit Watch(YcluiFieldBinding& binding) : binding_(&binding), outer_(binding.watches) {
    binding.watches = this;
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
  ~Watch() {
    if (binding_ != nullptr) binding_->watches = outer_;
  }
  bool isGone() const { return binding_ == nullptr; }

 private:
  friend class YcluiFieldBinding;

  YcluiFieldBinding* binding_;
  Watch* outer_;
};

#endif  // SCRIPT_YCLUIFIELDBINDING_H_
