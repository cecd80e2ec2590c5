// What a host can show about words and their arguments.

#ifndef PARSER_YCLUIHELP_H_
#define PARSER_YCLUIHELP_H_

#include <cstdint>
#include <memory>

#include "foundation/YString_Array.h"
#include "foundation/YTypes.h"

class YcluiHelpTable;

// Adds to `values` what an argument can be. `typed` is what is typed of it so far, never null.
using YcluiValuesProc = void (*)(void* data, const char* typed, YString_Array& values);
// Called when the function that was set with `data` is not needed any more.
using YcluiReleaseProc = void (*)(void* data);

// The help texts of a parser, by token id:
//
//   YcluiHelp& help = parser.help();
//   help.setText(box, "draws a box");
//   help.setArgument(box, 1, "WIDTH", "in millimetres");
//   help.setRange(box, 1, 0.1, 1000);
//
// Help changes nothing but what is shown. The parser accepts a number outside the range and a value
// outside the list, and words can be added and deleted without regard to it. All words of one id
// have the same help, and an id without a word can have help.
//
// An id is cut to 24 bits, as that of a word. Arguments count from 1, in any order and without a
// highest index, since a token can have more arguments than its word declares. For id 0, which no
// token has, and for an index below 1, setters return 0 and change nothing, and there is never an
// entry.
//
// Setters copy texts and values, replace what was there, and return 1 where nothing else is said.
// Texts that are returned are valid until the same entry is set again. Each operation takes
// constant time, but for copying. Running out of memory ends the process.
class YQRT_API YcluiHelp {
 public:
  YcluiHelp();
  YcluiHelp(const YcluiHelp&) = delete;
  YcluiHelp& operator=(const YcluiHelp&) = delete;
  // Releases all functions.
  ~YcluiHelp();

  // Words.

  // What the word is for, in a line. Null removes the text.
  YWord setText(std::uint32_t id, const char* text);
  // Null without a text.
  const char* text(std::uint32_t id) const;

  // Arguments.

  // A name, such as WIDTH, and a text. Null removes one of them; the other entries of the argument
  // stay.
  YWord setArgument(std::uint32_t id, int index, const char* name, const char* text);
  // Null without one.
  const char* argumentName(std::uint32_t id, int index) const;
  const char* argumentText(std::uint32_t id, int index) const;

  // The range of a number, both ends included; an infinite end is none. 0, without a change, when
  // `low` is greater than `high`, or one of them is no number.
  YWord setRange(std::uint32_t id, int index, double low, double high);
  YWord removeRange(std::uint32_t id, int index);
  // Whether there is a range; without one, `low` and `high` are unchanged.
  bool range(std::uint32_t id, int index, double& low, double& high) const;

  // What the argument can be: a list, in the order in which it is offered, or a function that is
  // called for each question. An empty list and a null function remove the values.
  //
  // A function may do anything, also replace itself or destroy the parser. `release`, if it is not
  // null, is called once with `data`: when other values replace the function, or when the help is
  // destroyed. It must not use the parser. When the setter returns 0, it is not called.
  YWord setValues(std::uint32_t id, int index, const YString_Array& values);
  YWord setValues(std::uint32_t id, int index, YcluiValuesProc function, void* data,
                  YcluiReleaseProc release = nullptr);
  bool hasValues(std::uint32_t id, int index) const;
  // Replaces `values` by those that begin with `typed`, in any case of ASCII letters; null is the
  // empty text. Empty without values. `typed` must not be one of `values`.
  void findValues(std::uint32_t id, int index, const char* typed, YString_Array& values) const;

  // Whether the argument is the name of a file, which a host completes by path.
  YWord setFileName(std::uint32_t id, int index, bool isFileName);
  bool isFileName(std::uint32_t id, int index) const;

 private:
  std::unique_ptr<YcluiHelpTable> table_;  // null without help
};

#endif  // PARSER_YCLUIHELP_H_
