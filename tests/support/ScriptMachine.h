// A small stack machine in the place of the script engine: it runs primitives from expressions such
// as (clui-token p 7 "line:" 4 4), checks each call against the table as an engine does, and puts
// down what became of it.

#ifndef TESTS_SUPPORT_SCRIPTMACHINE_H_
#define TESTS_SUPPORT_SCRIPTMACHINE_H_

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

struct Value;
using Ref = std::shared_ptr<Value>;

struct Value {
  // n null, b boolean, l long, d double, c character, s string, h handle, p pair, y symbol
  char kind = 'n';
  long number = 0;
  double real = 0;
  std::string text = {};
  Ref car = nullptr;
  Ref cdr = nullptr;
};

struct ScriptMachine {
  // An argument, or what a primitive pushed.
  struct Slot {
    Ref value;
    bool isArgument;
  };

  std::vector<Slot> stack;
  std::map<std::string, Ref> variables;
  std::vector<std::unique_ptr<std::string>> strings;  // popped by the primitive that runs
  std::vector<std::string> executed;                  // the texts given to ExecuteString
  std::function<void(const std::string&)> executor;   // evaluates them, in place of the machine
  std::string report;                                 // " @n" for the last argument reported

  // Evaluates the expressions of the text and returns the last value as text, or "bad" with what
  // the failing primitive pushed all the same; followed by "@n" for the argument that was reported
  // to the engine, and "!name" for each code; see tests/support/codes.h. Literals: 1 1.5 "text"
  // 'text'
  // #\x #t #f, and a name without a value. Forms: (define name value), (list ...), (cons a b), and
  // the primitives.
  std::string run(const std::string& text);

  bool evaluateAll(const std::string& text, Ref& result);
  void define(const std::string& name, char kind, const void* object);

 private:
  bool evaluate(const Ref& form, Ref& result);
  bool apply(const std::string& name, const std::vector<Ref>& arguments, Ref& result);
};

// The machine that the operations of ScmVMExternal work on.
extern ScriptMachine* TheMachine;

#endif  // TESTS_SUPPORT_SCRIPTMACHINE_H_
