// Arguments of words: integer("n").range(0, 9).help("how many")

#ifndef LANGUAGE_ARGUMENT_H_
#define LANGUAGE_ARGUMENT_H_

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace yqrtClui {

// A pair of integers, typed as "12,34".
struct Point {
  std::int32_t x = 0;
  std::int32_t y = 0;
};

enum class ArgumentType { Text, Integer, Number, Point };

// What is declared of an argument.
struct ArgumentDeclaration {
  ArgumentType type = ArgumentType::Text;
  std::string name;
  std::string help;
  double low = -std::numeric_limits<double>::infinity();
  double high = std::numeric_limits<double>::infinity();
  std::vector<std::string> values;  // all that is accepted; any value when it is empty
  std::function<std::vector<std::string>()> suggestions;  // throws nothing
  bool isFileName = false;
};

namespace detail {

template <class Value>
struct ArgumentTypeOf;
template <>
struct ArgumentTypeOf<std::string_view> {
  static constexpr ArgumentType value = ArgumentType::Text;
};
template <>
struct ArgumentTypeOf<std::int32_t> {
  static constexpr ArgumentType value = ArgumentType::Integer;
};
template <>
struct ArgumentTypeOf<double> {
  static constexpr ArgumentType value = ArgumentType::Number;
};
template <>
struct ArgumentTypeOf<Point> {
  static constexpr ArgumentType value = ArgumentType::Point;
};

}  // namespace detail

// An argument that gives a command a `Value`: std::string_view, std::int32_t, double or Point. It
// is an immutable value: each operation returns a changed copy.
//
// Ranges and values are checked before the syntax sees the word: a word with another argument is
// refused, and does not continue the command.
template <class Value>
class Argument {
 public:
  // The name is shown to the user where the argument is to be typed.
  explicit Argument(std::string name) {
    declared_.type = detail::ArgumentTypeOf<Value>::value;
    declared_.name = std::move(name);
  }

  // What the argument is for, in a few words.
  Argument help(std::string text) const {
    Argument changed = *this;
    changed.declared_.help = std::move(text);
    return changed;
  }

  // Both ends are accepted.
  Argument range(Value low, Value high) const {
    static_assert(std::is_arithmetic_v<Value>, "only an integer or a number has a range");
    Argument changed = *this;
    changed.declared_.low = low;
    changed.declared_.high = high;
    return changed;
  }

  // The texts that are offered and accepted, in this case of letters; every text when there is
  // none.
  Argument values(std::vector<std::string> accepted) const {
    static_assert(std::is_same_v<Value, std::string_view>, "only a text has a list of values");
    Argument changed = *this;
    changed.declared_.values = std::move(accepted);
    return changed;
  }

  // A function without parameters that returns the texts that are offered, in any container of
  // strings; others are accepted too. It is called whenever they are to be shown, and copied with
  // the argument. When it throws, nothing is offered.
  template <class Function>
  Argument suggest(Function function) const {
    Argument changed = *this;
    changed.declared_.suggestions = [function]() mutable {
      std::vector<std::string> texts;
#ifdef __cpp_exceptions
      try {
        for (const auto& each : function()) texts.emplace_back(each);
      } catch (...) {
        texts.clear();
      }
#else
      for (const auto& each : function()) texts.emplace_back(each);
#endif
      return texts;
    };
    return changed;
  }

  // The text is the name of a file; the line editor completes it by path.
  Argument fileName() const {
    static_assert(std::is_same_v<Value, std::string_view>, "only a text is the name of a file");
    Argument changed = *this;
    changed.declared_.isFileName = true;
    return changed;
  }

  const ArgumentDeclaration& declaration() const {
    return declared_;
  }

 private:
  ArgumentDeclaration declared_;
};

// A text, which is quoted when it contains blanks or commas.
inline Argument<std::string_view> text(std::string name) {
  return Argument<std::string_view>(std::move(name));
}
// An integer of 32 bits.
inline Argument<std::int32_t> integer(std::string name) {
  return Argument<std::int32_t>(std::move(name));
}
// A decimal number.
inline Argument<double> number(std::string name) {
  return Argument<double>(std::move(name));
}
inline Argument<Point> point(std::string name) {
  return Argument<Point>(std::move(name));
}

}  // namespace yqrtClui

#endif  // LANGUAGE_ARGUMENT_H_
