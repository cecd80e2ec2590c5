#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <new>
#include <string>

#include "lex/YcluiKeyword.h"
#include "lex/YcluiVariable.h"
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

  template <std::size_t N>
  void check(const Row (&rows)[N], const char* before = "") {
    for (const Row& row : rows) {
      run(before);
      EXPECT_EQ(row.outcome, run(row.expression)) << row.expression;
    }
  }

  // The parser p, as long as it is alive.
  YcluiParser& parser() { return *YcluiParser::Live(0); }

  // Gives p the words a to f, of the ids 1 to 6, and the syntax.
  void install(const std::string& syntax) {
    for (char letter = 'a'; letter <= 'f'; ++letter) {
      const char word[] = {letter, '\0'};
      parser().lex()->addKeyword(word, nullptr, static_cast<std::uint32_t>(letter - 'a' + 1));
    }
    ASSERT_EQ("handle", run("(clui-set-syntax p " + syntax + ")"));
  }

  // Puts down, among the commands, what the system's procedures of a parser are told.
  void follow(YcluiParser& followed) {
    followed.sysSetEchoProcedure([](void*, const char*) { note("echo"); }, nullptr);
    followed.sysSetSynCallback([](void*, const char*, const char*) { note("syn"); }, nullptr);
    followed.sysSetGoneProcedure([](void*) { note("gone"); }, nullptr);
  }
  static void note(const char* event) { TheMachine->executed.emplace_back(event); }

  // The commands that ran since they were last asked for, each in brackets.
  std::string commands() {
    std::string text;
    for (const std::string& command : machine.executed) text += '[' + command + ']';
    machine.executed.clear();
    return text;
  }

  // Feeds a line to p and answers the commands that ran and the count of tokens.
  std::string feed(const std::string& line) {
    const std::string count = run("(clui-eval p \"" + line + "\")");
    return commands() + ' ' + count;
  }

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

  // The word that the text finds: name, id, argument types, abbreviation.
  std::string word(const char* text) {
    const YcluiKeyword* found = parser().lex()->keyword(text);
    if (found == nullptr) return "none";
    std::string answer = std::string(found->name()) + ' ' + std::to_string(found->id());
    for (int i = 0; i < found->argCount(); ++i) answer += ':' + std::to_string(found->argType(i));
    if (found->abbreviation() != nullptr) answer += std::string(" ") + found->abbreviation();
    return answer;
  }
};

TEST_F(Primitives, TableStandsInItsOrder) {
  const char* const rows[] = {"clui-token 1+",
                              "clui-syntax 1+",
                              "clui-oneof 1+",
                              "clui-anyof 1+",
                              "clui-indefinite-syntax 3",
                              "clui-priority 1+",
                              "clui-parser-new 1",
                              "clui-parser-delete 1",
                              "clui-reset 1",
                              "clui-set-syntax 2",
                              "clui-delete-last 1",
                              "clui-eval 2",
                              "clui-push 1",
                              "clui-pop 1",
                              "clui-depth 1",
                              "clui-attach-field 2+",
                              "clui-put-dummy-token 2",
                              "clui-start-logging 2+",
                              "clui-shut-logging 1",
                              "clui-playback-from-file 2",
                              "clui-set-alias 3",
                              "clui-unset-alias 2",
                              "clui-set-variable 3+",
                              "clui-set-keystroke-action 3",
                              "clui-find-possible-token 1+",
                              "clui-refer-current-word 1",
                              "clui-replace-current-word 1+",
                              "clui-complete-token 2"};
  ASSERT_EQ(std::size(rows), CluiLibraryNProcs());
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const YScmProc& row = CluiLibraryProcs()[i];
    EXPECT_EQ(rows[i],
              row.name + (' ' + std::to_string(row.required)) + (row.rest == 1 ? "+" : ""));
  }
  EXPECT_STREQ("lib-CLUI", CluiLibraryName());
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

TEST_F(Primitives, ChoicesAndRepetitionsTakeWhatTheyName) {
  install("(clui-syntax 1 (clui-oneof 2 'A' (clui-syntax 3 'B' 4)) (clui-anyof 5) 6 'C')");
  EXPECT_EQ("[A][C] 3", feed("a b f"));
  EXPECT_EQ("[B][C] 6", feed("a c d e b e f"));
}

TEST_F(Primitives, WordsComeInTheirShapes) {
  const struct {
    const char* declaration;
    const char* answer;
    const char* key;
    const char* found;
  } rows[] = {
      {"(clui-token p 'one')", "5000", "one", "one 5000"},
      {"(clui-token p 21 'two')", "21", "two", "two 21"},
      {"(clui-token p 'three' 'th')", "5002", "thr", "three 5002 th"},
      {"(clui-token p 23 'four' 'fo')", "23", "fou", "four 23 fo"},
      {"(clui-token p 'five' 1 4 2)", "5004", "five", "five 5004:1:4:2"},
      {"(clui-token p 25 'six' 3)", "25", "six", "six 25:3"},
      {"(clui-token p #\\,)", "5006", ",", ", 5006"},
      {"(clui-token p 27 #\\;)", "27", ";", "; 27"},
      {"(clui-token p 0 'eight')", "5008", "eight", "eight 5008"},
      {"(clui-token p 16777245 'nine')", "29", "nine", "nine 29"},
      {"(clui-token p 'ten' 'te' 1)", "5010", "ten", "ten 5010:1"},
      {"(clui-token p 'ONE')", "0 /2059", "te", "none"},
      {"(clui-token p 30 'w' 1 1 1 1 1 1 1 1 1)", "30", "w", "w 30:1:1:1:1:1:1:1:1:1"},
      {"(clui-token p 30 'v' 1 1 1 1 1 1 1 1 1 1)", "bad 0 @count", "v", "none"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.answer, run(row.declaration)) << row.declaration;
    EXPECT_EQ(row.found, word(row.key)) << row.declaration;
  }
}

TEST_F(Primitives, BadArgumentsAreRefused) {
  run("(define q (clui-parser-new 1)) (clui-parser-delete q)"
      "(define n (clui-indefinite-syntax p 1 'A'))");
  machine.variables["wide"] = std::make_shared<Value>(Value{.kind = 'c', .number = 0x82A0});
  testing::internal::CaptureStderr();
  check(
      {
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
      },
      "(define f (clui-syntax 1)) (define g (clui-syntax f))");
  EXPECT_EQ("bad @1 /2057", run("(clui-set-syntax q g)"));
  EXPECT_EQ("handle", run("(clui-set-syntax p g)")) << "a refused call keeps the fragment";
  EXPECT_EQ(
      "CLUI Error: error on (clui-indefinite-syntax)\n"
      "CLUI Error: error on (clui-set-syntax)\n"
      "CLUI Error: error on (clui-shut-logging)\n"
      "CLUI Error: error on (clui-set-syntax)\n",
      testing::internal::GetCapturedStderr());
  EXPECT_EQ("none", word("w"));
  EXPECT_EQ(nullptr, parser().lex()->variable("v"));
}

TEST_F(Primitives, NoMemoryGivesNoParser) {
  FailingSize = sizeof(YcluiParser);
  EXPECT_EQ("0", run("(clui-parser-new 0)"));
  FailingSize = 0;
}

TEST_F(Primitives, IndefiniteNodesNeedASyntax) {
  install("(clui-syntax 1 2)");
  EXPECT_EQ("handle", run("(clui-indefinite-syntax p 3 'C')"));
  EXPECT_EQ("[C] 3", feed("a c b"));
}

TEST_F(Primitives, FramesAndTokens) {
  install("(clui-syntax 1 2 'A $0 $1 $2')");
  EXPECT_EQ("3", run("(clui-depth (clui-push (clui-push p)))"));
  EXPECT_EQ("2", run("(clui-depth (clui-pop p))"));
  EXPECT_EQ("2", run("(clui-depth (clui-put-dummy-token (clui-reset p) 'hey'))"));
  EXPECT_EQ(" 1", feed("a"));
  EXPECT_STREQ("hey a", parser().currentLine());
  EXPECT_EQ("2", run("(clui-depth (clui-delete-last p))"));
  EXPECT_STREQ("hey", parser().currentLine());
  EXPECT_EQ("1", run("(clui-depth (clui-pop p))"));
  EXPECT_EQ("0", run("(clui-eval p '')"));
}

TEST_F(Primitives, AParserIsDeletedBehindItsOwnLine) {
  install("(clui-oneof 1 \"(clui-parser-delete p) (clui-eval q 'x')\" 2 'B')");
  run("(define q (clui-parser-new 0)) (clui-set-syntax q (clui-syntax 1))");
  follow(parser());
  EXPECT_EQ("[echo][syn][(clui-parser-delete p) (clui-eval q 'x')][B][gone] 2", feed("a b"));
  EXPECT_EQ("bad @1 /2057", run("(clui-eval p 'b')"));
}

TEST_F(Primitives, AliasesAndVariables) {
  install("(clui-syntax 1 'A')");
  check({
      {"(clui-set-alias p 'twice' 'a a')", "#t"},
      {"(clui-set-alias p 'twice' 'a')", "#f /2072"},
      {"(clui-eval p 'twice')", "1"},
      {"(clui-unset-alias p 'twice')", "#t"},
      {"(clui-unset-alias p 'twice')", "#f /2074"},
      {"(clui-set-variable p 'one' -7)", "#t"},
      {"(clui-set-variable p 'one' 1 0)", "#f"},
      {"(clui-set-variable p 'all' (list 'text' 5 2.5 #t (list)))", "#t"},
      {"(clui-set-variable p 'all' 6 1)", "#t"},
      {"(clui-set-variable p 'all' 1)", "#f"},
  });
  EXPECT_EQ("[A][A]", commands());
  EXPECT_EQ(-7, parser().lex()->variable("one")->valuePointer()->GetLong());
  YcluiVariable& all = *parser().lex()->variable("all");
  ASSERT_EQ(5U, all.elementCount());
  EXPECT_STREQ("text", all.element(0)->GetString());
  EXPECT_EQ(6, all.element(1)->GetLong());
  EXPECT_EQ(2.5, all.element(2)->GetDouble());
  EXPECT_EQ(YAttribNull, all.element(3)->tag);
  EXPECT_EQ(YAttribNull, all.element(4)->tag);
}

TEST_F(Primitives, EndlessListsAreRefused) {
  run("(define circle (list 1 2))");
  Value& last = *machine.variables["circle"]->cdr;
  last.cdr = machine.variables["circle"];
  EXPECT_EQ("bad @3", run("(clui-set-variable p 'v' circle)"));
  last.cdr = nullptr;
  EXPECT_EQ(nullptr, parser().lex()->variable("v"));
}

TEST_F(Primitives, Completion) {
  run("(clui-token p 11 'abc') (clui-token p 12 'abd') (clui-token p 13 'abcd')");
  EXPECT_EQ("()", run("(clui-find-possible-token p)"));
  install("(clui-syntax (clui-oneof 11 12 13) 1)");
  check({
      {"(clui-find-possible-token p)", "('abcd' . ('abd' . ('abc' . ())))"},
      {"(clui-find-possible-token p 'abd')", "('abd' . ())"},
      {"(clui-find-possible-token p 'y')", "()"},
      {"(clui-complete-token p '')", "'ab'"},
      {"(clui-complete-token p 'abc')", "'abc'"},
      {"(clui-complete-token p 'abd')", "#t"},
      {"(clui-complete-token p 'y')", "#f"},
  });
}

TEST_F(Primitives, LogAndPlayback) {
  const std::string path = testing::TempDir() + "clui-script-" + std::to_string(getpid());
  install("(clui-oneof 1 'A' 2 \"(clui-parser-delete q) (clui-eval p ' ')\")");
  run("(define q (clui-parser-new 0)) (define name '" + path + "')");
  check({
      {"(clui-start-logging p name)", "#t"},
      {"(clui-start-logging p name)", "#f /2078"},
      {"(clui-eval p 'a')", "1"},
      {"(clui-shut-logging p)", "#t"},
      {"(clui-shut-logging p)", "#f"},
      {"(clui-start-logging p name #t)", "#t"},
      {"(clui-eval p 'a')", "1"},
      {"(clui-shut-logging p)", "#t"},
      {"(clui-playback-from-file p name)", "#t"},
      {"(clui-playback-from-file p '/no/such')", "#f /2079 /2079"},
  });
  EXPECT_EQ("[A][A][A][A]", commands());

  std::ofstream(path) << "b\na\n";
  follow(*YcluiParser::Live(1));
  EXPECT_EQ("#t", run("(clui-playback-from-file p name)"));
  EXPECT_EQ("[(clui-parser-delete q) (clui-eval p ' ')][A][gone]", commands());
  std::remove(path.c_str());
}

}  // namespace
