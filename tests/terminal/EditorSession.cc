#include "tests/terminal/EditorSession.h"

#include <limits>
#include <map>
#include <sstream>

#include "parser/YcluiHelp.h"
#include "tests/support/words.h"

namespace {

const std::map<std::string_view, YcluiKeyName> Names = {
    {"Left", YcluiKeyName::Left},
    {"Right", YcluiKeyName::Right},
    {"Up", YcluiKeyName::Up},
    {"Down", YcluiKeyName::Down},
    {"Home", YcluiKeyName::Home},
    {"End", YcluiKeyName::End},
    {"Delete", YcluiKeyName::Delete},
    {"BS", YcluiKeyName::Backspace},
    {"Tab", YcluiKeyName::Tab},
    {"BackTab", YcluiKeyName::BackTab},
    {"Return", YcluiKeyName::Return},
    {"Escape", YcluiKeyName::Escape},
    {"WordLeft", YcluiKeyName::WordLeft},
    {"WordRight", YcluiKeyName::WordRight},
};

YcluiKey KeyOf(std::string_view name) {
  YcluiKey key;
  const auto named = Names.find(name);
  if (named != Names.end()) {
    key.kind = YcluiKey::Named;
    key.name = named->second;
  } else if (name.starts_with("P:")) {
    key.kind = YcluiKey::Paste;
    key.bytes = name.substr(2);
  } else {
    key.kind = name.starts_with("C-") ? YcluiKey::Control : YcluiKey::Alt;
    key.letter = name == "M-BS" ? '\x7F' : name[2];
  }
  return key;
}

constexpr const char* Words =
    "go gone stop box:/ii paint:/s load:/s at:/p wait:/f red undo unit twice->go_go big->box:_1,2";
constexpr const char* Syntax =
    "( go{now} | gone{now} | stop | box: red | paint: | load: | at: | wait: stop )";
constexpr const char* Anywhere[] = {"undo", "unit"};

}  // namespace

std::vector<YcluiKey> KeysOf(std::string_view keys) {
  std::vector<YcluiKey> list;
  while (!keys.empty()) {
    const std::size_t end = keys.starts_with('<') ? keys.find('>') : std::string_view::npos;
    if (end != std::string_view::npos) {
      list.push_back(KeyOf(keys.substr(1, end - 1)));
      keys.remove_prefix(end + 1);
    } else {
      const std::size_t length = YcluiCells(keys)[0].end;
      list.push_back(
          {YcluiKey::Text, YcluiKeyName::None, '\0', std::string(keys.substr(0, length))});
      keys.remove_prefix(length);
    }
  }
  return list;
}

EditorSession::EditorSession(const std::string& lines) : editor(parser, history) {
  declare();
  std::istringstream in(lines);
  for (std::string line; std::getline(in, line);) history.add(line);
  editor.begin();
}

void EditorSession::declare() {
  YcluiLex& lex = *parser.lex();
  Declare(lex, Words);
  parser.setSyntaxGraph(SyntaxOf(lex, Syntax).release());
  for (const char* word : Anywhere) {
    parser.addIndefiniteNode(new YcluiSyntaxNode(static_cast<std::uint32_t>(IdOfWord(lex, word))));
  }
  parser.interpret("${width}=5 ${window}=7 ");
  const auto id = [&lex](const char* word) {
    return static_cast<std::uint32_t>(IdOfWord(lex, word));
  };
  YcluiHelp& help = parser.help();
  help.setText(id("go"), "goes");
  help.setText(id("undo"), "takes back");
  help.setArgument(id("box:"), 1, "WIDTH", "in metres");
  help.setRange(id("box:"), 1, 1, 100);
  help.setArgument(id("box:"), 2, "HEIGHT", nullptr);
  help.setArgument(id("wait:"), 1, "SECONDS", nullptr);
  help.setRange(id("wait:"), 1, 0.5, std::numeric_limits<double>::infinity());
  YString_Array colours;
  for (const char* colour : {"red", "sea blue", "sea green", "say \"x\""}) {
    colours.end().assign(colour);
  }
  help.setValues(id("paint:"), 1, colours);
  help.setFileName(id("load:"), 1, true);
}

std::string EditorSession::type(const std::string& keys) {
  using Request = YcluiLineEditor::Request;
  Request request = Request::None;
  editor.begin();
  for (const YcluiKey& key : KeysOf(keys)) {
    if (request == Request::Line) parser.interpret((editor.text() + "\n").c_str());
    if (request != Request::None) editor.begin();
    request = editor.handle(key);
  }
  return seen(request);
}

std::string EditorSession::seen(YcluiLineEditor::Request request) {
  static const char* const requests[] = {"",           " = Line", " = Leave", " = Interrupt",
                                         " = Suspend", " = Clear"};
  YcluiPicture picture = editor.picture();
  editor.addRows(picture, 60, room);
  std::string text = picture.line.text();
  text.insert(picture.cursor, "|");
  if (!picture.hint.text().empty()) text += "{" + picture.hint.text() + "}";
  if (picture.prompt.text().starts_with("search")) text = picture.prompt.text() + text;
  const YcluiStyle chosen = editor.colours().of(YcluiTextKind::ListSelected);
  for (const YcluiStyledText& row : picture.rows) {
    text += " / ";
    bool isChosen = false;
    for (std::size_t i = 0; i <= row.text().size(); ++i) {
      const bool is = i < row.text().size() && row.styleAt(i) == chosen;
      if (is != isChosen) text += is ? '[' : ']';
      isChosen = is;
      if (i < row.text().size()) text += row.text()[i];
    }
  }
  return text + requests[static_cast<int>(request)] + (editor.rings() ? " !" : "");
}
