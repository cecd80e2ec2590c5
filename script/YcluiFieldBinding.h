// What ties a parser to a text field of the host's user interface. Internal to script/.

#ifndef SCRIPT_YCLUIFIELDBINDING_H_
#define SCRIPT_YCLUIFIELDBINDING_H_

#include <cstddef>
#include <cstdint>

#include "foundation/YString.h"
#include "foundation/YTypes.h"
#include "platform/ui/YuiModificationCallBack.h"
#include "platform/ui/YuiTextField.h"
#include "script/YcluiKeyAction.h"

class YcluiParser;

// A binding sees what is typed into its field before the field does. It keeps a copy of the field's
// text, gives each word to the parser when the blank behind it is typed, runs script text for bound
// keys, and writes the line as the parser sees it back into the field. What stands in front of the
// word being typed has gone to the parser and is not rubbed out any more.
//
// Field and copy show the same after every change. So the copy counts in bytes, as everything that
// looks into it does: a width counted in characters of the locale is no place in the text, and a
// deletion could not take it back.
//
// Formats are good ones (YcluiFormatIsGood): of one text for the echo, of two for a finished
// command, of one for a key. What a script does in one is not looked at, and in a process without
// a script engine formats run nothing.
//
// Life. A binding belongs to nobody in the library and stays until its host destroys it, as the
// object that the field asks, or the process ends. Field, parser and binding may go in any order,
// in the middle of anything that one of them is doing: those that are left know it. A field or a
// parser that gets a second binding is lost to the first, which goes on without. A parser that a
// script has deleted is not fed any more.
class YcluiFieldBinding : public YuiModificationCallBack {
 public:
  // Ties the two, each of which may be null, and shows the empty line if there is a parser. Null
  // formats are empty ones. Null when there is no memory, or when the binding did not survive that.
  // Costs the number of bindings.
  static YcluiFieldBinding* Attach(YuiTextField* field, YcluiParser* parser, const char* echoFormat,
                                   const char* synFormat);
  ~YcluiFieldBinding() override;

  // The live binding at that address, or null. Any address can be asked.
  static YcluiFieldBinding* FindLive(const void* handle);

  // An insertion, by its first byte, whatever follows it:
  //   a bound key, no quote open      runs its format; 0
  //   a control character             1, and the copy does not take it
  //   a blank, no quote open          ends the word, which goes to the parser with it; 0
  //   anything else                   1
  // A double quote opens or closes a quote, unless a backslash of the word stands before it.
  // A deletion answers 0 when the word is empty, else 1. Each costs the length of what is inserted;
  // a deletion also that of a run of lead bytes in front.
  YWord OnModification(std::int32_t, std::int32_t, const char* text, std::uint32_t length) override;
  void OnRelease(YuiTextField* field) override;

  // Gives a key its action, in place of the one that it had. Answers 1.
  YWord setKeyAction(char key, const char* format);

  // Puts another word, which is not a part of this one, in the place of the one being typed. With
  // `feed` it is given to the parser, as it is; otherwise it can be typed on, and replaced again.
  void replaceCurrentWord(const char* word, YWord feed);

  // The word being typed. Good until the binding changes.
  const char* currentWord() const { return fieldText.buffer + wordStart_; }
  // The field's text, and where in it the word begins.
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
  bool selfEdit = false;                  // what the field is told now is ours and passes
  std::uint32_t shows = 0;                // counts the times that the field was told
  Watch* watches = nullptr;               // of the operations that have called out
  YcluiFieldBinding* previous = nullptr;  // in the list of all live bindings
  YcluiFieldBinding* next;

  static YcluiFieldBinding* First;

  YcluiFieldBinding(const char* theEchoFormat, const char* theSynFormat);

  void takeField(YuiTextField& taken);
  void takeParser(YcluiParser& taken);
  void releaseParser();

  void show();
  void showText(const char* shown);
  void onEcho(const char* wholeLine);
  void onSyntax(const char* line, const char* wholeLine);
  void feedParser(const char* word);
  // Fills the format and runs it; neither is used any more once it runs.
  static void Run(const YString& format, const char* first, const char* second = "");

  YWord insert(const char* inserted, std::size_t length);
  YWord endWord(const char* blank, std::size_t length);
  YWord rubOut();
  YWord fireKeyAction(char key);
  int findKeyAction(char key) const;
  bool wordIsEmpty() const { return wordStart_ == fieldText.length; }
  bool isBehindBackslash(std::uint32_t place) const;
};

// Whether a binding is still there behind something that may have destroyed it.
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
