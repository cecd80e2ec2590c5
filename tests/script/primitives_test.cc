#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "parser/YcluiParser.h"
#include "script/ycscm.h"
#include "syntax/YcluiSyntaxGraph.h"
#include "tests/support/ScriptMachine.h"
#include "tests/support/allocations.h"

namespace {

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

  // The parser p, while it is alive.
  YcluiParser& parser() { return *YcluiParser::Live(0); }

  // The tokens of the fragment in the variable, with their actions; the fragment is a sequence.
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

// Hosts may bind the rows by their index.
TEST(PrimitiveTable, TheOrderOfRowsIsFixed) {
  std::string names;
  for (std::uint32_t i = 0; i < CluiLibraryNProcs(); ++i) {
    names += std::string(CluiLibraryProcs()[i].name).substr(4);
  }
  EXPECT_EQ(names,
            "-token-syntax-oneof-anyof-indefinite-syntax-priority-parser-new-parser-delete-reset"
            "-set-syntax-delete-last-eval-push-pop-depth-attach-field-put-dummy-token-start-logging"
            "-shut-logging-playback-from-file-set-alias-unset-alias-set-variable"
            "-set-keystroke-action-find-possible-token-refer-current-word-replace-current-word"
            "-complete-token");
}

TEST_F(Primitives, SequencesKeepTheOrderOfArguments) {
  const char* const cases[][2] = {
      {"(clui-syntax 1 'A' 2 'B' 'lost')", " 1A 2B"},
      {"(clui-syntax 'lost')", ""},
      {"(clui-syntax 1 (clui-syntax 2 (clui-syntax '')) 'B' 3)", " 1B 2 3"},
      {"(clui-syntax (clui-syntax 1 2) (clui-oneof 3 'A'))", " 1 2 3A"},
      {"(clui-syntax (clui-priority 300 4) 1 2)", " 1!44?4 2"},
      {"(clui-syntax 1 (clui-priority 3) 2)", " 1 2!3?3"},
      {"(clui-syntax 16777217)", " 1"},
  };
  for (const auto& [expression, outcome] : cases) {
    EXPECT_EQ("handle", run(std::string("(define f ") + expression + ')')) << expression;
    EXPECT_EQ(outcome, sequence("f")) << expression;
  }
}

// A failing fragment primitive frees what it has built or consumed and pushes a null handle.
TEST_F(Primitives, RefusedCallsFreeTheirFragments) {
  const char* const cases[][2] = {
      {"(define f (clui-syntax 1))", "handle"},
      {"(clui-syntax 1 #t f)", "bad null handle @2 !syntax-argument/warning"},
      {"(clui-oneof f)", "bad null handle @1 !not-alive/warning"},
      {"(clui-oneof 1 #t 2)", "bad null handle !syntax-argument/warning"},
      {"(clui-anyof 1 #t 2)", "bad null handle !syntax-argument/warning"},
      {"(clui-token p 16777216 'big')", "bad 0 @2 !token-argument/warning"},
      {"(clui-token p 'big')", "5000"},
      {"(clui-parser-new 'x')", "bad 0 @1"},
  };
  for (const auto& [expression, outcome] : cases) EXPECT_EQ(outcome, run(expression)) << expression;
}

TEST_F(Primitives, NoMemoryGivesNoParser) {
  FailAllocation();
  EXPECT_EQ("0", run("(clui-parser-new 0)"));
}

TEST_F(Primitives, AParserIsDestroyedAfterItsOwnText) {
  for (const char* word : {"a", "b"}) parser().lex()->addKeyword(word, nullptr, YWord(*word));
  run("(define q (clui-parser-new 0)) (clui-set-syntax q (clui-syntax 1))"
      "(clui-set-syntax p (clui-oneof 97 \"(clui-parser-delete p) (clui-eval q 'x')\" 98 'B'))");
  parser().sysSetGoneProcedure([](void*) { TheMachine->executed.emplace_back("gone"); }, nullptr);
  EXPECT_EQ("2", run("(clui-eval p 'a b')"));
  const std::vector<std::string> events = {"(clui-parser-delete p) (clui-eval q 'x')", "B", "gone"};
  EXPECT_EQ(events, machine.executed);
  EXPECT_EQ("bad @1 !not-alive/warning", run("(clui-eval p 'b')"));
}

}  // namespace
