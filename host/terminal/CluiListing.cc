#include "host/terminal/CluiListing.h"

#include <algorithm>

#include "host/CluiEncoding.h"
#include "host/CluiLiteral.h"
#include "host/CluiMessages.h"
#include "host/CluiWidth.h"
#include "parser/YcluiParser.h"

namespace {

constexpr std::size_t Gap = 2;  // between columns

struct Cell {
  const std::string* word;
  std::size_t width;
};

// Cells that are all narrower than the screen.
void AppendGrid(const std::vector<Cell>& cells, std::size_t screen, std::string& text) {
  if (cells.empty()) return;
  std::size_t widest = 0;
  for (const Cell& cell : cells) widest = std::max(widest, cell.width);
  // Behind the last column there need be no gap.
  const std::size_t fitting = std::max<std::size_t>(1, (screen + Gap - 1) / (widest + Gap));
  const std::size_t rows = (cells.size() + fitting - 1) / fitting;
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t i = row; i < cells.size(); i += rows) {
      text += *cells[i].word;
      if (i + rows < cells.size()) text.append(widest + Gap - cells[i].width, ' ');
    }
    text += '\n';
  }
}

// How many commas stand in the text, outside quotes.
int CommasIn(const std::string& text) {
  int commas = 0;
  char quote = '\0';
  for (std::size_t i = 0; i < text.size(); i += CluiStepAt(text, i)) {
    const char c = text[i];
    if (c == '\\' && i + 1 < text.size()) {
      ++i;
    } else if (quote != '\0') {
      if (c == quote) quote = '\0';
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == ',') {
      ++commas;
    }
  }
  return commas;
}

// The type of the argument that is being typed in `text`, behind `read` others of the word.
YcluiValueType TypeAt(const YcluiKeyword& keyword, int read, const std::string& text) {
  int commas = CommasIn(text);
  for (int i = read; i < keyword.argCount(); ++i) {
    commas -= keyword.argType(i) == YcluiValuePoint ? 2 : 1;
    if (commas < 0) return keyword.argType(i);
  }
  return YcluiValueString;  // as everything behind the declared ones
}

// The length of a word that announces arguments at the start of a text, or 0.
std::size_t LengthOfAnnouncer(const std::string& text) {
  for (std::size_t i = 0; i < text.size(); i += CluiStepAt(text, i)) {
    if (text[i] == ':') return i + 1;
  }
  return 0;
}

// The type of the argument that is being typed, or YcluiValueNone when it is a word.
YcluiValueType ExpectedType(YcluiParser& parser, const std::string& beginning) {
  if (const YcluiToken* open = parser.openToken()) {
    const YcluiKeyword* keyword = parser.lex()->keyword(open->string());
    return keyword == nullptr ? YcluiValueString : TypeAt(*keyword, open->argc() - 1, beginning);
  }
  const std::size_t length = LengthOfAnnouncer(beginning);
  const YcluiKeyword* keyword =
      length == 0 ? nullptr : parser.lex()->keyword(beginning.substr(0, length).c_str());
  if (keyword == nullptr || keyword->argCount() == 0) return YcluiValueNone;
  return TypeAt(*keyword, 0, beginning.substr(length));
}

std::string ShownType(YcluiValueType type) {
  const std::wstring text = CluiTypeText(type);
  return "(" + std::string(text.begin(), text.end()) + ")";
}

}  // namespace

std::string CluiColumns(const std::vector<std::string>& words, int screenWidth) {
  static CluiEncoding encoding;
  static std::string problem;
  static const bool isOpen = encoding.open("UTF-8", problem);
  const auto screen = static_cast<std::size_t>(std::max(screenWidth, 1));
  std::string text;
  std::vector<Cell> cells;
  for (const std::string& word : words) {
    const std::size_t width =
        isOpen ? static_cast<std::size_t>(CluiWidthOf(encoding.fromSystem(word))) : word.size();
    if (width < screen) {
      cells.push_back({&word, width});
      continue;
    }
    AppendGrid(cells, screen, text);
    cells.clear();
    text.append(word) += '\n';
  }
  AppendGrid(cells, screen, text);
  return text;
}

std::vector<std::string> CluiCandidates(YcluiParser& parser, const char* beginning) {
  const YcluiValueType type = ExpectedType(parser, beginning);
  if (type != YcluiValueNone) return {ShownType(type)};
  YString_Array words;
  parser.possibleWords(words, beginning);
  std::vector<std::string> candidates;
  candidates.reserve(static_cast<std::size_t>(words.size()));
  for (int i = 0; i < words.size(); ++i) candidates.emplace_back(words[i].buffer);
  std::sort(candidates.begin(), candidates.end());
  return candidates;
}
