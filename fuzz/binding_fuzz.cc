// The field binding: random keys, deletions, echoes, replaced words, deleted parsers, and scripts
// that do the same during such a call. The field must show the text of the binding.

#include <memory>
#include <utility>

#include "foundation/YEncoding.h"
#include "parser/YcluiParser.h"
#include "script/YcluiFieldBinding.h"
#include "script/ycscm.h"
#include "tests/script/TestField.h"
#include "tests/support/Choices.h"
#include "tests/support/ScriptMachine.h"

namespace {

class Desk {
 public:
  explicit Desk(Choices& choices) : choices_(choices) {
    machine_.executor = [this](const std::string&) { event(); };
    TheMachine = &machine_;
    newField();
    newParser();
    attach();
  }
  ~Desk() {
    dropBinding();
    field_.reset();
    while (YcluiParser* parser = YcluiParser::Live(0)) YcluiParser::AddDeadBody(parser);
    YcluiParser::CleanupMortuary();
  }

  void act() {
    YcluiParser* parser = YcluiParser::Live(0);
    YcluiFieldBinding* live = YcluiFieldBinding::FindLive(binding_);
    const unsigned choice = choices_.byte();
    if (choice >= 32 && settingText_ == 0) return type(choices_.byte());
    if (choice == 1 && parser != nullptr) parser->interpret(choices_.text().c_str());
    if (choice == 2 && parser != nullptr) parser->reset();
    if (choice == 3 && parser != nullptr) parser->pushFrame();
    if (choice == 4 && parser != nullptr) parser->popFrame();
    if (choice == 5 && live != nullptr) replace(*live);
    if (choice == 6 && live != nullptr) {
      live->setKeyAction(static_cast<char>(choices_.byte()), "key %s");
    }
    if (choice == 7) YcluiParser::AddDeadBody(parser);
    if (choice == 8) YcluiParser::CleanupMortuary();
    if (choice == 9 && parser == nullptr) newParser();
    if (choice == 10) attach();
    if (choice == 11) dropBinding();
    if (choice == 12 && depth_ == 0) newField();
    if (choice == 13 && parser != nullptr) parser->dropOpenToken();
    if (choice == 14 && parser != nullptr) parser->setAlias("x", choices_.text().c_str());
  }

  void check() {
    const YcluiFieldBinding* live = YcluiFieldBinding::FindLive(binding_);
    if (live == nullptr) return;
    Require(live->wordStart() <= live->text().length, "the current word is in the text");
    if (fillsField_) {
      Require(field_->shown == std::string(live->text().buffer, live->text().length),
              "field and copy agree");
    }
  }

 private:
  Choices& choices_;
  ScriptMachine machine_;
  std::unique_ptr<TestField> field_;
  YcluiFieldBinding* binding_ = nullptr;
  bool fillsField_ = false;  // the binding sets the text of the present field
  int depth_ = 0;
  int settingText_ = 0;  // no keys are typed while the text of the field is being set

  void event() {
    if (depth_ == 20 || choices_.below(3) != 2) return;
    ++depth_;
    act();
    --depth_;
  }

  void newField() {
    field_ = std::make_unique<TestField>();
    field_->onSetText = [this] {
      ++settingText_;
      event();
      --settingText_;
    };
    fillsField_ = false;
  }

  static void newParser() {
    auto* parser = new YcluiParser;
    const YcluiValueType string = YcluiValueString;
    for (const char* word : {"a", "b", "c"}) {
      parser->lex()->addKeyword(word, nullptr, static_cast<std::uint32_t>(word[0] - 'a' + 1));
    }
    parser->lex()->addKeyword("say:", 1, &string, 4);
    auto* syntax = new YcluiSyntaxGraph;
    syntax->insertAnd(new YcluiSyntaxNode(2, "B"));
    syntax->insertAnd(new YcluiSyntaxNode(1));
    syntax->insertOr(new YcluiSyntaxNode(3, "C"));
    syntax->insertOr(new YcluiSyntaxNode(4, "S $0[0]"));
    parser->setSyntaxGraph(syntax);
  }

  // Deletes the previous binding first: the field would replace it, and then it would leak.
  void attach() {
    dropBinding();
    const bool hasFormat = choices_.below(2) != 0;  // then the script would set the field's text
    if (depth_ == 0) field_->shown.clear();
    fillsField_ = !hasFormat && depth_ == 0;
    YcluiFieldBinding* made = YcluiFieldBinding::Attach(field_.get(), YcluiParser::Live(0),
                                                        hasFormat ? "E %s" : "", "S %s %s");
    if (binding_ != nullptr) {
      dropMade(made);
    } else {
      binding_ = made;
    }
  }
  // Deletes a new binding, because a script attached another one during its construction.
  void dropMade(YcluiFieldBinding* made) {
    delete YcluiFieldBinding::FindLive(made);
    fillsField_ = false;
  }
  void dropBinding() {
    delete YcluiFieldBinding::FindLive(std::exchange(binding_, nullptr));
    fillsField_ = false;
  }

  void replace(YcluiFieldBinding& live) {
    const std::string word = choices_.text();
    live.replaceCurrentWord(word.c_str(), choices_.below(2));
  }

  void type(unsigned byte) {
    std::string key(1, static_cast<char>(byte));
    if (byte == 0) key = "say:";
    if (IsLead(byte)) key += static_cast<char>(0x40 + choices_.below(0x3F));
    if (key != "<" || !field_->shown.empty()) field_->key(key);
  }
  static bool IsLead(unsigned byte) {
    const bool isLead = (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
    return isLead && YEncoding::IsDoubleByte();
  }
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  testing::GTEST_FLAG(break_on_failure) = true;
  Choices choices(bytes, count);
  CluiLibInitialize();
  {
    Desk desk(choices);
    while (choices.more()) {
      desk.act();
      desk.check();
    }
  }
  CluiLibCleanup();
  return 0;
}
