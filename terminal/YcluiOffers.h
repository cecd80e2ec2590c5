// What can be put in at the cursor.

#ifndef TERMINAL_YCLUIOFFERS_H_
#define TERMINAL_YCLUIOFFERS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/YString_Array.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiPreview.h"

// The words, variables and values that can continue a line at the cursor: in groups, words and
// variables by name in each of them. No operation looks at all of them but for values.
class YQRT_API YcluiOffers {
 public:
  enum class Group { Next, Anywhere, Alias, Variable, Value };
  struct Offer {
    const char* name;
    Group group;
    std::uint32_t tokenId;  // of a word
  };

  explicit YcluiOffers(const YcluiParser& parser) : parser_(parser) {}

  // Finds out what is being typed in a text that the preview has read; there are no offers yet.
  void locate(YcluiPreview& preview, const std::string& text, std::size_t cursor);
  // Finds the offers for that. They are valid until the parser, its words or the preview change.
  void findHere(YcluiPreview& preview);
  void find(YcluiPreview& preview, const std::string& text, std::size_t cursor) {
    locate(preview, text, cursor);
    findHere(preview);
  }

  std::size_t count() const { return count_; }
  bool empty() const { return count_ == 0; }
  // REQUIRES: index < count()
  Offer at(std::size_t index) const;
  // What the index-th one is for; empty when its language does not say.
  std::string help(std::size_t index) const;

  // What is typed of them: the part of the text that is replaced.
  std::size_t begin() const { return typing_.begin; }
  std::size_t end() const { return cursor_; }
  const YcluiTyping& typing() const { return typing_; }
  // Whether the part is empty.
  bool isFresh() const { return cursor_ <= typing_.begin; }

  // The longest text with which all names begin; of values in an opened quote where that is needed.
  std::string common() const;
  // What replaces the part when the index-th one is chosen: its name, in quotes if it needs them,
  // and what ends it.
  std::string inserted(std::size_t index) const;
  // The end of the part that is replaced by it: what ends it may be there already.
  std::size_t endFor(const std::string& inserted) const;
  // What the index-th one has after what is typed of it.
  std::string rest(std::size_t index) const;

  // What the argument is that is being typed, such as "height: an integer from 1 to 100"; empty for
  // anything else.
  std::string argumentText() const;

 private:
  const YcluiParser& parser_;
  const YcluiPreview* preview_ = nullptr;  // of the words and variables that were found
  YcluiTyping typing_;
  std::size_t cursor_ = 0;
  std::string typed_;    // of the name, without a quote
  std::string follows_;  // the text after the cursor
  std::size_t count_ = 0;
  YString_Array values_;
  bool isQuoted_ = false;  // what is typed of a value

  void findValues();
  std::size_t endOfGroup(std::size_t index) const;
  bool needsQuotes(std::string_view value) const;
  std::string opened(std::string_view value, bool isQuoted) const;
};

#endif  // TERMINAL_YCLUIOFFERS_H_
