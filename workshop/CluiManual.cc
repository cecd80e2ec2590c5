#include "workshop/CluiManual.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "workshop/CluiDiagram.h"
#include "workshop/CluiManualParts.h"
#include "workshop/CluiMarkup.h"

namespace {

constexpr std::size_t LongestLine = 300;
constexpr std::size_t MostValues = 40;

constexpr char Legend[] = R"html(<section id="how-to-read" aria-labelledby="h-how-to-read">
<h2 id="h-how-to-read">How to read the pictures</h2>
<p>A command follows the track from left to right; where the track divides, each way is right.
Rounded boxes are words, typed as they are; of a word with an underlined beginning, that much is
enough. Boxes with corners are values. A track that leads back, with an arrow, repeats what is
above it. A box with a dashed edge is a word that is accepted at any point of a command. Of two
commands, the first may interrupt the second, unfinished one if its priority is not above the number
that the second one admits; both are 127 unless the picture says otherwise.</p>
</section>
)html";

std::string Code(const std::string& text) {
  return "<code>" + CluiEscaped(text) + "</code>";
}

// The distinct words of a track in their order.
void CollectWords(const CluiTrack& track, std::vector<const CluiWordText*>& words,
                  std::unordered_map<const CluiWordText*, bool>& known) {
  if (track.kind == CluiTrack::Kind::Word && !std::exchange(known[track.word], true)) {
    words.push_back(track.word);
  }
  for (const CluiTrack& part : track.parts) CollectWords(part, words, known);
}

// "in short sh, also display".
std::string FormsOf(const CluiWordText& word) {
  std::string forms;
  for (const CluiSpelling& spelling : word.spellings) {
    const bool isFirst = &spelling == word.spellings.data();
    if (!isFirst) forms += (forms.empty() ? "also " : ", also ") + Code(spelling.name);
    if (spelling.shortest == 0 || spelling.shortest == spelling.name.size()) continue;
    forms += (forms.empty() ? "in short " : ", in short ") +
             Code(spelling.name.substr(0, spelling.shortest));
  }
  if (word.isAnywhere) forms += forms.empty() ? "anywhere" : ", anywhere";
  return forms.empty() ? "" : "<span class=\"forms\">" + forms + "</span>";
}

std::string ValuesOf(const CluiWordArgument& argument) {
  if (argument.isFile) return "; the name of a file";
  std::string text;
  for (std::size_t i = 0; i < argument.values.size(); ++i) {
    if (i == MostValues) {
      return text + " and " + std::to_string(argument.values.size() - i) + " more";
    }
    text += (i == 0 ? "; such as " : ", ") + Code(argument.values[i]);
  }
  return text;
}

std::string ItemOf(const CluiWordArgument& argument) {
  std::string item = "<li><code>" + CluiEscaped(argument.name) + "</code>";
  if (argument.type != argument.name) item += ": " + argument.type;
  if (argument.isOptional) item += ", optional";
  if (!argument.range.empty()) item += ", " + CluiEscaped(argument.range);
  if (!argument.text.empty()) item += "; " + CluiEscaped(argument.text);
  return item + ValuesOf(argument) + "</li>";
}

std::string EntryOf(const CluiWordText& word) {
  std::string entry = "<dt>" + Code(word.name()) + FormsOf(word) + "</dt><dd>";
  entry += CluiEscaped(word.text);
  if (!word.arguments.empty()) {
    entry += "<ul>";
    for (const CluiWordArgument& argument : word.arguments) entry += ItemOf(argument);
    entry += "</ul>";
  }
  return entry + "</dd>\n";
}

std::string Plural(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

bool IsPlain(char c) {
  const auto code = static_cast<unsigned char>(c);
  return code >= 0x80 || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

}  // namespace

void CluiManual::addCommands(const std::string& heading, const CluiGrammar& grammar,
                             CluiVocabulary& vocabulary) {
  std::vector<CluiCommand> commands = CluiCommandsOf(grammar, vocabulary);
  addGroup(heading, commands, false);
  addGroup("Anywhere in a command", commands, true);
}

void CluiManual::addGroup(const std::string& heading, std::vector<CluiCommand>& commands,
                          bool isAnywhere) {
  const auto belongs = [isAnywhere](const CluiCommand& command) {
    return command.isAnywhere == isAnywhere;
  };
  const auto count = std::count_if(commands.begin(), commands.end(), belongs);
  if (count == 0) return;
  (isAnywhere ? anywhere_ : commands_) += static_cast<std::size_t>(count);
  const std::string anchor = anchorOf(heading);
  const std::string title = CluiEscaped(heading);
  contents_ += "<div data-group><p>" + title + "</p><ul role=\"list\">\n";
  body_ += "<section data-group aria-labelledby=\"" + anchor + "\">\n<h2 id=\"" + anchor + "\">" +
           title + "</h2>\n";
  for (CluiCommand& command : commands) {
    if (belongs(command)) addCommand(command);
  }
  contents_ += "</ul></div>\n";
  body_ += "</section>\n";
}

void CluiManual::addCommand(CluiCommand& command) {
  const std::string anchor = anchorOf(command.name);
  const std::string name = CluiEscaped(command.name);
  const std::string link = "<a href=\"#" + anchor + "\">" + name + "</a>";
  contents_ += "<li>" + link + "</li>\n";
  std::vector<const CluiWordText*> words;
  std::unordered_map<const CluiWordText*, bool> known;
  CollectWords(command.track, words, known);
  body_ += "<article id=\"" + anchor + "\" aria-label=\"" + name + "\">\n<h3>" + link + "</h3>\n";
  if (!words.empty() && !words.front()->text.empty()) {
    body_ += "<p class=\"about\">" + CluiEscaped(words.front()->text) + "</p>\n";
  }
  body_ += "<p class=\"line\">" + Code(CluiTrackLine(command.track, LongestLine)) + "</p>\n";
  body_ += "<div class=\"picture\">" + CluiDiagramOf(command) + "</div>\n<dl>\n";
  for (const CluiWordText* word : words) body_ += EntryOf(*word);
  body_ += "</dl>\n</article>\n";
}

void CluiManual::addNames(const CluiVocabulary& vocabulary) {
  addTable("Aliases", "Alias", "Replaced by", vocabulary.aliases());
  addTable("Variables", "Variable", "Value", vocabulary.variables());
}

void CluiManual::addTable(const char* heading, const char* name, const char* text,
                          const std::vector<CluiNamedText>& rows) {
  if (rows.empty()) return;
  const std::string anchor = anchorOf(heading);
  contents_ += std::string("<div data-group><p>Names</p><ul role=\"list\">\n<li><a href=\"#") +
               anchor + "\">" + heading + "</a></li>\n</ul></div>\n";
  body_ += "<section data-group aria-labelledby=\"h-" + anchor + "\">\n<article id=\"" + anchor +
           "\" aria-label=\"" + heading + "\">\n<h2 id=\"h-" + anchor + "\"><a href=\"#" + anchor +
           "\">" + heading + "</a></h2>\n<table><thead><tr><th scope=\"col\">" + name +
           "</th><th scope=\"col\">" + text + "</th></tr></thead><tbody>\n";
  for (const CluiNamedText& row : rows) {
    body_ += "<tr><td>" + Code(row.name) + "</td><td>" + Code(row.text) + "</td></tr>\n";
  }
  body_ += "</tbody></table>\n</article>\n</section>\n";
}

// A name for links, which is used once. Letters of all scripts are kept.
std::string CluiManual::anchorOf(const std::string& name) {
  std::string anchor = "c-";
  for (const char c : name) {
    if (IsPlain(c)) {
      anchor += c;
    } else if (!anchor.ends_with('-')) {
      anchor += '-';
    }
  }
  while (anchor.size() > 2 && anchor.ends_with('-')) anchor.pop_back();
  const int count = ++anchors_[anchor];
  // The "." is in no anchor that was made of a name.
  return count == 1 ? anchor : anchor + "." + std::to_string(count);
}

std::string CluiManual::page() const {
  const std::string title = CluiEscaped(title_);
  std::string summary = Plural(commands_, "command");
  if (anywhere_ > 0) summary += " and " + Plural(anywhere_, "word") + " for anywhere in a command";
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         // Nothing is loaded, whatever a text of the language says.
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
         "style-src 'unsafe-inline'; script-src 'unsafe-inline'\">\n<title>" +
         title + "</title>\n<style>\n" + CluiManualStyle + CluiDiagramStyle +
         "</style>\n</head>\n<body>\n<a class=\"skip\" href=\"#commands\">To the commands</a>\n"
         "<div class=\"side\">\n<header><h1>" +
         title + "</h1><p>" + summary +
         "</p></header>\n"
         "<div class=\"search\" role=\"search\" hidden>\n<label for=\"search\">Search</label>\n"
         "<input id=\"search\" type=\"search\" autocomplete=\"off\" spellcheck=\"false\" "
         "aria-describedby=\"keys\">\n<p class=\"status\" id=\"keys\"><kbd>/</kbd> to search, "
         "<kbd>Escape</kbd> to clear, arrows and <kbd>Enter</kbd> to go. "
         "<span id=\"status\" role=\"status\"></span></p>\n</div>\n<nav "
         "aria-label=\"Contents\">\n" +
         contents_ + "</nav>\n</div>\n<main id=\"commands\" tabindex=\"-1\">\n" + body_ + Legend +
         "</main>\n<script>\n" + CluiManualScript + "</script>\n</body>\n</html>\n";
}
