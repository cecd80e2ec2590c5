// The primitives: random calls with values that are stored, reused, dropped and of wrong types. The
// script machine checks that a primitive keeps the rules of the stack.

#include "parser/YcluiParser.h"
#include "script/YcluiFieldBinding.h"
#include "script/ycscm.h"
#include "tests/script/TestField.h"
#include "tests/support/Choices.h"
#include "tests/support/ScriptMachine.h"
#include "tests/support/WorkingFolder.h"

namespace {

constexpr unsigned Kept = 16;
constexpr int MostDepth = 12;
constexpr int MostCommands = 500;  // more means an alias that contains itself twice

std::string NameOf(unsigned value) {
  return "v" + std::to_string(value % Kept);
}

class Script {
 public:
  explicit Script(Choices& choices) : choices_(choices) {
    TheMachine = &machine_;
    machine_.executor = [this](const std::string&) { command(); };
    for (unsigned i = 0; i < Kept; ++i) machine_.variables[NameOf(i)] = std::make_shared<Value>();
    if (choices_.below(4) != 0) furnish();
  }
  ~Script() {
    while (YcluiParser* parser = YcluiParser::Live(0)) YcluiParser::AddDeadBody(parser);
    YcluiParser::CleanupMortuary();
    for (const Ref& binding : bindings_) {
      delete YcluiFieldBinding::FindLive(reinterpret_cast<void*>(binding->number));
    }
  }

  void act() {
    if (choices_.below(3) == 0) {
      keepValue();
    } else {
      call();
    }
  }

 private:
  Choices& choices_;
  ScriptMachine machine_;
  TestField field_;
  std::vector<Ref> bindings_;
  int depth_ = 0;
  int commands_ = 0;

  // Makes a parser with words, a syntax and a bound field.
  void furnish() {
    machine_.run("(define v0 (clui-parser-new 0))");
    teach();
    machine_.run("(define v1 (clui-syntax 1 'A' (clui-oneof 2 'B $0' (clui-anyof 3 'C')) 1 'D'))");
    machine_.run(
        "(clui-set-syntax v0 v1) (define v2 'a b ') (define v3 (clui-token v0 0 'say:' 1))");
    machine_.variables["v4"] = std::make_shared<Value>(
        Value{.kind = 'h', .number = reinterpret_cast<long>(static_cast<YuiTextField*>(&field_))});
    machine_.run("(define v5 (clui-attach-field v0 v4))");
    bindings_.push_back(machine_.variables["v5"]);
  }

  Ref& any() { return machine_.variables[NameOf(choices_.byte())]; }

  void command() {
    if (depth_ == MostDepth || !choices_.more()) return;
    if (++commands_ > MostCommands) return YcluiParser::Live(0)->exhaust();
    ++depth_;
    act();
    --depth_;
  }

  // Stores a new value, or a number close to one that a primitive returned.
  void keepValue() {
    Value value{.kind = "nbldcshpl"[choices_.below(9)]};
    const unsigned choice = choices_.byte();
    value.number = choice < 128 ? static_cast<long>(choice) - 8 : any()->number + choice % 2;
    value.real = choice;
    if (choice == 255) value.number = reinterpret_cast<long>(static_cast<YuiTextField*>(&field_));
    if (value.kind == 's') value.text = safeText();
    if (value.kind == 'p') {
      value.car = any();
      value.cdr = any();
    }
    any() = std::make_shared<Value>(value);
  }
  // Without slashes, since the text may be used as a file name.
  std::string safeText() {
    std::string text = choices_.text();
    for (char& c : text) {
      if (c == '/') c = '_';
    }
    return text;
  }

  void call() {
    const YScmProc& row = CluiLibraryProcs()[choices_.below(CluiLibraryNProcs())];
    const unsigned count = row.required + (row.rest != 0 ? choices_.below(6) : 0);
    std::string form = "(" + std::string(row.name);
    for (unsigned i = 0; i < count; ++i) form += " " + NameOf(choices_.byte());
    const std::string kept = NameOf(choices_.byte());
    const Ref before = machine_.variables[kept];
    machine_.run("(define " + kept + " " + form + "))");
    const Ref made = machine_.variables[kept];
    const bool isBinding = std::string(row.name) == "clui-attach-field" && made->kind == 'h';
    if (isBinding && made != before) bindings_.push_back(made);
    if (std::string(row.name) == "clui-parser-new") teach();
  }
  // Declares the words a, b and c for the youngest parser.
  static void teach() {
    YcluiParser* parser = nullptr;
    for (int i = 0; YcluiParser::Live(i) != nullptr; ++i) parser = YcluiParser::Live(i);
    if (parser == nullptr) return;
    for (const char* word : {"a", "b", "c"}) {
      parser->lex()->addKeyword(word, nullptr, static_cast<std::uint32_t>(word[0] - 'a' + 1));
    }
  }
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  static const WorkingFolder folder;
  testing::GTEST_FLAG(break_on_failure) = true;
  for (const auto& file : std::filesystem::directory_iterator(folder.path)) {
    std::filesystem::remove_all(file.path());
  }
  Choices choices(bytes, count);
  CluiLibInitialize();
  {
    Script script(choices);
    while (choices.more()) script.act();
  }
  CluiLibCleanup();
  return 0;
}
