// Each limit just below it, at it, and just above.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <limits>
#include <memory>
#include <string>

#include "foundation/YErr.h"
#include "foundation/YcluiLimits.h"
#include "parser/YcluiParser.h"
#include "script/ycscm.h"
#include "tests/script/ScriptMachine.h"

namespace {

std::string CodeSince(std::uint64_t before) {
  return YErr.count() == before
             ? "good"
             : std::to_string(YErr.code(0)) + "/" + std::to_string(YErr.severity(0));
}

std::string FileOf(long n) {
  return testing::TempDir() + "clui-limits-" + std::to_string(getpid()) + "-" + std::to_string(n);
}

// Reads tokens of the word "a", which runs "A".
class Reader : public YcluiParser {
 public:
  Reader() {
    const YcluiValueType type = YcluiValueInteger;
    lex()->addKeyword("a", nullptr, 1);
    lex()->addKeyword("n:", 1, &type, 2);
    auto* syntax = new YcluiSyntaxGraph;
    syntax->insertAnd(new YcluiSyntaxNode(1, "A"));
    setSyntaxGraph(syntax);
  }
  // What reading the text records.
  std::string read(const std::string& text) {
    const std::uint64_t before = YErr.count();
    interpret(text.c_str());
    return CodeSince(before);
  }
};

std::string SuspendTexts(long n) {
  YcluiLex lex;
  const std::uint64_t before = YErr.count();
  while (n-- > 0) lex.pushString("");
  return CodeSince(before);
}

std::string NestPlaybacks(long n) {
  Reader reader;
  for (long i = 1; i <= n; ++i) std::ofstream(FileOf(i)) << "a";
  long level = 0;
  TheMachine->executor = [&](const std::string&) {
    reader.reset();
    if (level < n) reader.playbackFromLog(FileOf(++level).c_str());
  };
  std::string told = reader.read("a");
  for (long i = 1; i <= n; ++i) std::remove(FileOf(i).c_str());
  return told;
}

std::string Expand(long n) {
  Reader reader;
  reader.setAlias("one", " ");
  std::string text;
  while (--n > 0) text += "one ";
  reader.setAlias("all", text.c_str());
  return reader.read("all");
}

std::string NestIndices(long n) {
  std::string text = "1";
  for (; n >= 0; --n) text.insert(0, "${r}[").append("]");
  Reader reader;
  reader.read("${r}[1]=1");
  return reader.read("n: " + text);
}

std::string SetElement(long n) {
  const std::string index = std::to_string(n - 1);
  const std::uint64_t before = YErr.count();
  Reader reader;
  reader.setVariable("r", YAttribValue(), static_cast<YWord>(n - 1));
  std::string told = CodeSince(before);
  const std::string code = told.substr(0, 4);
  EXPECT_EQ(reader.read("${s}[" + index + "]=1").substr(0, 4), code);
  EXPECT_EQ(reader.read("${s}[0]=1 n: ${s}[" + index + "]").substr(0, 4), code);
  return told;
}

std::string SetList(long n) {
  Ref list = std::make_shared<Value>();
  const Ref element = list;
  for (; n > 0; --n)
    list = std::make_shared<Value>(Value{.kind = 'p', .car = element, .cdr = list});
  TheMachine->variables["list"] = list;
  std::string told = TheMachine->run("(clui-set-variable (clui-parser-new 0) 'v' list)");
  TheMachine->variables.clear();
  while (list->kind == 'p') list = Ref(list->cdr);  // one by one: freeing it at once would recurse
  return told;
}

std::string GivePriority(long n) {
  TheMachine->run("(define g (clui-syntax (clui-priority " + std::to_string(n) + ") 1))");
  const auto* graph = reinterpret_cast<YcluiSyntaxGraph*>(TheMachine->variables["g"]->number);
  const int given = YcluiSuccessorIterator(*graph->start).node()->priority;
  TheMachine->run("(clui-set-syntax (clui-parser-new 0) g)");
  return given == n ? "as it is" : "cut";
}

std::string ReadInteger(long n) {
  return Reader().read("n: " + std::to_string(n));
}
std::string ReadNegative(long n) {
  return ReadInteger(-n);
}

TEST(Limits, AreWhereTheyAreSaidToBe) {
  const struct {
    const char* name;
    long most;
    std::string (*attempt)(long n);
    const char* within;
    const char* beyond;
  } limits[] = {
      {"suspended texts", YcluiMostSuspendedTexts, SuspendTexts, "good", "2052/3"},
      {"expansions", YcluiMostExpansions, Expand, "good", "2052/3"},
      {"playbacks", YcluiMostNestedPlaybacks, NestPlaybacks, "good", "2052/3"},
      {"indices", YcluiMostIndexNesting, NestIndices, "good", "2052/3"},
      {"elements", YcluiMostElements, SetElement, "good", "2055/2"},
      {"elements of a list", YcluiMostElements, SetList, "#t", "#f /2055"},
      {"a list", YcluiMostListElements, SetList, "#f /2055", "bad @3"},
      {"priorities", 255, GivePriority, "as it is", "cut"},
      {"integers", std::numeric_limits<std::int32_t>::max(), ReadInteger, "good", "2060/3"},
      {"negative integers", 2147483648, ReadNegative, "good", "2060/3"},
  };
  ScriptMachine machine;
  TheMachine = &machine;
  CluiLibInitialize();
  for (const auto& limit : limits) {
    for (long n = limit.most - 1; n <= limit.most + 1; ++n) {
      const char* expected = n <= limit.most ? limit.within : limit.beyond;
      EXPECT_EQ(limit.attempt(n), expected) << limit.name << ' ' << n;
      machine.executor = nullptr;
    }
  }
  while (YcluiParser* live = YcluiParser::Live(0)) YcluiParser::AddDeadBody(live);
  YcluiParser::CleanupMortuary();
  CluiLibCleanup();
}

}  // namespace
