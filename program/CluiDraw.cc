#include "program/CluiDraw.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include "foundation/YCharacters.h"
#include "foundation/YFileName.h"
#include "parser/YcluiParser.h"
#include "workshop/CluiCommands.h"
#include "workshop/CluiDiagram.h"
#include "workshop/CluiDot.h"
#include "workshop/CluiVocabulary.h"

namespace {

// The name of a script without folder and extension.
std::string TitleOf(const std::string& file) {
  const std::size_t slash = file.rfind('/');
  std::string name = slash == std::string::npos ? file : file.substr(slash + 1);
  if (name.ends_with(".scm")) name.resize(name.size() - 4);
  return YFileName::ToUtf8(name);
}

std::string Utf8Of(const std::wstring& text) {
  std::string utf8;
  YCharacters::AppendUtf8(std::u32string(text.begin(), text.end()), utf8);
  return utf8;
}

// Keeps the commands that begin with the word; if there is none, those that contain it.
void MarkCommands(const std::vector<CluiCommand>& commands, const CluiWordText& word,
                  std::vector<bool>& kept) {
  std::vector<bool> begins;
  for (const CluiCommand& command : commands) begins.push_back(CluiBeginsWith(command.track, word));
  const bool any = std::find(begins.begin(), begins.end(), true) != begins.end();
  for (std::size_t i = 0; i < commands.size(); ++i) {
    if (any ? begins[i] : CluiContains(commands[i].track, word)) kept[i] = true;
  }
}

}  // namespace

// Null before the parser has a syntax, and when that was not set by the primitives.
const CluiGrammar* CluiDraw::grammar() const {
  const CluiGrammar* const grammar =
      reading_.isAlive() ? grammars_.grammarOf(*reading_.parser()) : nullptr;
  return grammar == nullptr || grammar->syntax.parts.empty() ? nullptr : grammar;
}

void CluiDraw::loaded() {
  if (options_.task != CluiTask::Manual) return;
  manual_.emplace(TitleOf(options_.language));
  addChapter("Commands");
}

void CluiDraw::hasRead(const std::string& text) {
  const CluiGrammar* const present = grammar();
  if (!manual_ || present == nullptr || present->formerSyntaxes.size() == syntaxes_) return;
  addChapter("Commands after \u201c" + Utf8Of(encoding_.fromUser(text)) + "\u201d");
}

void CluiDraw::addChapter(const std::string& heading) {
  const CluiGrammar* const present = grammar();
  if (present == nullptr) return;
  syntaxes_ = present->formerSyntaxes.size();
  CluiVocabulary vocabulary(*reading_.parser());
  manual_->addCommands(heading, *present, vocabulary);
}

bool CluiDraw::print() {
  std::string output;
  if (!makeOutput(output)) return false;
  std::fwrite(output.data(), 1, output.size(), stdout);
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return true;
  diagnostics_.problem("clui", std::string("cannot write: ") + std::strerror(errno));
  return false;
}

bool CluiDraw::makeOutput(std::string& output) {
  const CluiGrammar* const present = grammar();
  if (present == nullptr) {
    diagnostics_.problem(options_.language, "there is no syntax to be drawn");
    return false;
  }
  if (options_.task == CluiTask::Diagram) return makeDiagram(*present, output);
  const CluiVocabulary vocabulary(*reading_.parser());
  if (options_.task == CluiTask::Graph) {
    output = CluiDotOf(*reading_.parser(), vocabulary);
  } else {
    manual_->addNames(vocabulary);
    output = manual_->page();
  }
  return true;
}

bool CluiDraw::makeDiagram(const CluiGrammar& grammar, std::string& output) {
  CluiVocabulary vocabulary(*reading_.parser());
  std::vector<CluiCommand> commands = CluiCommandsOf(grammar, vocabulary);
  std::vector<bool> kept(commands.size(), options_.words.empty());
  for (const std::string& name : options_.words) {
    const std::uint32_t id = vocabulary.find(YFileName::ToUtf8(name));
    if (id == 0) {
      diagnostics_.problem(options_.language, "no such word \"" + name + "\"");
      return false;
    }
    MarkCommands(commands, vocabulary.word(id), kept);
  }
  std::vector<CluiCommand> drawn;
  for (std::size_t i = 0; i < commands.size(); ++i) {
    if (kept[i]) drawn.push_back(std::move(commands[i]));
  }
  if (drawn.empty()) {
    diagnostics_.problem(options_.language, "no command has such a word");
    return false;
  }
  output = CluiDiagramOf(drawn);
  return true;
}
