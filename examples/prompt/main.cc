// A prompt in one file: "light: hall level: 40", "show" and "quit". Try Tab, "?", Up and a mistake.

#include <terminal/YcluiPrompt.h>
#include <yqrtClui.h>

#include <algorithm>
#include <map>
#include <string>

struct Lamps : YcluiParser {
  std::map<std::string, int> levels{{"hall", 0}, {"kitchen", 0}, {"workshop", 0}};
  YcluiPrompt prompt{*this, "lamps"};  // its history is kept under that name

  Lamps() {
    const YcluiValueType string = YcluiValueString, integer = YcluiValueInteger;
    const auto light = lex()->addKeyword("light:", 1, &string, 0);
    const auto level = lex()->addKeyword("level:", 1, &integer, 0);
    const auto show = lex()->addKeyword("show", nullptr, 0);
    const auto quit = lex()->addKeyword("quit", "q", 0);

    auto* syntax = new YcluiSyntaxGraph;  // light: level: | show | quit
    syntax->insertAnd(new YcluiSyntaxNode(level, "set"));
    syntax->insertAnd(new YcluiSyntaxNode(light));  // at the front
    syntax->insertOr(new YcluiSyntaxNode(show, "show"));
    syntax->insertOr(new YcluiSyntaxNode(quit, "quit"));
    setSyntaxGraph(syntax);  // the parser owns it

    YString_Array rooms;
    for (const auto& lamp : levels) rooms.append(lamp.first.c_str());
    help().setText(light, "chooses a lamp");
    help().setArgument(light, 1, "ROOM", "where it is");
    help().setValues(light, 1, rooms);
    help().setText(level, "sets its brightness");
    help().setArgument(level, 1, "LEVEL", "in percent");
    help().setRange(level, 1, 0, 100);  // is shown, but not checked
    help().setText(show, "shows all lamps");
    help().setText(quit, "leaves");
    setTokRefuseCallback(report, this);
    prompt.editor().colours().set(YcluiTextKind::Word, {.colour = 6, .bold = true});
  }

  YWord evaluate(const char* command) override {  // the text of the node that completed it
    const std::string verb = command;
    if (verb == "quit") prompt.leave();
    if (verb == "set") {
      levels[(*tokenAt(0))[1]->GetString()] = std::clamp((*tokenAt(1))[1]->GetLong(), 0, 100);
    }
    if (verb != "show") return 1;
    for (const auto& [room, level] : levels) prompt.print(room + ": " + std::to_string(level));
    return 1;
  }
  static void report(void* lamps, const YcluiToken& token, std::uint32_t) {
    static_cast<Lamps*>(lamps)->prompt.print(std::string("refused: ") + token.string());
  }
};

int main() {
  return Lamps().prompt.run() ? 0 : 1;
}
