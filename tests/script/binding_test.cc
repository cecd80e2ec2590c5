#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "parser/YcluiParser.h"
#include "script/YcluiFieldBinding.h"
#include "script/YcluiFieldFormat.h"
#include "script/ycscm.h"
#include "tests/script/ScriptMachine.h"
#include "tests/script/TestField.h"

namespace {

// A field, a parser with the words a, b, c, say: (which takes a string), and what ties them.
class Binding : public testing::Test {
 protected:
  ScriptMachine machine;
  std::unique_ptr<TestField> field;
  YcluiParser* parser = nullptr;
  YcluiFieldBinding* binding = nullptr;

  void SetUp() override {
    TheMachine = &machine;
    machine.executor = [](const std::string&) {};
    CluiLibInitialize();
    field = std::make_unique<TestField>();
    makeParser();
  }

  void TearDown() override {
    delete YcluiFieldBinding::FindLive(binding);
    endParser();
    CluiLibCleanup();
  }

  void endParser() {
    YcluiParser::AddDeadBody(YcluiParser::FindLive(reinterpret_cast<long>(parser)));
    YcluiParser::CleanupMortuary();
    parser = nullptr;
  }

  void makeParser() {
    parser = new YcluiParser;
    parser->lex()->addKeyword("a", nullptr, 1);
    parser->lex()->addKeyword("b", nullptr, 2);
    parser->lex()->addKeyword("c", nullptr, 3);
    YcluiValueType string = YcluiValueString;
    parser->lex()->addKeyword("say:", 1, &string, 4);
    auto* syntax = new YcluiSyntaxGraph;
    syntax->insertAnd(new YcluiSyntaxNode(2, "B"));
    syntax->insertAnd(new YcluiSyntaxNode(1));
    syntax->insertOr(new YcluiSyntaxNode(3, "C"));
    syntax->insertOr(new YcluiSyntaxNode(4, "S $0[0]"));
    parser->setSyntaxGraph(syntax);
  }

  void attach(const char* echoFormat = nullptr, const char* synFormat = nullptr) {
    binding = YcluiFieldBinding::Attach(field.get(), parser, echoFormat, synFormat);
  }

  // The copy, with a bar in front of the word.
  std::string state() {
    return std::string(binding->text().buffer).insert(binding->wordStart(), "|");
  }

  // Types the characters and answers for each the answer and the state behind it.
  std::string type(std::string keys) {
    std::string trace;
    while (!keys.empty()) {
      const std::string key = TestField::first(keys);
      keys.erase(0, key.size());
      trace += trace.empty() ? "" : " ";
      trace += std::to_string(field->key(key));
      trace += state();
      EXPECT_EQ(field->shown, binding->text().buffer) << trace;
    }
    return trace;
  }

  // The texts that ran, each in brackets.
  std::string executed() {
    std::string text;
    for (const std::string& one : machine.executed) text += '[' + one + ']';
    machine.executed.clear();
    return text;
  }

  // Whether a quote is open: a bound key then does not fire.
  bool isInQuote() {
    binding->setKeyAction('!', "");
    if (field->key("!") == 0) return false;
    field->key("<");
    return true;
  }
};

TEST_F(Binding, AShortRun) {
  attach();
  EXPECT_EQ("1|a 1|ab 1|a 0a | 0a | 0a |", type("ab< < "));
  EXPECT_EQ("1a |b 0|", type("b ")) << "the command is complete";
  EXPECT_EQ("[B]", executed());
  EXPECT_EQ("1|x 0|", type("x ")) << "a refused word leaves the line";
  EXPECT_EQ("1|# 0# |", type("# ")) << "a comment is not echoed, and field and copy agree";
}

TEST_F(Binding, KeyByKey) {
  const struct {
    const char* keys;
    const char* trace;
  } rows[] = {
      {" x ", "0| 1|x 0x |"},
      {"\"a b\" ", "1|\" 1|\"a 1|\"a  1|\"a b 1|\"a b\" 0\"a b\" |"},
      {"\\\" ", "1|\\ 1|\\\" 0\\\" |"},
      {"\\\"<x ", "1|\\ 1|\\\" 1|\\ 1|\\x 0\\x |"},
      {"\"<x ", "1|\" 1| 1|x 0x |"},
      {"\"\"< ", "1|\" 1|\"\" 1|\" 1|\" "},
      {"\x83\\\" ", "1|\x83\\ 1|\x83\\\" 1|\x83\\\" "},
      {"\x83\\<<", "1|\x83\\ 1| 0|"},
      {"\x83\x83"
       "A<<",
       "1|\x83\x83 1|\x83\x83"
       "A 1|\x83\x83 1|"},
      {"\t\n\x7f", "1| 1| 1|"},
      {"x \\", "1|x 0x | 1x |\\"},
      {"x \\\"< ", "1|x 0x | 1x |\\ 1x |\\\" 1x |\\ 0x \\ |"},
  };
  endParser();
  for (const auto& row : rows) {
    field = std::make_unique<TestField>();
    attach();
    EXPECT_EQ(row.trace, type(row.keys)) << row.keys;
    delete binding;
  }
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

TEST_F(Binding, FormatsAreFilled) {
  attach("E '%s' 100%%", "S %s, %s");
  parser->pushFrame();
  EXPECT_EQ("[E '' 100%]", executed());
  parser->interpret("say:'x\"y\\\\z' c");
  EXPECT_EQ(
      "[E 'say:\\\"x\\\"y\\\\z\\\" ' 100%]"
      "[S say:\\\"x\\\"y\\\\z\\\", say:\\\"x\\\"y\\\\z\\\"][S x\"y\\z][E '' 100%]"
      "[E 'c ' 100%][S c, c][C][E '' 100%]",
      executed());
}

TEST_F(Binding, TextIsEscaped) {
  const char* const rows[][2] = {
      {"a\"b\\c", "a\\\"b\\\\c"},
      {"\x83\\\"", "\x83\\\\\""},
      {"\x81\"", "?\\\""},  // the lead byte would take the backslash
      {"\x83\x83\"\x83", "\x83\x83\\\"\x83"},
  };
  for (const auto& row : rows) {
    YString escaped;
    YcluiAppendEscaped(row[0], escaped);
    EXPECT_STREQ(row[1], escaped.buffer);
  }
}

TEST_F(Binding, FormatsAreJudged) {
  for (const char* good : {"", "%%", "x%s%%s", "%s%s"}) {
    EXPECT_EQ(1U, YcluiFormatIsGood(good, 2)) << good;
  }
  for (const char* bad : {"%", "%%%", "%d", "%5s", "%s%s%s", "%n", "%S", "%s%"}) {
    EXPECT_EQ(0U, YcluiFormatIsGood(bad, 2)) << bad;
  }
  EXPECT_EQ(0U, YcluiFormatIsGood("%s", 0));
}

TEST_F(Binding, TheWordIsReplaced) {
  attach();
  type("a x");
  binding->replaceCurrentWord("yz", 0);
  EXPECT_EQ("a |yz", state());
  EXPECT_EQ("a yz", field->shown);
  binding->replaceCurrentWord(binding->currentWord() + 1, 0);
  EXPECT_EQ("a |z", state());
  binding->replaceCurrentWord("b", 1);
  EXPECT_EQ("|", state());
  EXPECT_EQ("[B]", executed());
  binding->replaceCurrentWord(nullptr, 0);
  EXPECT_EQ("|", state());
}

TEST_F(Binding, WithoutFieldAndFormatALineIsPrinted) {
  testing::internal::CaptureStdout();
  binding = YcluiFieldBinding::Attach(nullptr, parser, "", nullptr);
  parser->interpret("a");
  EXPECT_EQ("CLUI \"\" >\nCLUI \"a \" >\n", testing::internal::GetCapturedStdout());
}

TEST_F(Binding, ASecondBindingReplacesTheFirst) {
  attach();
  YcluiFieldBinding* first = binding;
  attach();
  EXPECT_EQ("1|a 0a |", type("a "));
  EXPECT_EQ("", std::string(first->text().buffer)) << "the first hears nothing";
  first->replaceCurrentWord("x", 0);
  first->replaceCurrentWord("b", 1);
  EXPECT_EQ("a |", state());
  delete first;
  EXPECT_EQ("1a |b 0|", type("b ")) << "and takes nothing along";
}

TEST_F(Binding, ADeletedParserIsNotFed) {
  attach();
  YcluiParser::AddDeadBody(parser);
  EXPECT_EQ("1|c 0c |", type("c "));
  EXPECT_EQ("", executed());
}

// What is left goes on, in whatever order the three go.
TEST_F(Binding, LifetimesInEveryOrder) {
  std::vector<int> order = {0, 1, 2};
  do {
    attach();
    for (const int victim : order) {
      if (victim == 0) field.reset();
      if (victim == 1) endParser();
      if (victim == 2) delete std::exchange(binding, nullptr);
      testing::internal::CaptureStdout();
      if (field) field->key("a"), field->key(" "), field->key("<");
      if (parser != nullptr) parser->interpret("c");
      if (binding != nullptr) binding->replaceCurrentWord("c", 1);
      testing::internal::GetCapturedStdout();
    }
    field = std::make_unique<TestField>();
    makeParser();
  } while (std::next_permutation(order.begin(), order.end()));
}

// Each of the three goes in the middle of each thing that happens.
TEST_F(Binding, LifetimesFromCallbacks) {
  for (const std::string victim : {"field", "parser", "binding"}) {
    for (const std::string moment : {"SetText", "E", "S", "C", "key"}) {
      bool armed = false;
      const auto strike = [&] {
        if (!std::exchange(armed, false)) return;
        if (victim == "field") field.reset();
        if (victim == "parser") YcluiParser::AddDeadBody(parser), parser = nullptr;
        if (victim == "binding") delete binding;
      };
      machine.executor = [&](const std::string& text) {
        if (text == moment) strike();
      };
      attach(moment == "E" ? "E" : "", "S");
      binding->setKeyAction('k', "key");
      if (moment == "SetText") field->onSetText = [&] { strike(); };
      armed = true;
      testing::internal::CaptureStdout();
      for (const char* key : {"c", "k", " ", "c", " ", "<"}) {
        if (field) field->key(key);
      }
      testing::internal::GetCapturedStdout();
      EXPECT_FALSE(armed) << victim << moment;
      EXPECT_EQ(victim != "binding", YcluiFieldBinding::FindLive(binding) != nullptr);
      delete YcluiFieldBinding::FindLive(binding);
      if (!field) field = std::make_unique<TestField>();
      field->onSetText = nullptr;
      if (parser == nullptr) makeParser();
    }
  }
}

TEST_F(Binding, AFieldMayFeedWhileItIsToldSomething) {
  attach();
  field->onSetText = [this] {
    field->onSetText = nullptr;
    parser->interpret("b");
  };
  EXPECT_EQ(1U, field->key("a"));
  EXPECT_EQ(0U, field->key(" "));
  EXPECT_EQ("[B]", executed());
  EXPECT_EQ("|", state());
  EXPECT_EQ("", field->shown);
}

TEST_F(Binding, TheFirstEchoMayEndIt) {
  field->onSetText = [this] { field->endBinding(); };
  attach();
  EXPECT_EQ(nullptr, binding);
  parser->interpret("a");
}

std::string pick(std::mt19937& random, const std::vector<std::string>& from) {
  return from[random() % from.size()];
}

TEST_F(Binding, DeletingUndoesTyping) {
  const std::vector<std::string> keys = {"a", "\"", "\\", "\x83\\", "\x83\x83", "\xB1"};
  std::mt19937 random(1);
  attach();
  for (int round = 0; round < 500; ++round) {
    if (random() % 4 == 0) field->key(" ");
    const bool wasInQuote = isInQuote();
    const std::string before = state();
    const auto count = random() % 8;
    for (auto i = count; i > 0; --i) field->key(pick(random, keys));
    for (auto i = count; i > 0; --i) EXPECT_EQ(1U, field->key("<"));
    EXPECT_EQ(before, state());
    EXPECT_EQ(wasInQuote, isInQuote());
    field->key(pick(random, keys));
  }
}

TEST_F(Binding, FieldAndCopyAgreeWhateverHappens) {
  const std::vector<std::string> keys = {"a", "b", "c",  "k",  " ",      " ",    "<",    "<",  "\"",
                                         "#", ":", "\\", "\t", "\x83\\", "\x81", "say:", "\"", " "};
  std::mt19937 random(2);
  attach();
  for (int step = 0; step < 20000; ++step) {
    const std::string given = binding->text().buffer;
    const std::uint32_t start = binding->wordStart();
    switch (random() % 40) {
      case 0:
        parser->interpret(pick(random, keys).c_str());
        break;
      case 1:
        random() % 2 != 0 ? parser->reset() : parser->dropOpenToken();
        break;
      case 2:
        random() % 2 != 0 ? parser->pushFrame() : parser->popFrame();
        break;
      case 3:
        binding->replaceCurrentWord(pick(random, keys).c_str(), random() % 2);
        break;
      case 4:
        binding->setKeyAction('k', "key");
        break;
      case 5:
        YcluiParser::AddDeadBody(parser);
        field->key("x");
        field->key(" ");
        if (random() % 2 != 0) delete std::exchange(binding, nullptr);
        YcluiParser::CleanupMortuary();
        makeParser();
        attach();
        break;
      default:
        if (field->key(pick(random, keys)) == 1) {
          EXPECT_EQ(start, binding->wordStart()) << "what the parser has is safe";
          EXPECT_EQ(given.substr(0, start), field->shown.substr(0, start));
        }
    }
    ASSERT_LE(binding->wordStart(), binding->text().length);
    ASSERT_EQ(field->shown, std::string(binding->text().buffer, binding->text().length));
    ASSERT_EQ(field->shown.substr(binding->wordStart()), binding->currentWord());
  }
}

TEST_F(Binding, Primitives) {
  const auto handle = [](void* object) {
    return std::make_shared<Value>(Value{.kind = 'h', .number = reinterpret_cast<long>(object)});
  };
  machine.variables["p"] =
      std::make_shared<Value>(Value{.kind = 'l', .number = reinterpret_cast<long>(parser)});
  machine.variables["f"] = handle(field.get());
  machine.variables["none"] = handle(nullptr);
  machine.variables["wide"] = std::make_shared<Value>(Value{.kind = 'c', .number = 0x82A0});
  testing::internal::CaptureStdout();
  const char* const rows[][2] = {
      {"(clui-attach-field 0 none)", "handle"},
      {"(clui-attach-field p none 'E' '%s')", "handle"},
      {"(define b (clui-attach-field p f))", "handle"},
      {"(clui-refer-current-word b)", "''"},
      {"(clui-replace-current-word b 'xy')", "()"},
      {"(clui-replace-current-word b 'xyz' #f)", "()"},
      {"(clui-refer-current-word b)", "'xyz'"},
      {"(clui-replace-current-word b 'a' #t)", "()"},
      {"(clui-refer-current-word b)", "''"},
      {"(clui-set-keystroke-action b #\\k 'key %s')", "#t"},
      {"(clui-attach-field p)", "bad"},
      {"(clui-attach-field p f 'E' 'S' 1)", "bad @count"},
      {"(clui-attach-field p f 'E' 1)", "bad @4"},
      {"(clui-attach-field p f 'E' '%s%s%s')", "bad @4 /2058"},
      {"(clui-attach-field p f '%s%s')", "bad @3 /2058"},
      {"(clui-attach-field p b)", "bad @2 /2057"},
      {"(clui-attach-field p 1)", "bad @2"},
      {"(clui-attach-field 12345 f)", "bad @1 /2057"},
      {"(clui-set-keystroke-action b #\\k '%d')", "bad @3 /2058"},
      {"(clui-set-keystroke-action b 'k' '%s')", "bad"},
      {"(clui-set-keystroke-action b wide '%s')", "bad @2"},
      {"(clui-set-keystroke-action f #\\k '')", "bad @1 /2057"},
      {"(clui-refer-current-word none)", "bad @1 /2057"},
      {"(clui-refer-current-word 1)", "bad @1"},
      {"(clui-replace-current-word b)", "bad @2"},
      {"(clui-replace-current-word b 'x' 1)", "bad @3"},
      {"(clui-replace-current-word b 'x' #f 1)", "bad @count"},
      {"(clui-replace-current-word f 'x')", "bad @1 /2057"},
  };
  for (const auto& row : rows) EXPECT_EQ(row[1], machine.run(row[0])) << row[0];
  testing::internal::GetCapturedStdout();
  EXPECT_EQ("a ", field->shown);
  machine.executed.clear();
  EXPECT_EQ(0U, field->key("k"));
  EXPECT_EQ("[key ]", executed());
  field.reset();
  EXPECT_EQ("bad @2 /2057", machine.run("(clui-attach-field p f)"));
}

}  // namespace
