#include "tests/support/ScriptMachine.h"

#include <cctype>
#include <cstdlib>
#include <cstring>

#include "script/ycscm.h"
#include "tests/support/codes.h"

ScriptMachine* TheMachine = nullptr;

namespace {

Ref make(Value value) {
  return std::make_shared<Value>(std::move(value));
}

Ref makeList(const std::vector<Ref>& items) {
  Ref list = make({});
  for (auto i = items.rbegin(); i != items.rend(); ++i)
    list = make({.kind = 'p', .car = *i, .cdr = list});
  return list;
}

void skipBlanks(const char*& text) {
  while (std::isspace(static_cast<unsigned char>(*text)) != 0) ++text;
}

Ref read(const char*& text) {
  skipBlanks(text);
  if (*text == '(') {
    std::vector<Ref> items;
    for (++text, skipBlanks(text); *text != ')'; skipBlanks(text)) items.push_back(read(text));
    ++text;
    return makeList(items);
  }
  if (*text == '"' || *text == '\'') {
    const char* end = std::strchr(text + 1, *text);
    Ref string = make({.kind = 's', .text = std::string(text + 1, end)});
    text = end + 1;
    return string;
  }
  if (std::strncmp(text, "#\\", 2) == 0) {
    text += 3;
    return make({.kind = 'c', .number = text[-1]});
  }
  const char* begin = text;
  while (std::strchr(" )\n", *text) == nullptr) ++text;
  const std::string word(begin, text);
  if (word == "#t" || word == "#f") return make({.kind = 'b', .number = word == "#t"});
  const bool isNumber = word.find_first_not_of("-.0123456789") == std::string::npos;
  if (!isNumber) return make({.kind = 'y', .text = word});
  if (word.find('.') != std::string::npos) return make({.kind = 'd', .real = std::stod(word)});
  return make({.kind = 'l', .number = std::stol(word)});
}

std::string print(const Ref& value) {
  const char kind = value->kind;
  if (kind == 'n') return "()";
  if (kind == 'b') return value->number != 0 ? "#t" : "#f";
  if (kind == 'l') return std::to_string(value->number);
  if (kind == 's') return '\'' + value->text + '\'';
  return value->number != 0 ? "handle" : "null handle";
}

Ref pop(YStatus& status) {
  auto& stack = TheMachine->stack;
  if (stack.empty()) {
    YStatusClear(status);
    return make({});
  }
  Ref top = stack.back().value;
  stack.pop_back();
  return top;
}

// The value on top when it is of that kind; otherwise a null value, with bit 0 clear and the
// position reported, if there is one.
Ref popA(char kind, YStatus& status, YArgNum position = 0) {
  Ref top = pop(status);
  if (top->kind == kind) return top;
  if (position != 0) ScmVMExternal::VMESetErrorArgNum(position, status);
  YStatusClear(status);
  return make({});
}

const char* keep(const Ref& string) {
  if (string->kind != 's') return nullptr;
  TheMachine->strings.push_back(std::make_unique<std::string>(string->text));
  return TheMachine->strings.back()->c_str();
}

void* pointerOf(const Ref& handle) {
  return reinterpret_cast<void*>(handle->number);
}

YWord isOnTop(char kind) {
  auto& stack = TheMachine->stack;
  return !stack.empty() && stack.back().value->kind == kind ? 1 : 0;
}

void push(Value value) {
  TheMachine->stack.push_back({make(std::move(value)), false});
}

YWord replaceTop(Ref Value::*part) {
  if (isOnTop('p') == 0) return 0;
  Ref& top = TheMachine->stack.back().value;
  top = Ref((*top).*part);
  return 1;
}

}  // namespace

std::string ScriptMachine::run(const std::string& text) {
  report.clear();
  const std::uint64_t before = YErr.count();
  Ref result = make({});
  std::string outcome = evaluateAll(text, result) ? print(result) : "bad";
  if (outcome == "bad" && result != nullptr) outcome += ' ' + print(result);
  return outcome + report + CodesSince(before, " !");
}

bool ScriptMachine::evaluateAll(const std::string& text, Ref& result) {
  const char* rest = text.c_str();
  for (skipBlanks(rest); *rest != '\0'; skipBlanks(rest)) {
    if (!evaluate(read(rest), result)) return false;
  }
  return true;
}

void ScriptMachine::define(const std::string& name, char kind, const void* object) {
  variables[name] = make({.kind = kind, .number = reinterpret_cast<long>(object)});
}

bool ScriptMachine::evaluate(const Ref& form, Ref& result) {
  const auto variable = form->kind == 'y' ? variables.find(form->text) : variables.end();
  result = variable == variables.end() ? form : variable->second;
  if (form->kind != 'p') return true;
  const std::string& name = form->car->text;
  if (name == "define") {
    if (!evaluate(form->cdr->cdr->car, result)) return false;
    variables[form->cdr->car->text] = result;
    return true;
  }
  std::vector<Ref> arguments;
  for (Ref rest = form->cdr; rest->kind == 'p'; rest = rest->cdr) {
    if (!evaluate(rest->car, result)) return false;
    arguments.push_back(result);
  }
  if (name == "list") result = makeList(arguments);
  if (name == "cons") result = make({.kind = 'p', .car = arguments[0], .cdr = arguments[1]});
  return name == "list" || name == "cons" || apply(name, arguments, result);
}

bool ScriptMachine::apply(const std::string& name, const std::vector<Ref>& arguments, Ref& result) {
  const YScmProc* row = CluiLibraryProcs();
  while (name != row->name) ++row;
  result = nullptr;
  const auto argc = static_cast<std::uint32_t>(arguments.size());
  if (argc < row->required || (argc > row->required && row->rest == 0)) return false;

  const std::size_t base = stack.size();
  const std::size_t stringBase = strings.size();
  for (const Ref& argument : arguments) stack.push_back({argument, true});
  YStatus status{1};
  row->procedure(argc, status);
  strings.resize(stringBase);
  if (stack.size() > base && !stack.back().isArgument) result = stack.back().value;
  const bool isGood = YStatusIsGood(status);
  if (isGood && (result == nullptr || stack.size() != base + 1)) std::abort();
  if (stack.size() < base) std::abort();
  stack.resize(base);
  return isGood;
}

// The results and effects of the operations of the engine.
#define CLUI_VM(Type, name, parameters, answer) \
  Type ScmVMExternal::name parameters {         \
    return answer;                              \
  }
CLUI_VM(YWord, StackLongP, (), isOnTop('l'))
CLUI_VM(YWord, StackSmallLongP, (), 0)
CLUI_VM(YWord, StackDoubleP, (), isOnTop('d'))
CLUI_VM(YWord, StackFloatP, (), 0)
CLUI_VM(YWord, StackCharP, (), isOnTop('c'))
CLUI_VM(YWord, StackStringP, (), isOnTop('s'))
CLUI_VM(YWord, StackHandleP, (), isOnTop('h'))
CLUI_VM(YWord, StackPairP, (), isOnTop('p'))
CLUI_VM(YWord, StackNullP, (), isOnTop('n'))

CLUI_VM(long, StackPopLong, (YStatus & status), popA('l', status)->number)
CLUI_VM(double, StackPopDouble, (YStatus & status), popA('d', status)->real)
CLUI_VM(long, StackPopChar, (YStatus & status), popA('c', status)->number)
CLUI_VM(const char*, StackPopString, (YStatus & status), keep(popA('s', status)))
CLUI_VM(void*, StackPopHandle, (YStatus & status), pointerOf(popA('h', status)))
CLUI_VM(void, StackPop, (YStatus & status), void(pop(status)))
void ScmVMExternal::StackPopN(long n, YStatus& status) {
  for (; n > 0; --n) pop(status);
}

CLUI_VM(void, StackPushLong, (long value), push({.kind = 'l', .number = value}))
CLUI_VM(void, StackPushBoolean, (YWord value), push({.kind = 'b', .number = value != 0}))
CLUI_VM(void, StackPushString, (const char* text), push({.kind = 's', .text = text}))
CLUI_VM(void, StackPushNull, (), push({}))
CLUI_VM(void, StackPushHandle, (void* first, void*, void (*)(void*)),
        push({.kind = 'h', .number = reinterpret_cast<long>(first)}))

CLUI_VM(void, StackDuplicate, (), TheMachine->stack.push_back(TheMachine->stack.back()))
CLUI_VM(YWord, StackCar, (), replaceTop(&Value::car))
CLUI_VM(YWord, StackCdr, (), replaceTop(&Value::cdr))
void ScmVMExternal::StackCons() {
  YStatus status{1};
  const Ref upper = pop(status);
  const Ref deeper = pop(status);
  push({.kind = 'p', .car = deeper, .cdr = upper});
}

CLUI_VM(long, VMEAssertIsALong, (YArgNum at, YStatus& status, long), popA('l', status, at)->number)
CLUI_VM(const char*, VMEAssertIsAString, (YArgNum at, YStatus& status, long),
        keep(popA('s', status, at)))
CLUI_VM(void*, VMEAssertIsAHandle, (YArgNum at, YStatus& status, long),
        pointerOf(popA('h', status, at)))
CLUI_VM(YWord, VMEAssertIsABoolean, (YArgNum at, YStatus& status, long),
        popA('b', status, at)->number != 0 ? 1 : 0)
CLUI_VM(void, VMESetErrorArgNum, (YArgNum at, YStatus&),
        void(TheMachine->report = " @" + std::to_string(at)))
CLUI_VM(void, VMESetErrorBadType, (YScmArgType, YStatus& status, long), YStatusClear(status))

YWord ScmVMExternal::VMECheckArgCount(YWord given, YWord least, YWord most, YStatus& status) {
  if (given >= least && given <= most) return 1;
  VMESetWrongNumArgs(given, least, most, status);
  return 0;
}
void ScmVMExternal::VMESetWrongNumArgs(YWord, YWord, YWord, YStatus& status) {
  TheMachine->report = " @count";
  YStatusClear(status);
}

long ScmVMExternal::ExecuteString(const char* text, char* buffer, long, YStatus& status) {
  TheMachine->executed.emplace_back(text);
  *buffer = '\0';
  status.word = 0;
  Ref result;
  if (TheMachine->executor) {
    TheMachine->executor(text);
  } else {
    status.word = TheMachine->evaluateAll(text, result) ? 1 : 0;
  }
  return 0;
}
