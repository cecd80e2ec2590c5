#include "bench/peer/ScriptTasks.h"

#include <libguile.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"

namespace {

constexpr const char* Call = "(zorvane-run 17 \"abc\")";
constexpr const char* TypedLine = "zorvane on:17,\"abc\"\n";
constexpr long Number = 17;

long Sum = 0;

void Run(std::uint32_t, YStatus& status) {
  ScmVMExternal::StackPopString(status);
  Sum += ScmVMExternal::StackPopLong(status);
  if (YStatusIsGood(status)) ScmVMExternal::StackPushBoolean(1);
}

// Runs its commands through the engine, as every parser does that does not replace `evaluate`.
struct ScriptParser final : YcluiParser {
  ScriptParser() {
    const YcluiValueType values[] = {YcluiValueInteger, YcluiValueString};
    const std::uint32_t on = lex()->addKeyword("on:", 2, values, 0);
    const std::uint32_t word = lex()->addKeyword("zorvane", nullptr, 0);
    auto* commands = new YcluiSyntaxGraph;
    commands->insertAnd(new YcluiSyntaxNode(on, "($0-run $1[0] \"$1[1]\")"));
    commands->insertAnd(new YcluiSyntaxNode(word));
    setSyntaxGraph(commands);
  }
};

Work Repeated(int count, const std::function<void()>& call) {
  return {[count, call] {
    Sum = 0;
    for (int i = 0; i < count; ++i) call();
    return Sum == count * Number;
  }};
}

void Execute() {
  YStatus status{0};
  char printed[256];
  ScmVMExternal::ExecuteString(Call, printed, sizeof printed, status);
}

}  // namespace

std::vector<Task> ScriptTasks(const std::string& row, int calls) {
  std::string error;
  if (ScmVM::start(ScmVM::DefaultMemoryLimit, error) == 0) {
    std::fprintf(stderr, "no script engine: %s\n", error.c_str());
    std::exit(1);
  }
  ScmVM::bindProcedure("zorvane-run", &Run, 2, 0);
  const auto parser = std::make_shared<ScriptParser>();
  const double units = calls;
  return {
      {row, "Guile", 1, units, Repeated(calls, [] { scm_c_eval_string(Call); })},
      {row, "run by the engine", 1, units, Repeated(calls, Execute)},
      {row, "a typed line", 1, units, Repeated(calls, [parser] { parser->interpret(TypedLine); })},
  };
}
