// The checks of CluiLint. Each looks for one kind of fault, or for a few that are found together.

#ifndef WORKSHOP_CLUILINTCHECKS_H_
#define WORKSHOP_CLUILINTCHECKS_H_

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "lex/YcluiLex.h"
#include "workshop/CluiLint.h"
#include "workshop/CluiSyntaxModel.h"
#include "workshop/CluiSyntaxPaths.h"

// A language and what the checks need to know of it.
class CluiLintedLanguage {
 public:
  CluiLintedLanguage(const CluiGrammar& declared, const CluiGrammarRecorder& recorded,
                     YcluiLex& reader);

  const CluiGrammar& grammar;
  const CluiGrammarRecorder& recorder;
  YcluiLex& lexer;
  CluiSyntaxModel model;
  CluiSyntaxPaths paths;

  // The words of that id, with all their names.
  const std::vector<const CluiWord*>& wordsOf(std::uint32_t id) const;
  // The name of the first of them in double quotes, or the id as a text.
  std::string nameOf(std::uint32_t id) const;
  std::string nameOfNode(int node) const { return nameOf(nodeAt(node).tokenId); }
  const CluiModelNode& nodeAt(int node) const {
    return model.nodes()[static_cast<std::size_t>(node)];
  }
  bool worksAnywhere(std::uint32_t id) const;

  void add(const CluiScriptPlace& place, std::string_view kind, std::string subject,
           std::string text);
  std::vector<CluiFinding>& findings() { return findings_; }

 private:
  std::map<std::uint32_t, std::vector<const CluiWord*>> words_;
  std::vector<CluiFinding> findings_;
};

// In double quotes, cut to 60 bytes or so.
std::string CluiInQuotes(std::string_view text);
// " at FILE:LINE:COLUMN"
std::string CluiAtPlace(const CluiScriptPlace& place);

using CluiCheck = void (*)(CluiLintedLanguage& language);

// Words.
void CluiCheckTypes(CluiLintedLanguage& language);
void CluiCheckRepeatedWords(CluiLintedLanguage& language);
void CluiCheckHiddenWords(CluiLintedLanguage& language);
void CluiCheckRecordings(CluiLintedLanguage& language);
void CluiCheckUnusedWords(CluiLintedLanguage& language);

// Syntax. The first check reports when the others cannot examine the syntax, or not all of it.
void CluiCheckSize(CluiLintedLanguage& language);
void CluiCheckSharedEnds(CluiLintedLanguage& language);
void CluiCheckUnreached(CluiLintedLanguage& language);
void CluiCheckEndless(CluiLintedLanguage& language);
void CluiCheckLostCode(CluiLintedLanguage& language);
void CluiCheckIdlePriorities(CluiLintedLanguage& language);
void CluiCheckExclusivePriorities(CluiLintedLanguage& language);

// Code.
void CluiCheckTemplates(CluiLintedLanguage& language);
void CluiCheckKeyFormats(CluiLintedLanguage& language);
void CluiCheckScheme(CluiLintedLanguage& language);

#endif  // WORKSHOP_CLUILINTCHECKS_H_
