// Words, and what a command consists of: word("from:", point("A")) >> word("to:", point("B"))

#ifndef LANGUAGE_SYNTAX_H_
#define LANGUAGE_SYNTAX_H_

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "language/Argument.h"

namespace yqrtClui {

// What is declared of a word.
struct WordDeclaration {
  std::string name;
  std::string abbreviation;  // empty when only the full name is accepted
  std::string help;
  std::vector<ArgumentDeclaration> arguments;
  bool isDelimiter = false;  // the name is one character, which needs no blanks around it
};

// A fragment of a syntax: a word, or a combination of fragments. It is an immutable value that
// shares its parts with its copies; it can be used any number of times, in any number of languages.
//
//   a >> b              a, then b
//   a | b               one of them
//   *a                  a any number of times, or not at all; also anyOf(a)
//   maybe(a)            a, or nothing
//   a.priority(200)     see priority()
class Syntax {
 public:
  enum class Kind { Word, Sequence, Choice, Repetition, Optional };

  explicit Syntax(WordDeclaration word) {
    Node node;
    node.word = std::make_shared<const WordDeclaration>(std::move(word));
    node_ = std::make_shared<const Node>(std::move(node));
  }

  // The command that begins with this fragment has the priority. While it is half typed, another
  // command may interrupt it whose priority is at most `interruptLimit`. Both are 127 by default.
  Syntax priority(std::uint8_t priority, std::uint8_t interruptLimit = 127) const {
    return withPriority(priority, interruptLimit);
  }

  // The parts; a word has none. For a word, `word` is not null.
  Kind kind() const { return node_->kind; }
  const std::vector<Syntax>& parts() const { return node_->parts; }
  const std::shared_ptr<const WordDeclaration>& word() const { return node_->word; }
  bool hasPriority() const { return node_->hasPriority; }
  std::uint8_t priority() const { return node_->priority; }
  std::uint8_t interruptLimit() const { return node_->interruptLimit; }

  friend Syntax operator>>(const Syntax& first, const Syntax& second) {
    return Join(Kind::Sequence, first, second);
  }
  friend Syntax operator|(const Syntax& one, const Syntax& other) {
    return Join(Kind::Choice, one, other);
  }
  friend Syntax operator*(const Syntax& repeated) { return Wrap(Kind::Repetition, repeated); }
  friend Syntax maybe(const Syntax& part) { return Wrap(Kind::Optional, part); }

 protected:
  struct Node {
    Kind kind = Kind::Word;
    std::shared_ptr<const WordDeclaration> word;
    std::vector<Syntax> parts;
    bool hasPriority = false;
    std::uint8_t priority = 127;
    std::uint8_t interruptLimit = 127;
  };

  explicit Syntax(Node node) : node_(std::make_shared<const Node>(std::move(node))) {}

  Syntax withPriority(std::uint8_t priority, std::uint8_t interruptLimit) const {
    Node node = *node_;
    node.hasPriority = true;
    node.priority = priority;
    node.interruptLimit = interruptLimit;
    return Syntax(std::move(node));
  }

  // A sequence in a sequence is the same as its parts, and so is a choice in a choice.
  static Syntax Join(Kind kind, const Syntax& first, const Syntax& second) {
    Node node;
    node.kind = kind;
    for (const Syntax* each : {&first, &second}) {
      const bool isSame = each->kind() == kind && !each->hasPriority();
      if (!isSame) node.parts.push_back(*each);
      if (isSame) node.parts.insert(node.parts.end(), each->parts().begin(), each->parts().end());
    }
    return Syntax(std::move(node));
  }
  static Syntax Wrap(Kind kind, const Syntax& part) {
    Node node;
    node.kind = kind;
    node.parts.push_back(part);
    return Syntax(std::move(node));
  }

 private:
  std::shared_ptr<const Node> node_;
};

// A fragment whose arguments are known to the compiler: every line that it accepts gives a command
// these values, in this order. Sequences of such fragments are of this kind, choices when both
// sides have the same arguments, repetitions and optional parts when they have none. Any other
// combination is a Syntax.
template <class... Values>
class Phrase : public Syntax {
 public:
  using Repeated = std::conditional_t<sizeof...(Values) == 0, Phrase, Syntax>;

  Phrase priority(std::uint8_t priority, std::uint8_t interruptLimit = 127) const {
    return Phrase(withPriority(priority, interruptLimit));
  }
  using Syntax::priority;

  template <class... Others>
  friend Phrase<Values..., Others...> operator>>(const Phrase& first,
                                                 const Phrase<Others...>& second) {
    return Then(first, second);
  }
  friend Phrase operator|(const Phrase& one, const Phrase& other) {
    return Phrase(Join(Kind::Choice, one, other));
  }
  friend Repeated operator*(const Phrase& repeated) {
    return Repeated(Wrap(Kind::Repetition, repeated));
  }
  friend Repeated maybe(const Phrase& part) { return Repeated(Wrap(Kind::Optional, part)); }

 protected:
  explicit Phrase(Syntax same) : Syntax(std::move(same)) {}

 private:
  template <class... Others>
  friend class Phrase;

  template <class... Others>
  static Phrase<Values..., Others...> Then(const Phrase& first, const Phrase<Others...>& second) {
    return Phrase<Values..., Others...>(Join(Kind::Sequence, first, second));
  }
};

// A word. Words are found in any case of ASCII letters. Two words of one name must be declared
// alike; they are the same word then.
template <class... Values>
class Word : public Phrase<Values...> {
 public:
  explicit Word(WordDeclaration declared) : Phrase<Values...>(Syntax(std::move(declared))) {}

  // What the word is for, in a line.
  Word help(std::string text) const {
    WordDeclaration changed = *this->word();
    changed.help = std::move(text);
    return Word(std::move(changed));
  }
};

// A word without arguments. With an abbreviation, which the name begins with, every form from that
// to the full name is accepted.
inline Word<> word(std::string name, std::string abbreviation = {}) {
  return Word<>(WordDeclaration{std::move(name), std::move(abbreviation), {}, {}});
}
// A word of one ASCII punctuation character, none of : , " ' # $ and the backslash, that needs no
// blanks around it: "a+b" is then three words. In the whole language it ends a word and an argument
// that is not quoted, so other words cannot contain it.
inline Word<> delimiter(char character) {
  return Word<>(WordDeclaration{std::string(1, character), {}, {}, {}, true});
}
// A word with arguments. Its name should end with ":", so that the arguments can follow at once.
template <class First, class... Others>
inline Word<First, Others...> word(std::string name, const Argument<First>& first,
                                   const Argument<Others>&... others) {
  return Word<First, Others...>(
      WordDeclaration{std::move(name), {}, {}, {first.declaration(), others.declaration()...}});
}
// The same with arguments that are not known before run time: a command's parameters are then
// checked when the command is added to a language.
inline Syntax word(std::string name, std::vector<ArgumentDeclaration> arguments) {
  return Syntax(WordDeclaration{std::move(name), {}, {}, std::move(arguments)});
}

// Any number of times, or not at all.
template <class Fragment>
auto anyOf(const Fragment& repeated) {
  return *repeated;
}

}  // namespace yqrtClui

#endif  // LANGUAGE_SYNTAX_H_
