// How a callable becomes a command. Internal to the language; a host includes yqrtClui/Language.h.

#ifndef LANGUAGE_COMMAND_H_
#define LANGUAGE_COMMAND_H_

#include <cstddef>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "language/Argument.h"
#include "language/Line.h"

namespace yqrtClui::detail {

// How a command ended: with an exception, with a message of its failure, or well.
struct Outcome {
  std::exception_ptr thrown;
  std::string failure;
};

// A command as the compiled part of the library sees it. `run` throws nothing, since that part is
// compiled without exceptions.
class Command {
 public:
  Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;
  virtual ~Command() = default;

  virtual void run(const Line& line, Outcome& outcome) noexcept = 0;

  // Whether it has a parameter for each argument, of the types in `parameters`; otherwise it has
  // the line.
  bool hasParameters = true;
  std::vector<ArgumentType> parameters;
};

// Calls a function that returns nothing, or a message, and catches what it throws.
template <class Function>
void RunGuarded(Outcome& outcome, const Function& function) noexcept {
#ifdef __cpp_exceptions
  try {
#endif
    if constexpr (std::is_void_v<decltype(function())>) {
      function();
    } else {
      outcome.failure = function();
    }
#ifdef __cpp_exceptions
  } catch (...) {
    outcome.thrown = std::current_exception();
  }
#endif
}

// Throws it, unless it is null.
inline void Rethrow(std::exception_ptr thrown) {
  if (thrown != nullptr) std::rethrow_exception(std::move(thrown));
}

// --- Parameters

template <class Parameter>
struct IsParameter
    : std::disjunction<std::is_same<Parameter, int>, std::is_same<Parameter, long>,
                       std::is_same<Parameter, long long>, std::is_same<Parameter, double>,
                       std::is_same<Parameter, std::string_view>,
                       std::is_same<Parameter, std::string>, std::is_same<Parameter, Point>> {};

template <class Parameter>
constexpr ArgumentType TypeOfParameter() {
  if constexpr (std::is_integral_v<Parameter>) {
    return ArgumentType::Integer;
  } else if constexpr (std::is_same_v<Parameter, double>) {
    return ArgumentType::Number;
  } else if constexpr (std::is_same_v<Parameter, Point>) {
    return ArgumentType::Point;
  } else {
    return ArgumentType::Text;
  }
}

// An integer can be passed as a number, but no number as an integer.
constexpr bool CanPass(ArgumentType argument, ArgumentType parameter) {
  return argument == parameter ||
         (argument == ArgumentType::Integer && parameter == ArgumentType::Number);
}

template <class Parameter>
Parameter ReadParameter(ArgumentReader& reader) {
  if constexpr (std::is_integral_v<Parameter>) {
    std::int32_t value = 0;
    reader.read(value);
    return value;
  } else if constexpr (std::is_same_v<Parameter, std::string>) {
    std::string_view value;
    reader.read(value);
    return std::string(value);
  } else {
    Parameter value{};
    reader.read(value);
    return value;
  }
}

// The parameters of a callable. `isKnown` is false when it has several signatures, as a generic
// lambda.
template <class... Given>
struct List {};

template <class Function>
struct SignatureOfPointer {
  static constexpr bool isKnown = false;
};
template <class Returned, class... Given>
struct SignatureOfPointer<Returned (*)(Given...)> {
  static constexpr bool isKnown = true;
  using Parameters = List<std::decay_t<Given>...>;
};
template <class Returned, class... Given>
struct SignatureOfPointer<Returned (*)(Given...) noexcept>
    : SignatureOfPointer<Returned (*)(Given...)> {};
template <class Returned, class Class, class... Given>
struct SignatureOfPointer<Returned (Class::*)(Given...)>
    : SignatureOfPointer<Returned (*)(Given...)> {};
template <class Returned, class Class, class... Given>
struct SignatureOfPointer<Returned (Class::*)(Given...) const>
    : SignatureOfPointer<Returned (*)(Given...)> {};
template <class Returned, class Class, class... Given>
struct SignatureOfPointer<Returned (Class::*)(Given...) noexcept>
    : SignatureOfPointer<Returned (*)(Given...)> {};
template <class Returned, class Class, class... Given>
struct SignatureOfPointer<Returned (Class::*)(Given...) const noexcept>
    : SignatureOfPointer<Returned (*)(Given...)> {};

template <class Function, class = void>
struct Signature : SignatureOfPointer<Function> {};
template <class Function>
struct Signature<Function, std::void_t<decltype(&Function::operator())>>
    : SignatureOfPointer<decltype(&Function::operator())> {};

// --- Commands

template <class Function, class... Parameters>
class CommandWithParameters final : public Command {
 public:
  static_assert((IsParameter<Parameters>::value && ...),
                "a parameter of a command is an int, long, double, std::string_view, std::string "
                "or yqrtClui::Point, or its only parameter is a const yqrtClui::Line&");
  static_assert(std::is_invocable_v<Function&, Parameters&&...>,
                "a command is called with values: it has no parameters that are references to "
                "objects that are not const");

  explicit CommandWithParameters(Function function) : function_(std::move(function)) {
    parameters = {TypeOfParameter<Parameters>()...};
  }

  void run(const Line& line, Outcome& outcome) noexcept override {
    RunGuarded(outcome, [&] {
      ArgumentReader reader(line);
      // Braces: from the first to the last.
      std::tuple<Parameters...> values{ReadParameter<Parameters>(reader)...};
      return std::apply(function_, std::move(values));
    });
  }

 private:
  Function function_;
};

template <class Function>
class CommandWithLine final : public Command {
 public:
  explicit CommandWithLine(Function function) : function_(std::move(function)) {
    hasParameters = false;
  }

  void run(const Line& line, Outcome& outcome) noexcept override {
    RunGuarded(outcome, [&] { return function_(line); });
  }

 private:
  Function function_;
};

// Whether parameters accept the arguments; the compiler reports which do not.
template <class... Arguments, class... Parameters>
constexpr bool Match(List<Arguments...> /*arguments*/, List<Parameters...> /*parameters*/) {
  static_assert(sizeof...(Arguments) == sizeof...(Parameters),
                "the command has more or fewer parameters than its words have arguments");
  if constexpr (sizeof...(Arguments) == sizeof...(Parameters)) {
    constexpr bool canPass =
        (CanPass(ArgumentTypeOf<Arguments>::value, TypeOfParameter<Parameters>()) && ...);
    static_assert(canPass,
                  "a parameter of the command has another type than the argument of its words");
    return canPass;
  } else {
    return false;
  }
}

template <class Function, class... Parameters>
std::unique_ptr<Command> MakeWithParameters(Function&& function, List<Parameters...> /*of*/) {
  return std::make_unique<CommandWithParameters<std::decay_t<Function>, Parameters...>>(
      std::forward<Function>(function));
}

template <class Function>
std::unique_ptr<Command> MakeWithLine(Function&& function) {
  return std::make_unique<CommandWithLine<std::decay_t<Function>>>(
      std::forward<Function>(function));
}

template <class Parameters>
constexpr bool IsLine = std::is_same_v<Parameters, List<Line>>;

// The command of a fragment with these arguments.
template <class... Arguments, class Function>
std::unique_ptr<Command> MakeCommand(List<Arguments...> arguments, Function&& function) {
  using Kind = Signature<std::decay_t<Function>>;
  using Callable = std::decay_t<Function>&;
  if constexpr (Kind::isKnown) {
    using Parameters = typename Kind::Parameters;
    if constexpr (IsLine<Parameters>) {
      return MakeWithLine(std::forward<Function>(function));
    } else if constexpr (Match(List<Arguments...>(), Parameters())) {
      return MakeWithParameters(std::forward<Function>(function), Parameters());
    }
  } else if constexpr (std::is_invocable_v<Callable, Arguments...>) {
    return MakeWithParameters(std::forward<Function>(function), arguments);
  } else {
    static_assert(std::is_invocable_v<Callable, const Line&>,
                  "the command can be called neither with the arguments of its words nor with a "
                  "const yqrtClui::Line&");
    return MakeWithLine(std::forward<Function>(function));
  }
}

// The command of a fragment whose arguments are compared with the parameters at run time.
template <class Function>
std::unique_ptr<Command> MakeCommand(Function&& function) {
  using Kind = Signature<std::decay_t<Function>>;
  if constexpr (Kind::isKnown) {
    using Parameters = typename Kind::Parameters;
    if constexpr (IsLine<Parameters>) {
      return MakeWithLine(std::forward<Function>(function));
    } else {
      return MakeWithParameters(std::forward<Function>(function), Parameters());
    }
  } else {
    return MakeWithLine(std::forward<Function>(function));
  }
}

}  // namespace yqrtClui::detail

#endif  // LANGUAGE_COMMAND_H_
