// The words of a command, for commands whose arguments vary.

#ifndef LANGUAGE_LINE_H_
#define LANGUAGE_LINE_H_

#include <cstdint>
#include <string_view>

#include "foundation/YTypes.h"
#include "language/Argument.h"

class YcluiToken;

namespace yqrtClui {

class LanguageCore;
class Syntax;

// A word of a line, with its arguments, which count from 1. An argument of another type, or one
// that does not exist, gives 0, the empty text, or the point 0,0.
class YQRT_API Token {
 public:
  explicit Token(const YcluiToken* token) : token_(token) {}

  // The full name, in lower case.
  std::string_view name() const;
  // Whether it is this word. False for any other fragment.
  bool is(const Syntax& word) const;

  int count() const;  // of the arguments
  std::int32_t integer(int index) const;
  double number(int index) const;  // also of an integer
  std::string_view text(int index) const;
  Point point(int index) const;

  const YcluiToken& token() const { return *token_; }

 private:
  const YcluiToken* token_;
};

// All words of the command that is running, without those that are accepted anywhere. It and all
// that it returns are valid until the command returns.
class YQRT_API Line {
 public:
  int count() const { return count_; }
  // REQUIRES: 0 <= index < count().
  Token operator[](int index) const { return Token(tokens_[index]); }

  // Iterate over the tokens: for (Token each : line) ...
  class Iterator {
   public:
    explicit Iterator(const YcluiToken* const* at) : at_(at) {}
    Token operator*() const { return Token(*at_); }
    Iterator& operator++() {
      ++at_;
      return *this;
    }
    bool operator!=(const Iterator& other) const { return at_ != other.at_; }

   private:
    const YcluiToken* const* at_;
  };
  Iterator begin() const { return Iterator(tokens_); }
  Iterator end() const { return Iterator(tokens_ + count_); }

 private:
  friend class LanguageCore;

  Line(const YcluiToken* const* tokens, int count) : tokens_(tokens), count_(count) {}

  const YcluiToken* const* tokens_;
  int count_;
};

// Reads the arguments of a line from the first to the last. REQUIRES of each operation: there is
// another one.
class YQRT_API ArgumentReader {
 public:
  explicit ArgumentReader(const Line& line) : line_(line) {}

  void read(std::int32_t& value);
  void read(double& value);  // also of an integer
  void read(std::string_view& value);
  void read(Point& value);

 private:
  const Line& line_;
  int word_ = 0;
  int argument_ = 0;  // the last one that was read

  Token next();
};

}  // namespace yqrtClui

#endif  // LANGUAGE_LINE_H_
