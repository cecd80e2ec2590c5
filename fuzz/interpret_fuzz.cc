// The parser: a random language, texts cut at any byte, and commands and callbacks that call any
// operation of the parser that runs them.

#include "parser/YcluiParser.h"
#include "tests/support/Choices.h"
#include "tests/support/syntax.h"

namespace {

constexpr int MostEvents = 3000;  // more means an alias that contains itself twice

class Restless : public YcluiParser {
 public:
  explicit Restless(Choices& choices) : choices_(choices) {
    const YcluiValueType types[] = {YcluiValueInteger, YcluiValuePoint, YcluiValueString};
    for (const char* word : {"a", "b", "c", "d"}) lex()->addKeyword(word, nullptr, ++ids_);
    lex()->addKeyword("box:", 2, types, ++ids_);
    lex()->addKeyword("say:", 1, &types[2], ++ids_);
    newSyntax();
    setTokCallback(onToken, this);
    setTokRefuseCallback([](void* me, const YcluiToken&, std::uint32_t) { Self(me).event(); },
                         this);
    setEchoProcedure([](void* me, const char*) { Self(me).event(); }, this);
    sysSetEchoProcedure([](void* me, const char*) { Self(me).event(); }, this);
    setSynCallback([](void* me, const char*, const char*) { Self(me).event(); }, this);
    sysSetSynCallback([](void* me, const char*, const char*) { Self(me).event(); }, this);
  }

  void act() {
    switch (choices_.below(24)) {
      case 1:
        pushFrame();
        break;
      case 2:
        popFrame();
        break;
      case 3:
        reset();
        break;
      case 4:
        popToken();
        break;
      case 5:
        removeToken(choices_.below(8));
        break;
      case 6:
        exhaust();
        break;
      case 7:
        dropOpenToken();
        break;
      case 8:
        pushToken(choices_.text().c_str());
        break;
      case 9:
        pushDummyToken(choices_.text().c_str());
        break;
      case 10:
        newSyntax();
        break;
      case 11:
        addIndefiniteNode(newNode());
        break;
      case 12:
        setAlias(choices_.below(2) != 0 ? "x" : "y", choices_.text().c_str());
        break;
      case 13:
        unsetAlias("x");
        break;
      case 14:
        setVariable("v", YAttribValue(choices_.text().c_str(), 0));
        break;
      case 15:
        setVariable("w", YAttribValue(choices_.text().c_str(), 0), choices_.byte());
        break;
      case 16:
        AddDeadBody(this);
        break;
      case 17:
        CleanupMortuary();
        break;
      case 18:
        complete(choices_.text());
        break;
      case 19:
        enableEcho(choices_.below(2));
        break;
      case 20:
        lex()->delKeyword("b");
        break;
      case 21:
        lex()->addKeyword(choices_.text().c_str(), nullptr, choices_.byte());
        break;
      case 22:
        pushWord(choices_.text());
        break;
      default:
        interpret(choices_.text().c_str());
    }
    check();
  }

 private:
  Choices& choices_;
  std::uint32_t ids_ = 0;
  int events_ = 0;

  static Restless& Self(void* me) { return *static_cast<Restless*>(me); }
  static YcluiTokenCtrl onToken(void* me, YcluiToken& token) {
    const unsigned choice = Self(me).choices_.byte();
    if (choice % 16 == 15) token.setEchoString(Self(me).choices_.text().c_str());
    Self(me).event();
    return choice == 14 ? YcluiTokenDrop : YcluiTokenPass;
  }
  YWord evaluate(const char* /*text*/) override {
    event();
    return choices_.below(2);
  }

  void event() {
    check();
    if (++events_ > MostEvents) exhaust(), unsetAlias("x"), unsetAlias("y");
    if (events_ < MostEvents && choices_.below(4) == 3) act();
  }

  YcluiSyntaxNode* newNode() {
    return new YcluiSyntaxNode(1 + choices_.below(6), "f $0[0] $$ $-1#");
  }
  // Makes a syntax from a text of the input and gives commands and priorities to its nodes.
  void newSyntax() {
    auto graph = SyntaxOf(choices_.text());
    for (YcluiSyntaxNode* node : NodesOf(*graph)) {
      if (node->tokenId == 0) continue;
      if (choices_.below(2) == 0) node->setAction("f $0[0] $$ $-1#");
      node->priority = static_cast<std::uint8_t>(choices_.byte());
    }
    setSyntaxGraph(graph.release());
  }
  void pushWord(const std::string& word) {
    YcluiToken token = makeToken(word.c_str());
    pushToken(token);
  }
  void complete(const std::string& prefix) {
    YString_Array words;
    YString completed;
    unsigned long unique = 0;
    completionList(prefix.c_str(), words);
    completionString(prefix.c_str(), completed, unique);
    possibleWords(words);
  }

  void check() {
    Require(nestingDepth() > 0, "there is a frame");
    std::string line;
    for (YWord i = 0; i < numberOfToken(); ++i) {
      const char* echo = tokenAt(i)->echoString();
      line += (i == 0 ? "" : " ") + std::string(echo == nullptr ? "" : echo);
    }
    Require(line == currentLine(), "the line has the echo texts of its tokens");
  }
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  Choices choices(bytes, count);
  YcluiParser::CreateMortuary();
  {
    Restless parser(choices);
    while (choices.more()) parser.act();
  }
  Require(YcluiParser::Live(0) == nullptr, "no parser is left");
  YcluiParser::CleanupMortuary();
  YcluiParser::DestroyMortuary();
  return 0;
}
