// Re-entry: in each callback and command of a parser, at three depths, each action (operations and
// primitives) alone and followed by each action.

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/YErr.h"
#include "parser/YcluiParser.h"
#include "script/YcluiFieldBinding.h"
#include "script/ycscm.h"
#include "tests/script/TestField.h"
#include "tests/support/ScriptMachine.h"
#include "tests/support/WorkingFolder.h"
#include "tests/support/steps.h"
#include "tests/support/words.h"

// Of the sanitizers, if the build has them. Recording longer traces is slow.
extern "C" {
__attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());
const char* __asan_default_options() {
  return "malloc_context_size=4";
}
}

namespace {

constexpr char Words[] = "a b c box:/ii go op d al->b_c_";
constexpr int Levels = 3;
constexpr int Ways = 3;           // of passing text at the next level: see Desk::dive
constexpr int MostEvents = 3000;  // of a case; more means that it does not end

class Desk;

enum Kind { Tok, Refuse, Echo, SysEcho, Syn, Command, Gone, Error, Show };
enum Around { Plain, WithField, WithFormats };

struct Place {
  const char* name;
  std::string_view event;  // the end of the event's text
  std::string drive;       // the text that causes the event; keys if it begins with "@"
  Kind kind;
  Around around = Plain;
  const char* operate = nullptr;  // the steps that the command "op" performs
};

void PrintTo(const Place& place, std::ostream* out) {
  *out << place.name;
}

// Steps; each is a text for p, an operation of p, or script expressions.
using Action = const char*;

Desk* TheDesk = nullptr;
long Combinations = 0;
std::string Case;
const WorkingFolder Folder;

void printCase() {
  std::cerr << Case << std::endl;
}

// The objects of one case: two parsers that scripts call p and q, a field f, and a binding k.
class Desk {
  std::set<YcluiParser*> parsers_;  // those that are not destroyed yet
  YcluiLex words_;                  // the words that all parsers have at first

 public:
  YcluiParser* const p;
  YcluiParser* const q;
  std::unique_ptr<TestField> field = std::make_unique<TestField>();

  Desk(const Place& place, int level, int way)
      : p(newParser()), q(newParser()), place_(place), wanted_(level), way_(way) {
    TheDesk = this;
    Declare(words_, Words, 1);
    TheMachine->executed.clear();
    TheMachine->define("k", 'n', nullptr);
    TheMachine->define("p", 'l', p);
    TheMachine->define("q", 'l', q);
    TheMachine->define("f", 'h', static_cast<YuiTextField*>(field.get()));
    teach(*p);
    teachWords(*q);
    if (place.kind == Gone) teach(*q);
    if (place.kind == Gone) p->interpret("b ");
    listen();
    field->onSetText = [this] { event(Show, field->shown); };
    if (place.around != Plain) attach();
    watch(*p);
  }

  ~Desk() {
    EXPECT_LT(events_, MostEvents);
    if (isThere(p)) expectOrder();
    for (const long binding : bindings_) {
      delete YcluiFieldBinding::FindLive(reinterpret_cast<void*>(binding));
    }
    for (YcluiParser* parser : std::set<YcluiParser*>(parsers_)) {
      watch(*parser);
      YcluiParser::AddDeadBody(parser);
    }
    YcluiParser::CleanupMortuary();
    EXPECT_TRUE(parsers_.empty()) << "a parser was not destroyed";
    EXPECT_EQ(YcluiParser::Live(0), nullptr);
    YErr.setListener(nullptr, nullptr);
  }

  // Causes the event of the place and performs the two actions there. Returns whether it occurred.
  bool perform(Action first, Action second) {
    first_ = first;
    second_ = second;
    dive();
    return first_ == nullptr;
  }

  void run(const std::string& expressions) {
    TheMachine->run(expressions);
    const long made = TheMachine->variables["k"]->number;
    if (made != binding_) bindings_.push_back(binding_ = made);
  }

  // A parser whose destruction is checked.
  YcluiParser* newParser() {
    auto* parser = new YcluiParser;
    parsers_.insert(parser);
    watch(*parser);
    return parser;
  }
  YcluiSyntaxGraph* syntax() const {
    return SyntaxOf(words_, "( a{A} | b c{C} | box:{B $0[0]} | go{go} )").release();
  }
  void type(const std::string& key) {
    if (field) field->key(key);
  }
  bool isThere(YcluiParser* parser) const { return parsers_.count(parser) != 0; }

  void teachWords(YcluiParser& parser) { Declare(*parser.lex(), "a b c", 1); }

 private:
  const Place& place_;
  const int wanted_;
  const int way_;
  Action first_ = nullptr;
  Action second_ = nullptr;
  int level_ = 0;
  int events_ = 0;
  std::vector<long> bindings_;
  long binding_ = 0;
  YcluiGoneProc bindingsGone_ = nullptr;  // of the binding on p
  long bindingThere_ = 0;

  void attach() {
    const bool hasFormats = place_.around == WithFormats;
    auto* made =
        YcluiFieldBinding::Attach(field.get(), p, hasFormats ? "E%s" : "", hasFormats ? "S%s" : "");
    made->setKeyAction('!', "key");
    TheMachine->define("k", 'h', made);
    bindings_.push_back(binding_ = reinterpret_cast<long>(made));
  }

  void teach(YcluiParser& parser) {
    Declare(*parser.lex(), Words, 1);
    parser.setSyntaxGraph(syntax());
    parser.addIndefiniteNode(new YcluiSyntaxNode(IdOfWord(*parser.lex(), "op"), "op"));
  }

  void listen() {
    TheMachine->executor = [this](const std::string& text) { command(text); };
    YErr.setListener([](void*, unsigned int, YErrSeverity) { TheDesk->event(Error); }, nullptr);
    p->setTokCallback(
        [](void*, YcluiToken& token) {
          TheDesk->event(Tok, token.string());
          return YcluiTokenPass;
        },
        nullptr);
    p->setTokRefuseCallback([](void*, const YcluiToken& token,
                               std::uint32_t) { TheDesk->event(Refuse, token.string()); },
                            nullptr);
    p->setEchoProcedure(hear<Echo>, nullptr);
    p->sysSetEchoProcedure(hear<SysEcho>, nullptr);
    p->setSynCallback(hear<Syn, const char*>, nullptr);
  }
  template <Kind kind, class... Whole>
  static void hear(void*, const char* line, Whole...) {
    TheDesk->event(kind, line);
  }

  // The parser reports its destruction to this desk and to its binding.
  void watch(YcluiParser& parser) {
    const YcluiGoneProc before = parser.sysSetGoneProcedure(leave, &parser);
    if (&parser != p || before == leave) return;
    bindingsGone_ = before;
    bindingThere_ = binding_;
  }
  static void leave(void* parser) {
    Desk& d = *TheDesk;
    if (parser == d.p) d.event(Gone);
    if (parser == d.p && d.bindingsGone_ != nullptr) {
      d.bindingsGone_(reinterpret_cast<void*>(d.bindingThere_));
    }
    d.parsers_.erase(static_cast<YcluiParser*>(parser));
  }

  // Passes the text of the next level: the innermost text causes the event, "go" leads one level
  // deeper.
  void dive() {
    if (level_ == wanted_) return;
    YcluiParser& runner = place_.kind == Gone ? *q : *p;
    if (++level_ > 1) runner.pushFrame();
    const bool isLast = level_ == wanted_;
    const std::string text = isLast ? place_.drive : "go ";
    if (text[0] == '@') {
      for (const char key : text.substr(1)) type(std::string(1, key));
    } else if (level_ == 1 || way_ == 0) {
      runner.interpret(text.c_str());
    } else if (way_ == 1) {
      runner.pushToken(text.c_str());
    } else {
      runner.playbackFromLog(isLast ? "drive" : "deeper");
    }
    --level_;
  }

  void command(const std::string& text) {
    event(Command, text);
    if (text == "go") dive();
    if (text == "op" && place_.operate != nullptr) performSteps(place_.operate);
  }

  void event(Kind kind, std::string_view text = "") {
    if (++events_ == MostEvents) printCase(), std::abort();
    if (first_ == nullptr || kind != place_.kind || level_ != wanted_) return;
    if (!text.ends_with(place_.event)) return;
    act(std::exchange(first_, nullptr));
    if (second_ != nullptr) act(second_);
  }

  void act(Action action) {
    if (*action == '(' || isThere(p)) performSteps(action);
    if (isThere(p)) watch(*p);
  }
  void performSteps(Action action);
  void performOwn(const std::string& step);
  void readState() const;

  // After any actions the line is that of the tokens, and the parser runs commands as before.
  void expectOrder() {
    std::string line;
    for (YWord i = 0; i < p->numberOfToken(); ++i) {
      line += (i == 0 ? "" : " ") + std::string(p->tokenAt(i)->echoString());
    }
    EXPECT_EQ(line, p->currentLine());
    p->dropOpenToken();
    p->exhaust();
    while (p->nestingDepth() > 1) p->popFrame();
    p->reset();
    teachWords(*p);
    TheMachine->executed.clear();
    EXPECT_EQ(p->interpret("a b c "), 3);
    std::string commands;
    for (const std::string& text : TheMachine->executed) {
      if (text == "A" || text == "C") commands += text;
    }
    EXPECT_EQ(commands, "AC");
  }
};

const Place Places[] = {
    {"Token", "b", "a b c ", Tok},
    {"Alias", "al", "al a ", Tok},
    {"InsideAlias", "c", "al a ", Tok},
    {"UnknownWord", "zz", "b zz c ", Refuse},
    {"RefusedToken", "d", "b d c ", Refuse},
    {"EchoOfToken", "b", "a b c ", Echo},
    {"EchoOfOpenToken", "1", "box: 1 ", Echo},
    {"EchoOfReset", "", "op c ", Echo, Plain, "^reset"},
    {"EchoOfPopToken", "", "op c ", Echo, Plain, "^untoken"},
    {"EchoOfRemoveToken", "", "op c ", Echo, Plain, "^remove 0"},
    {"SystemsEcho", "b", "a b c ", SysEcho},
    {"Syntax", "b c", "a b c ", Syn},
    {"Command", "C", "a b c b ", Command},
    {"CommandOfAnAlias", "C", "al al ", Command},
    {"CommandAnywhere", "op", "b op c ", Command},
    {"Error", "", "b box: 1,x ", Error},
    {"Gone", "", "op ", Gone, Plain, "^condemn & ^bury"},
    {"Field", "b ", "a b c ", Show, WithField},
    {"EchoFormat", "b ", "a b c ", Command, WithFormats},
    {"SyntaxFormat", "Sb c", "a b c ", Command, WithFormats},
    {"TypedWord", "C", "@b c a ", Command, WithField},
    {"KeyAction", "key", "@b c! ", Command, WithField},
};

void Desk::performSteps(Action action) {
  for (const auto& [name, given] : StepsOf(action, '&')) {
    const auto known = ParserOperations.find(name);
    if (given[0] == '(') {
      run(given);
    } else if (name.empty()) {
      p->interpret(given.c_str());
    } else if (known != ParserOperations.end()) {
      known->second(*p, given);
    } else {
      performOwn(name);
    }
  }
}

// Steps that tests/support/steps.cc does not have.
void Desk::performOwn(const std::string& step) {
  if (step == "again") {
    const YcluiToken* last = p->currentToken();
    if (last == nullptr) return;
    YcluiToken token(*last);
    p->pushToken(token);
  } else if (step == "state") {
    readState();
  } else if (step == "syntax") {
    p->setSyntaxGraph(syntax());
  } else if (step == "syntax-again") {
    YcluiSyntaxGraph* graph = syntax();
    p->setSyntaxGraph(graph);
    p->setSyntaxGraph(graph);
  } else if (step == "pop-all") {
    while (p->nestingDepth() > 1) p->popFrame();
  } else if (step == "another-mortuary") {
    YcluiParser::DestroyMortuary();
    YcluiParser::CleanupMortuary();
    YcluiParser::CreateMortuary();
  } else if (step == "another-parser") {
    YcluiParser* parser = newParser();
    parser->interpret("a");
    YcluiParser::AddDeadBody(parser);
  } else if (step == "read") {
    YcluiToken token;
    p->lex()->setString("a b");
    p->lex()->getNextToken(token);
  } else if (step == "no-binding") {
    if (field) field->endBinding();
  } else if (step == "no-field") {
    field.reset();
  } else if (step == "type") {
    for (const char* key : {"a", " ", "b", "<", "!"}) type(key);
  } else {
    FAIL() << "no such step: " << step;
  }
}

void Desk::readState() const {
  YString_Array words;
  YString completed;
  unsigned long unique = 0;
  std::ostringstream out;
  p->dmpCommandLine(out);
  p->completionList("b", words);
  p->completionString("", completed, unique);
  p->possibleWords(words);
  EXPECT_EQ(p->tokenAt(p->numberOfToken()), nullptr);
  EXPECT_EQ(p->playbackName() == nullptr, p->playbackLine() == 0);
}

const Action Actions[] = {
    "b c a b ",
    "d zz box: x\n${none} ",
    "al al ",
    "box: 1 ",
    ", 2 ${v=1} ",
    "^exhaust & ^nothing",
    "^inside b c al ",
    "^token c & ^token al & ^token none",
    "^again",
    "^dummy dummy",
    "^drop",
    "^state",
    "^untoken",
    "^remove 99 & ^remove 0",
    "^reset",
    "^syntax",
    "^syntax-again",
    "^push",
    "^pop",
    "^pop-all",
    "^untok & ^unrefuse & ^unecho & ^unsyn",
    "^unfield & ^unformat & ^mute",
    "^log log",
    "^nest 2 & ^write text",
    "^shut",
    "^play play",
    "^pause",
    "^continue",
    "^condemn & ^condemn",
    "^bury",
    "^another-mortuary",
    "^another-parser",
    "^unword a & ^unword b & ^unword c & ^unword box: & ^unword op",
    "^put  a b ",
    "^suspend a b ",
    "^resume",
    "^read",
    "^no-binding",
    "^no-field",
    "^type",
    "(clui-eval q 'a al ')",
    "(clui-set-alias p 'al' 'a d zz ')",
    "(clui-set-variable p 'v' 'b c ') (clui-set-variable p 'w' 'b c ' 300)",
    "(clui-token p #\\;) (clui-token p 1 'zz')",
    "(clui-token p 'new' 'ne') (clui-token q 'new' 1 4) (clui-token p 8 #\\,)",
    ("(define g (clui-oneof 1 'A' (clui-syntax 2 3 'C') (clui-anyof 4))) (clui-set-syntax p g)"
     "(clui-set-syntax q g)"),
    ("(define g (clui-oneof 1 'A' (clui-syntax 2 3 'C')))"
     "(clui-set-syntax p (clui-syntax (clui-priority 1 2) g))"),
    "(clui-indefinite-syntax p 7 'D')",
    "(clui-parser-delete q) (clui-eval p 'a ')",
    "(clui-parser-delete p) (clui-eval q 'a')",
    "(clui-reset p) (clui-delete-last p) (clui-put-dummy-token p 'dummy')",
    "(clui-eval p 'a ')",
    "(clui-eval p 'op b al ')",
    "(clui-push p) (clui-pop p)",
    "(define k (clui-attach-field p f))",
    "(define k (clui-attach-field p f 'E%s' 'S%s'))",
    "(define k (clui-attach-field 0 f))",
    "(clui-start-logging p 'log' #t) (clui-shut-logging p)",
    "(clui-playback-from-file p 'play')",
    "(clui-unset-alias p 'al') (clui-set-alias p 'al' 'c b')",
    "(clui-set-variable p 'v' (list 1 'b' 2.5))",
    "(clui-set-keystroke-action k #\\! 'key %s')",
    "(clui-replace-current-word k 'b c ' #t)",
    "(clui-refer-current-word k) (clui-replace-current-word k 'ab' #f)",
    "(clui-depth p) (clui-find-possible-token p '') (clui-complete-token p 'b')",
};

class ReentryFrom : public testing::TestWithParam<Place> {
 protected:
  static void SetUpTestSuite() {
    WriteFile("play", "a\nb op c\nbox: 1\n, 2 al\n");
    WriteFile("deeper", "go \n");
    CluiLibInitialize();
    if (__sanitizer_set_death_callback != nullptr) __sanitizer_set_death_callback(printCase);
  }
  static void TearDownTestSuite() {
    CluiLibCleanup();
    std::cout << Combinations << " combinations\n";
  }
  void SetUp() override {
    TheMachine = &machine_;
    WriteFile("drive", GetParam().drive + '\n');
  }

  void perform(Action first, Action second, int level, int way) {
    Case = std::string(GetParam().name) + ", level " + std::to_string(level) + ", way " +
           std::to_string(way) + ": " + first + "; " + (second == nullptr ? "" : second);
    Desk desk(GetParam(), level, way);
    ASSERT_TRUE(desk.perform(first, second)) << "the event did not occur";
    ++Combinations;
  }

 private:
  ScriptMachine machine_;
};

TEST_P(ReentryFrom, AtEachLevel) {
  for (int level = 1; level <= Levels; ++level) {
    int way = 0;
    for (const Action first : Actions) {
      perform(first, nullptr, level, ++way % Ways);
      for (const Action second : Actions) {
        perform(first, second, level, ++way % Ways);
        ASSERT_FALSE(HasFailure()) << Case;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, ReentryFrom, testing::ValuesIn(Places),
                         [](const auto& one) { return std::string(one.param.name); });

}  // namespace
