#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"
#include "parser/YcluiParser.h"
#include "script/YcluiFieldBinding.h"
#include "script/YcluiFieldFormat.h"
#include "script/ycscm.h"
#include "tests/script/TestField.h"
#include "tests/support/ScriptMachine.h"

namespace {

using Cases = const char* const[][2];
using Rows = std::vector<std::pair<std::string, std::string>>;

// A field, a parser with the words a, b, c and say:, which has a string argument, and their
// binding.
class Binding : public testing::Test {
 protected:
  ScriptMachine machine;
  std::unique_ptr<TestField> field = std::make_unique<TestField>();
  YcluiParser* parser = nullptr;
  YcluiFieldBinding* binding = nullptr;

  void SetUp() override {
    TheMachine = &machine;
    machine.executor = [](const std::string&) {};
    CluiLibInitialize();
    machine.run(
        "(define p (clui-parser-new 0)) (clui-token p 1 'a') (clui-token p 2 'b')"
        "(clui-token p 3 'c') (clui-token p 4 'say:' 1)"
        "(clui-set-syntax p (clui-oneof (clui-syntax 1 2 'B') 3 'C' 4 'S $0[0]'))");
    parser = reinterpret_cast<YcluiParser*>(machine.variables["p"]->number);
  }

  void TearDown() override {
    delete YcluiFieldBinding::FindLive(binding);
    YcluiParser::AddDeadBody(YcluiParser::FindLive(reinterpret_cast<long>(parser)));
    YcluiParser::CleanupMortuary();
    CluiLibCleanup();
  }

  void attach(const char* echoFormat = nullptr, const char* synFormat = nullptr) {
    binding = YcluiFieldBinding::Attach(field.get(), parser, echoFormat, synFormat);
  }

  // The binding's text with a bar before the current word. The field shows the same text.
  std::string state() {
    EXPECT_EQ(field->shown, std::string(binding->text().buffer, binding->text().length));
    return std::string(field->shown).insert(binding->wordStart(), "|");
  }

  // Types the characters and returns for each the result and the state after it.
  std::string type(const std::string& keys) {
    std::string trace;
    for (std::size_t i = 0; i < keys.size();) {
      const std::size_t width = YCharacters::LengthAt(keys.substr(i));
      trace += (i == 0 ? "" : " ") + std::to_string(field->key(keys.substr(i, width)));
      trace += state();
      i += width;
    }
    return trace;
  }

  // The script texts that ran, each in brackets.
  std::string executed() {
    std::string text;
    for (const std::string& one : std::exchange(machine.executed, {})) text += '[' + one + ']';
    return text;
  }
};

TEST_F(Binding, ADeletedParserReceivesNoWords) {
  attach();
  auto* other = new YcluiParser;
  other->sysSetGoneProcedure([](void*) { TheMachine->executed.emplace_back("gone"); }, nullptr);
  YcluiParser::AddDeadBody(other);
  YcluiParser::AddDeadBody(parser);
  EXPECT_EQ("1|c 0c |", type("c "));
  EXPECT_EQ("[gone]", executed());
  EXPECT_EQ("1c |x 0c x |", type("x ")) << "the parser has been destroyed";
}

TEST_F(Binding, KeyByKey) {
  Rows cases = {
      {"ab< < ", "1|a 1|ab 1|a 0a | 0a | 0a |"},
      {"a b ", "1|a 0a | 1a |b 0|"},  // the command is complete
      {"x # ", "1|x 0| 1|# 0# |"},    // a refused word is removed, a comment is not echoed
      {"\"say b\" ", "1|\" 1|\"s 1|\"sa 1|\"say 1|\"say  1|\"say b 1|\"say b\" 0|"},
      {"\\\"<c ", "1|\\ 1|\\\" 1|\\ 1|\\c 0|"},
      {"\"<c ", "1|\" 1| 1|c 0|"},
      {"\"\"< ", "1|\" 1|\"\" 1|\" 1|\" "},
      {"\t\n\x7f", "1| 1| 1|"},
  };
  const Rows inShiftJis = {
      {"\x83\\\" ", "1|\x83\\ 1|\x83\\\" 1|\x83\\\" "},
      {"\x83\x83\x41<<<", "1|\x83\x83 1|\x83\x83\x41 1|\x83\x83 1| 0|"},
  };
  const Rows inUtf8 = {
      {"\u00E9\u8868<<<", "1|\u00E9 1|\u00E9\u8868 1|\u00E9 1| 0|"},
      {"\xE8\xA1\xFF<<", "1|\xE8 1|\xE8\xA1 1|\xE8\xA1\xFF 1|\xE8\xA1 1|\xE8"},
      {"\x83\\\"c ", "1|\x83 1|\x83\\ 1|\x83\\\" 1|\x83\\\"c 0|"},
  };
  for (const auto& row : YEncoding::IsDoubleByte() ? inShiftJis : inUtf8) cases.push_back(row);
  for (const auto& [given, expected] : cases) {
    field = std::make_unique<TestField>();
    parser->reset();
    attach();
    EXPECT_EQ(expected, type(given)) << given;
    delete binding;
  }
  EXPECT_EQ("[B][C][C]", executed());
}

TEST_F(Binding, KeyActions) {
  attach();
  binding->setKeyAction('k', "first %s");
  binding->setKeyAction('k', "%s%%");
  binding->setKeyAction('\n', "line");
  EXPECT_EQ("1|x 0|x 0|x", type("xk\n"));
  EXPECT_EQ("[x%][line]", executed());
  EXPECT_EQ("1|x\" 1|x\"k 1|x\"k", type("\"k\n"));
  EXPECT_EQ("", executed());
}

TEST_F(Binding, Formats) {
  attach("E '%s' 100%%", "S %s, %s");
  parser->interpret("a x");
  parser->pushFrame();
  parser->interpret("say:'x\"y'");
  EXPECT_EQ(
      "[E '' 100%][E 'a ' 100%][E 'a ' 100%][E 'a say:\\\"x\\\"y\\\" ' 100%]"
      "[S say:\\\"x\\\"y\\\", a say:\\\"x\\\"y\\\"][S x\"y][E 'a ' 100%]",
      executed());

  const Rows inShiftJis = {
      {"a\"b\\c", "a\\\"b\\\\c"},
      {"\x83\\\"", "\x83\\\\\""},
      {"\x81\"", "?\\\""},  // the lead byte and the backslash would be one character
      {"\x83\x83\"\x83", "\x83\x83\\\"\x83"},
  };
  const Rows inUtf8 = {{"a\u00E9\"\x83\\", "a\u00E9\\\"\x83\\\\"}};
  for (const auto& [text, expected] : YEncoding::IsDoubleByte() ? inShiftJis : inUtf8) {
    YString escaped;
    YcluiAppendEscaped(text.c_str(), escaped);
    EXPECT_EQ(expected, escaped.buffer);
  }
  for (const char* good : {"", "%%", "x%s%%s", "%s%s"}) {
    EXPECT_TRUE(YcluiFormatIsValid(good, 2)) << good;
  }
  for (const char* bad : {"%", "%%%", "%d", "%5s", "%s%s%s", "%S", "%s%", "%%%d"}) {
    EXPECT_FALSE(YcluiFormatIsValid(bad, 2)) << bad;
  }
}

TEST_F(Binding, AnEchoFormatRunsForEchoesOnly) {
  attach("E%s");
  EXPECT_EQ("[E]", executed());
  for (const char* key : {"#", " "}) field->key(key);
  parser->enableEcho(0);
  for (const char* key : {"a", " "}) field->key(key);
  EXPECT_EQ("", executed());
  EXPECT_STREQ("# a ", binding->text().buffer);
  attach();
  EXPECT_EQ("1|x 0x |", type("x ")) << "without a format the binding sets the field";
}

TEST_F(Binding, ASecondBindingReplacesTheFirst) {
  attach();
  YcluiFieldBinding* first = binding;
  attach();
  EXPECT_EQ("1|a 0a |", type("a "));
  EXPECT_STREQ("", first->text().buffer);
  testing::internal::CaptureStdout();
  first->replaceCurrentWord("x", 0);
  first->replaceCurrentWord("b", 1);
  EXPECT_EQ("CLUI \"x\" >\n", testing::internal::GetCapturedStdout());
  delete first;
  EXPECT_EQ("1a |b 0|", type("b ")) << "the second one is not affected";
  EXPECT_NE(parser->sysSetGoneProcedure([](void*) {}, nullptr), nullptr);
  delete binding;
  EXPECT_EQ(parser->sysSetGoneProcedure(nullptr, nullptr), nullptr);
}

TEST_F(Binding, AFieldMayDestroyTheBindingOrCallTheParser) {
  field->onSetText = [this] { field->endBinding(); };
  attach();
  EXPECT_EQ(nullptr, binding) << "destroyed by its first echo";
  field->onSetText = nullptr;
  attach();
  field->onSetText = [this] {
    field->onSetText = nullptr;
    parser->interpret("b");
    field->key("z");  // nested in a change by the binding, so it is accepted
    field->shown.clear();
  };
  type("a ");
  EXPECT_EQ("[B]", executed());
  EXPECT_EQ("|", state());
}

TEST_F(Binding, Primitives) {
  machine.define("f", 'h', field.get());
  machine.define("none", 'h', nullptr);
  machine.define("wide", 'c', reinterpret_cast<void*>(0x82A0));
  machine.run("(clui-attach-field p none 'E%s' 'S%s') (clui-eval p 'c')");
  EXPECT_EQ("[E][Ec ][Sc][C][E]", executed());
  const Cases cases = {
      {"(clui-attach-field 0 none)", "handle"},
      {"(define b (clui-attach-field p f))", "handle"},
      {"(clui-replace-current-word b 'xyz')", "()"},
      {"(clui-refer-current-word b)", "'xyz'"},
      {"(clui-replace-current-word b 'a' #t)", "()"},
      {"(clui-set-keystroke-action b #\\k 'key %s')", "#t"},
      {"(clui-attach-field p f 'E' 'S' 1)", "bad @count"},
      {"(clui-attach-field p f 'E' '%s%s%s')", "bad @4 !format/warning"},
      {"(clui-attach-field p f '%s%s')", "bad @3 !format/warning"},
      {"(clui-attach-field 12345 f)", "bad @1 !not-alive/warning"},
      {"(clui-set-keystroke-action b #\\k '%s%s')", "bad @3 !format/warning"},
      {"(clui-set-keystroke-action b 'k' '%s')", "bad"},
      {"(clui-set-keystroke-action b wide '%s')", "bad @2"},
      {"(clui-set-keystroke-action f #\\k '')", "bad @1 !not-alive/warning"},
      {"(clui-replace-current-word b)", "bad @2"},
      {"(clui-replace-current-word b 'x' #f 1)", "bad @count"},
  };
  for (const auto& [call, result] : cases) EXPECT_EQ(result, machine.run(call)) << call;
  EXPECT_EQ("a ", field->shown);
  executed();
  field->key("k");
  EXPECT_EQ("[key ]", executed());
  { const TestField later; }
  field.reset();
  EXPECT_EQ("bad @2 !not-alive/warning", machine.run("(clui-attach-field p f)"));
  machine.run("(clui-attach-field p none 'E%s' 'S%s') (clui-parser-delete p)");
  executed();
  parser->interpret("b");
  EXPECT_EQ("[B]", executed()) << "a deleted parser continues without its binding";
}

}  // namespace
