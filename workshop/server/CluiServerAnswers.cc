// What the language server returns for requests.

#include <algorithm>
#include <array>

#include "foundation/YCharacters.h"
#include "workshop/server/CluiServerCore.h"

using Json = nlohmann::json;

namespace {

// More candidates than an editor shows; typing narrows them down.
constexpr std::size_t MostCandidates = 500;
constexpr std::size_t LongestSymbol = 60;  // in bytes

// The types of semantic tokens, by number.
constexpr std::array<const char*, 8> TokenTypes = {"keyword", "function", "macro",   "variable",
                                                   "string",  "number",   "comment", "operator"};

// -1 for a piece without a type.
int TokenTypeOf(YcluiPieceKind kind) {
  switch (kind) {
    case YcluiPieceWord:
      return 0;
    case YcluiPieceAnywhereWord:
      return 1;
    case YcluiPieceAlias:
      return 2;
    case YcluiPieceVariable:
      return 3;
    case YcluiPieceString:
    case YcluiPieceOpenQuote:
      return 4;
    case YcluiPieceFloat:
    case YcluiPieceInteger:
    case YcluiPiecePoint:
      return 5;
    case YcluiPieceComment:
      return 6;
    case YcluiPiecePunctuation:
      return 7;
    default:
      return -1;
  }
}

Json RangeOf(std::size_t line, std::size_t begin, std::size_t lastLine, std::size_t end) {
  return {{"start", {{"line", line}, {"character", begin}}},
          {"end", {{"line", lastLine}, {"character", end}}}};
}

// The kinds of completion items: function, keyword, variable, value, snippet.
int ItemKindOf(YcluiOffers::Group group) {
  switch (group) {
    case YcluiOffers::Group::Next:
      return 14;
    case YcluiOffers::Group::Anywhere:
      return 3;
    case YcluiOffers::Group::Alias:
      return 15;
    case YcluiOffers::Group::Variable:
      return 6;
    case YcluiOffers::Group::Value:
      return 12;
  }
  return 1;
}

std::string Joined(const std::string& text, const char* between, const std::string& more) {
  return text.empty() || more.empty() ? text + more : text + between + more;
}

// "LEVEL: integer, 0 to 100; in percent"
std::string TextOf(const CluiWordArgument& argument) {
  std::string text = argument.name;
  if (argument.type != argument.name) text += ": " + argument.type;
  text = Joined(text, ", ", argument.range);
  return Joined(text, "; ", argument.text);
}

std::string TextOf(const CluiWordText& word) {
  std::string text = Joined(word.name(), ": ", word.text);
  for (const CluiWordArgument& argument : word.arguments) text += "\n  " + TextOf(argument);
  return text;
}

// Relative positions of the tokens, five numbers for each, as the protocol wants them.
void AddTokens(const CluiServedText& text, std::size_t first, std::size_t end,
               std::vector<std::uint32_t>& data) {
  std::size_t count = 0;
  for (std::size_t line = first; line < end; ++line) count += text.pieces(line).size();
  data.reserve(5 * count);
  std::size_t lastLine = 0;
  for (std::size_t line = first; line < end; ++line) {
    std::uint32_t lastBegin = 0;
    for (const CluiServedPiece& piece : text.pieces(line)) {
      const int type = TokenTypeOf(piece.kind);
      if (type < 0 || piece.begin == piece.end) continue;
      data.push_back(static_cast<std::uint32_t>(line - lastLine));
      data.push_back(piece.begin - lastBegin);
      data.push_back(piece.end - piece.begin);
      data.push_back(static_cast<std::uint32_t>(type));
      data.push_back(0);  // no modifiers
      lastLine = line;
      lastBegin = piece.begin;
    }
  }
}

}  // namespace

Json CluiServerCore::initialize(const Json&) {
  phase_ = Phase::Initialized;
  const Json tokens = {{"legend", {{"tokenTypes", TokenTypes}, {"tokenModifiers", Json::array()}}},
                       {"full", {{"delta", true}}},
                       {"range", true}};
  return {{"capabilities",
           {{"positionEncoding", "utf-16"},
            {"textDocumentSync", {{"openClose", true}, {"change", 2}}},
            {"completionProvider", {{"triggerCharacters", {" ", ",", ":", "\"", "{"}}}},
            {"hoverProvider", true},
            {"signatureHelpProvider", {{"triggerCharacters", {":", ",", " "}}}},
            {"documentSymbolProvider", true},
            {"semanticTokensProvider", tokens}}},
          {"serverInfo", {{"name", "clui"}, {"version", CLUI_VERSION}}}};
}

Json CluiServerCore::shutDown(const Json&) {
  phase_ = Phase::ShutDown;
  return nullptr;
}

// --- At a position

Json CluiServerCore::complete(const Json& params) {
  const CluiTextPosition position = positionOf(params.at("position"));
  const CluiServedLine* line = nullptr;
  YcluiOffers& offers = documentOf(params).text.offersAt(position, line);
  Json items = Json::array();
  const std::size_t count = std::min(offers.count(), MostCandidates);
  for (std::size_t i = 0; i < count; ++i) {
    const YcluiOffers::Offer offer = offers.at(i);
    const std::string inserted = offers.inserted(i);
    const std::uint32_t begin = line->columnAt(offers.begin());
    const std::uint32_t end = line->columnAt(offers.endFor(inserted));
    const std::string name = YCharacters::Utf8FromBytes(offer.name);
    std::string order = std::to_string(i);
    order.insert(0, 6 - std::min<std::size_t>(order.size(), 6), '0');
    Json item = {{"label", name},
                 {"kind", ItemKindOf(offer.group)},
                 {"filterText", YCharacters::Utf8FromBytes(line->text().substr(
                                    offers.begin(), offers.end() - offers.begin())) +
                                    YCharacters::Utf8FromBytes(offers.rest(i))},
                 {"sortText", order},
                 {"textEdit",
                  {{"range", RangeOf(position.line, begin, position.line, end)},
                   {"newText", YCharacters::Utf8FromBytes(inserted)}}}};
    const std::string help = YCharacters::Utf8FromBytes(offers.help(i));
    if (!help.empty()) item["documentation"] = help;
    items.push_back(std::move(item));
  }
  return {{"isIncomplete", count < offers.count()}, {"items", std::move(items)}};
}

Json CluiServerCore::hover(const Json& params) {
  const CluiTextPosition position = positionOf(params.at("position"));
  const CluiServedText& text = documentOf(params).text;
  if (position.line >= text.lineCount()) return nullptr;
  for (const CluiServedPiece& piece : text.pieces(position.line)) {
    if (position.column < piece.begin || position.column >= piece.end) continue;
    if (piece.tokenId == YcluiIdNone || piece.tokenId == YcluiIdAlias) return nullptr;
    const CluiWordText& word = vocabulary_.word(piece.tokenId);
    const auto index = static_cast<std::size_t>(piece.argument);
    const bool isArgument = index > 0 && index <= word.arguments.size();
    const std::string shown = isArgument ? TextOf(word.arguments[index - 1]) : TextOf(word);
    return {{"contents", {{"kind", "plaintext"}, {"value", shown}}},
            {"range", RangeOf(position.line, piece.begin, position.line, piece.end)}};
  }
  return nullptr;
}

Json CluiServerCore::signature(const Json& params) {
  const CluiTextPosition position = positionOf(params.at("position"));
  const YcluiTyping& typing = documentOf(params).text.typingAt(position);
  if (typing.kind != YcluiTypingArgument || typing.tokenId == YcluiIdNone) return nullptr;
  const CluiWordText& word = vocabulary_.word(typing.tokenId);
  std::string label = word.name();
  Json parameters = Json::array();
  for (const CluiWordArgument& argument : word.arguments) {
    label += (parameters.empty() ? " " : ", ") + argument.name;
    parameters.push_back({{"label", argument.name}, {"documentation", TextOf(argument)}});
  }
  Json signature = {{"label", label}, {"parameters", std::move(parameters)}};
  if (!word.text.empty()) signature["documentation"] = word.text;
  return {{"signatures", {std::move(signature)}},
          {"activeSignature", 0},
          {"activeParameter", typing.argument - 1}};
}

// --- Of the whole text

// The complete commands.
Json CluiServerCore::symbols(const Json& params) {
  const CluiServedText& text = documentOf(params).text;
  Json symbols = Json::array();
  bool isOpen = false;
  std::string name;
  Json first;
  CluiTextPosition begin;
  for (std::size_t line = 0; line < text.lineCount(); ++line) {
    for (const CluiServedPiece& piece : text.pieces(line)) {
      const bool isWord = piece.argument == 0 && TokenTypeOf(piece.kind) >= 0 &&
                          piece.kind != YcluiPieceComment && piece.kind != YcluiPiecePunctuation;
      if (isWord && !isOpen) {
        isOpen = true;
        begin = {line, piece.begin};
        first = RangeOf(line, piece.begin, line, piece.end);
        name.clear();
      }
      if (isWord && name.size() < LongestSymbol) {
        name = Joined(name, " ", text.textOf(line, piece));
      }
      if (!piece.endsCommand) continue;
      isOpen = false;
      symbols.push_back({{"name", name},
                         {"kind", 12},
                         {"range", RangeOf(begin.line, begin.column, line, piece.end)},
                         {"selectionRange", first}});
    }
  }
  return symbols;
}

Json CluiServerCore::allTokens(const Json& params) {
  Document& document = documentOf(params);
  document.tokens.clear();
  AddTokens(document.text, 0, document.text.lineCount(), document.tokens);
  return {{"resultId", std::to_string(++document.tokensId)}, {"data", document.tokens}};
}

// What differs from the last answer: all between their common beginning and their common end.
Json CluiServerCore::changedTokens(const Json& params) {
  Document& document = documentOf(params);
  if (params.at("previousResultId") != std::to_string(document.tokensId)) return allTokens(params);
  std::vector<std::uint32_t> data;
  AddTokens(document.text, 0, document.text.lineCount(), data);
  std::vector<std::uint32_t>& former = document.tokens;
  const std::size_t shorter = std::min(data.size(), former.size());
  const auto firstChange = std::mismatch(
      data.begin(), data.begin() + static_cast<std::ptrdiff_t>(shorter), former.begin());
  const auto begin = static_cast<std::size_t>(firstChange.first - data.begin());
  std::size_t same = 0;  // at the end
  while (same < shorter - begin &&
         data[data.size() - 1 - same] == former[former.size() - 1 - same]) {
    ++same;
  }
  const Json edit = {
      {"start", begin},
      {"deleteCount", former.size() - begin - same},
      {"data", std::vector<std::uint32_t>(data.begin() + static_cast<std::ptrdiff_t>(begin),
                                          data.end() - static_cast<std::ptrdiff_t>(same))}};
  const bool isSame = begin == data.size() && data.size() == former.size();
  former = std::move(data);
  return {{"resultId", std::to_string(++document.tokensId)},
          {"edits", isSame ? Json::array() : Json::array({edit})}};
}

Json CluiServerCore::tokensOfRange(const Json& params) {
  const CluiServedText& text = documentOf(params).text;
  const Json& range = params.at("range");
  const std::size_t end = std::min(positionOf(range.at("end")).line + 1, text.lineCount());
  std::vector<std::uint32_t> data;
  AddTokens(text, std::min(positionOf(range.at("start")).line, end), end, data);
  return {{"data", std::move(data)}};
}
