// What can be put in at the cursor.

#ifndef TERMINAL_YCLUIOFFERS_H_
#define TERMINAL_YCLUIOFFERS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "foundation/YString_Array.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiPreview.h"

// The words, variables and values that can continue a line at the cursor: in groups, and by name in
// each group. The order is worked out as far as it is looked at.
class YQRT_API YcluiOffers {
 public:
  enum class Group { Next, Anywhere, Alias, Variable, Value };
  struct Offer {
    const char* name;
    Group group;
    std::uint32_t tokenId;  // of a word
  };

  explicit YcluiOffers(const YcluiParser& parser) : parser_(parser) {}

  // Finds them for a text that the preview has read. They are valid until the parser, its words or
  // the preview change.
  void find(YcluiPreview& preview, const std::string& text, std::size_t cursor);
  void clear();

  std::size_t count() const { return offers_.size(); }
  bool empty() const { return offers_.empty(); }
  // REQUIRES: index < count()
  const Offer& at(std::size_t index);
  // All names, in no order.
  const char* nameOf(std::size_t index) const { return offers_[index].name; }
  // What the index-th one is for; empty when its language does not say.
  std::string help(std::size_t index);

  // What is typed of them: the part of the text that is replaced.
  std::size_t begin() const { return typing_.begin; }
  std::size_t end() const { return cursor_; }
  const YcluiTyping& typing() const { return typing_; }
  // Whether the part is empty.
  bool isFresh() const { return cursor_ <= typing_.begin; }

  // The longest text with which all names begin, with an opening quote where one is typed.
  std::string common() const;
  // What replaces the part when the index-th one is chosen: its name, in quotes if it needs them,
  // and what ends it.
  std::string inserted(std::size_t index);

  // What the argument is that is being typed, such as "height: an integer from 1 to 100"; empty for
  // anything else.
  std::string argumentText() const;

 private:
  const YcluiParser& parser_;
  YcluiTyping typing_;
  std::size_t cursor_ = 0;
  std::string word_;     // of the argument
  std::string follows_;  // the text after the cursor
  std::vector<Offer> offers_;
  std::size_t sorted_ = 0;  // so many are in order
  YString_Array values_;
  bool isQuoted_ = false;  // what is typed of a value

  void addValues(std::string typed);
  std::string quoted(const char* value) const;
};

#endif  // TERMINAL_YCLUIOFFERS_H_
