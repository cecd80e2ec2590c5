#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>
#include <vector>

#include "parser/YcluiParser.h"
#include "script/ycscm.h"
#include "syntax/YcluiSyntaxGraph.h"
#include "tests/script/ScriptMachine.h"

// An allocation of this size gives nothing.
static std::size_t FailingSize = 0;

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return size == FailingSize ? nullptr : ::operator new(size);
}

namespace {

struct Row {
  const char* expression;
  const char* outcome;
};

class Primitives : public testing::Test {
 protected:
  ScriptMachine machine;

  void SetUp() override {
    TheMachine = &machine;
    CluiLibInitialize();
    run("(define p (clui-parser-new 0))");
  }

  void TearDown() override {
    while (YcluiParser* live = YcluiParser::Live(0)) YcluiParser::AddDeadBody(live);
    YcluiParser::CleanupMortuary();
    CluiLibCleanup();
  }

  std::string run(const std::string& text) { return machine.run(text); }

  // The parser p, as long as it is alive.
  YcluiParser& parser() { return *YcluiParser::Live(0); }

  // The tokens of the fragment in the variable, with their actions, as far as it is a sequence.
  std::string sequence(const std::string& variable) {
    const long handle = machine.variables[variable]->number;
    const YcluiSyntaxNode* node = reinterpret_cast<YcluiSyntaxGraph*>(handle)->start;
    std::string text;
    for (YcluiSuccessorIterator next(*node); next.ring != nullptr;
         next = YcluiSuccessorIterator(*node)) {
      node = next.node();
      if (node->tokenId != 0) text += ' ' + std::to_string(node->tokenId);
      if (node->action != nullptr) text += node->action->buffer;
      if (node->priority != 127) text += '!' + std::to_string(node->priority);
      if (node->interruptLimit != 127) text += '?' + std::to_string(node->interruptLimit);
    }
    return text;
  }
};

// Hosts of other makers bind the rows by their places too.
TEST(PrimitiveTable, HasItsRowsInOrder) {
  std::string table;
  for (std::uint32_t i = 0; i < CluiLibraryNProcs(); ++i) {
    const YScmProc& row = CluiLibraryProcs()[i];
    EXPECT_EQ(std::string(row.name).substr(0, 5), "clui-");
    table += std::string(row.name).substr(5) + std::to_string(row.required);
    table += row.rest == 1 ? "+ " : " ";
  }
  EXPECT_EQ(table,
            "token1+ syntax1+ oneof1+ anyof1+ indefinite-syntax3 priority1+ parser-new1 "
            "parser-delete1 reset1 set-syntax2 delete-last1 eval2 push1 pop1 depth1 "
            "attach-field2+ put-dummy-token2 start-logging2+ shut-logging1 "
            "playback-from-file2 set-alias3 unset-alias2 set-variable3+ "
            "set-keystroke-action3 find-possible-token1+ refer-current-word1 "
            "replace-current-word1+ complete-token2 ");
}

TEST_F(Primitives, SequencesReadAsWritten) {
  const Row rows[] = {
      {"(clui-syntax 1 'A' 2 'B' 'lost')", " 1A 2B"},
      {"(clui-syntax 'lost')", ""},
      {"(clui-syntax 1 (clui-syntax 2 (clui-syntax '')) 'B' 3)", " 1B 2 3"},
      {"(clui-syntax (clui-syntax 1 2) (clui-oneof 3 'A'))", " 1 2 3A"},
      {"(clui-syntax (clui-priority 300 4) 1 2)", " 1!44?4 2"},
      {"(clui-syntax 1 (clui-priority 3) 2)", " 1 2!3?3"},
      {"(clui-syntax 16777217)", " 1"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ("handle", run(std::string("(define f ") + row.expression + ')')) << row.expression;
    EXPECT_EQ(row.outcome, sequence("f")) << row.expression;
  }
}

TEST_F(Primitives, BadArgumentsAreRefused) {
  run("(define q (clui-parser-new 1)) (clui-parser-delete q)"
      "(define n (clui-indefinite-syntax p 1 'A'))");
  machine.variables["wide"] = std::make_shared<Value>(Value{.kind = 'c', .number = 0x82A0});
  testing::internal::CaptureStderr();
  const Row rows[] = {
      {"(clui-syntax 1 #t 2)", "bad handle @2 /2070"},
      {"(clui-syntax 1 0)", "bad handle @2 /2070"},
      {"(clui-syntax 1 (cons 1 #t) 2)", "bad"},
      {"(clui-syntax 1 f)", "bad handle @2 /2057"},
      {"(clui-syntax n)", "bad handle @1 /2057"},
      {"(define h (clui-syntax 3)) (clui-syntax h h)", "bad handle @1 /2057"},
      {"(clui-oneof 1 #t 2)", "bad handle /2070"},
      {"(clui-oneof (cons 1 2))", "bad handle /2070"},
      {"(clui-anyof 1 f)", "bad handle @2 /2057"},
      {"(clui-priority 1 2 3)", "bad @count"},
      {"(clui-priority 1 'x')", "bad @2"},
      {"(clui-token p 'w' 4294967296)", "bad 0 @3 /2069"},
      {"(clui-token p 1 2)", "bad 0 @2 /2069"},
      {"(clui-token p 'w' 'abc' #t)", "bad 0 @4 /2069"},
      {"(clui-token p wide)", "bad 0 @2 /2069"},
      {"(clui-token 'p' 'w')", "bad 0 @1 /2071"},
      {"(clui-token 0 'w')", "bad 0 @1 /2071"},
      {"(clui-token q 'w')", "bad 0 @1 /2071"},
      {"(clui-indefinite-syntax p 1 2)", "bad @3 /2070"},
      {"(clui-indefinite-syntax p 0 'A')", "bad @2 /2070"},
      {"(clui-indefinite-syntax 'p' 1 'A')", "bad @1 /2070"},
      {"(clui-indefinite-syntax q 1 'A')", "bad @1 /2057"},
      {"(clui-parser-new -1)", "bad 0 @1"},
      {"(clui-parser-new 4294967296)", "bad 0 @1"},
      {"(clui-parser-delete q)", "bad () @1 /2057"},
      {"(clui-reset 12345)", "bad 12345 @1 /2057"},
      {"(clui-pop 'p')", "bad 0"},
      {"(clui-depth q)", "bad @1 /2057"},
      {"(clui-put-dummy-token q 'w')", "bad @1 /2057"},
      {"(clui-eval q 'w')", "bad @1 /2057"},
      {"(clui-eval p 1)", "bad @2"},
      {"(clui-set-syntax p f)", "bad @2 /2057"},
      {"(clui-set-alias q 'a' 'b')", "bad @1 /2057"},
      {"(clui-unset-alias p 1)", "bad @2"},
      {"(clui-set-variable p 'v' #t)", "bad @3"},
      {"(clui-set-variable p 'v' (list))", "bad @3"},
      {"(clui-set-variable p 'v' 2147483648)", "bad @3"},
      {"(clui-set-variable p 'v' (list 1 2147483648))", "bad @3"},
      {"(clui-set-variable p 'v' (cons 1 2))", "bad @3"},
      {"(clui-set-variable p 'v' 1 -1)", "bad @4 /2055"},
      {"(clui-set-variable p 'v' 1 2 3)", "bad @count"},
      {"(clui-start-logging p 'x' 1)", "bad @3"},
      {"(clui-shut-logging q)", "bad @1 /2057"},
      {"(clui-playback-from-file q 'x')", "bad @1 /2057"},
      {"(clui-find-possible-token 0)", "bad @1 /2057"},
      {"(clui-complete-token 0 'x')", "bad @1 /2057"},
  };
  for (const Row& row : rows) {
    run("(define f (clui-syntax 1)) (define g (clui-syntax f))");
    EXPECT_EQ(row.outcome, run(row.expression)) << row.expression;
  }
  EXPECT_EQ("bad @1 /2057", run("(clui-set-syntax q g)"));
  EXPECT_EQ("handle", run("(clui-set-syntax p g)")) << "a refused call keeps the fragment";
  EXPECT_EQ(
      "CLUI Error: error on (clui-indefinite-syntax)\n"
      "CLUI Error: error on (clui-set-syntax)\n"
      "CLUI Error: error on (clui-shut-logging)\n"
      "CLUI Error: error on (clui-set-syntax)\n",
      testing::internal::GetCapturedStderr());
  EXPECT_EQ(nullptr, parser().lex()->keyword("w"));
  EXPECT_EQ(nullptr, parser().lex()->variable("v"));
}

TEST_F(Primitives, NoMemoryGivesNoParser) {
  FailingSize = sizeof(YcluiParser);
  EXPECT_EQ("0", run("(clui-parser-new 0)"));
  FailingSize = 0;
}

TEST_F(Primitives, AParserIsDeletedBehindItsOwnLine) {
  for (const char* word : {"a", "b"}) parser().lex()->addKeyword(word, nullptr, YWord(*word));
  run("(define q (clui-parser-new 0)) (clui-set-syntax q (clui-syntax 1))"
      "(clui-set-syntax p (clui-oneof 97 \"(clui-parser-delete p) (clui-eval q 'x')\" 98 'B'))");
  parser().sysSetGoneProcedure([](void*) { TheMachine->executed.emplace_back("gone"); }, nullptr);
  EXPECT_EQ("2", run("(clui-eval p 'a b')"));
  const std::vector<std::string> events = {"(clui-parser-delete p) (clui-eval q 'x')", "B", "gone"};
  EXPECT_EQ(events, machine.executed);
  EXPECT_EQ("bad @1 /2057", run("(clui-eval p 'b')"));
}

TEST_F(Primitives, EndlessListsAreRefused) {
  run("(define circle (list 1 2))");
  Value& last = *machine.variables["circle"]->cdr;
  last.cdr = machine.variables["circle"];
  EXPECT_EQ("bad @3", run("(clui-set-variable p 'v' circle)"));
  last.cdr = nullptr;
  EXPECT_EQ(nullptr, parser().lex()->variable("v"));
}

}  // namespace
