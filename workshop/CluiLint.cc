#include "workshop/CluiLint.h"

#include <algorithm>
#include <set>
#include <utility>

#include "foundation/YCharacters.h"
#include "parser/YcluiParser.h"
#include "workshop/CluiLintChecks.h"

namespace {

constexpr std::size_t LongestQuoted = 60;

constexpr CluiCheck WordChecks[] = {CluiCheckTypes, CluiCheckRepeatedWords, CluiCheckHiddenWords,
                                    CluiCheckRecordings};

// The code is read first, since that shows what it may change.
constexpr CluiCheck SyntaxChecks[] = {
    CluiCheckScheme,    CluiCheckUnusedWords, CluiCheckSharedEnds,     CluiCheckUnreached,
    CluiCheckEndless,   CluiCheckLostCode,    CluiCheckIdlePriorities, CluiCheckExclusivePriorities,
    CluiCheckTemplates, CluiCheckKeyFormats};

std::set<std::uint32_t> AnywhereWords(const CluiGrammar& grammar) {
  std::set<std::uint32_t> ids;
  for (const CluiAnywhereWord& word : grammar.anywhere) ids.insert(word.tokenId);
  return ids;
}

}  // namespace

CluiLintedLanguage::CluiLintedLanguage(const CluiGrammar& declared,
                                       const CluiGrammarRecorder& recorded, YcluiLex& reader)
    : grammar(declared),
      recorder(recorded),
      lexer(reader),
      model(declared.syntax),
      paths(model, AnywhereWords(declared)) {
  for (const CluiWord& word : grammar.words) words_[word.id].push_back(&word);
}

const std::vector<const CluiWord*>& CluiLintedLanguage::wordsOf(std::uint32_t id) const {
  static const std::vector<const CluiWord*> none;
  const auto found = words_.find(id);
  return found == words_.end() ? none : found->second;
}

std::string CluiLintedLanguage::nameOf(std::uint32_t id) const {
  const std::vector<const CluiWord*>& words = wordsOf(id);
  return words.empty() ? std::to_string(id) : CluiInQuotes(words.front()->name);
}

bool CluiLintedLanguage::worksAnywhere(std::uint32_t id) const {
  return std::any_of(grammar.anywhere.begin(), grammar.anywhere.end(),
                     [&](const CluiAnywhereWord& word) { return word.tokenId == id; });
}

void CluiLintedLanguage::add(const CluiScriptPlace& place, std::string_view kind,
                             std::string subject, std::string text) {
  findings_.push_back({place, std::string(kind), std::move(subject), std::move(text)});
}

std::string CluiInQuotes(std::string_view text) {
  const std::size_t room = YCharacters::CutBetween(text, LongestQuoted);
  const std::string quote = text.find('"') == std::string_view::npos ? "\"" : "'";
  std::string shown(text.substr(0, room));
  std::replace_if(
      shown.begin(), shown.end(), [](char c) { return c == '\n' || c == '\t'; }, ' ');
  return quote + shown + (room < text.size() ? "..." : "") + quote;
}

std::string CluiAtPlace(const CluiScriptPlace& place) {
  if (place.line == 0) return "";
  return " at " + YCharacters::BytesFromUtf8(place.file) + ":" + std::to_string(place.line) + ":" +
         std::to_string(place.column);
}

std::vector<CluiFinding> CluiLint(const CluiGrammarRecorder& recorder, bool isLoaded) {
  std::vector<CluiFinding> findings;
  YcluiParser* parser = nullptr;
  for (int i = 0; (parser = YcluiParser::Live(i)) != nullptr; ++i) {
    const CluiGrammar* const grammar = recorder.grammarOf(*parser);
    if (grammar == nullptr || parser->lex() == nullptr) continue;
    CluiLintedLanguage language(*grammar, recorder, *parser->lex());
    for (const CluiCheck check : WordChecks) check(language);
    if (isLoaded) CluiCheckSize(language);
    if (isLoaded && language.model.isComplete()) {
      for (const CluiCheck check : SyntaxChecks) check(language);
    }
    findings.insert(findings.end(), language.findings().begin(), language.findings().end());
  }
  std::sort(findings.begin(), findings.end());
  findings.erase(std::unique(findings.begin(), findings.end()), findings.end());
  return findings;
}
