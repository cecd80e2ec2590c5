// Checks of the code of words and keys.

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "lex/YcluiToken.h"
#include "workshop/CluiCodeReader.h"
#include "workshop/CluiLintChecks.h"
#include "workshop/CluiTemplate.h"
#include "workshop/CluiWordPositions.h"

namespace {

// The number of different texts that are read for one template.
constexpr std::size_t MostVariants = 8;

using Words = std::vector<const CluiWord*>;

// A template, and what it belongs to.
struct Code {
  std::string text;
  std::string subject;
  CluiScriptPlace place;
  int node = -1;              // the token node; -1 for other code
  std::uint32_t tokenId = 0;  // the word that works anywhere; 0 for other code
};

std::vector<Code> CodesOf(const CluiLintedLanguage& language) {
  std::vector<Code> codes;
  for (std::size_t i = 0; i < language.model.nodes().size(); ++i) {
    const CluiModelNode& node = language.model.nodes()[i];
    if (node.code == nullptr) continue;
    codes.push_back(
        {node.code->code, language.nameOf(node.tokenId), node.call->place, static_cast<int>(i), 0});
  }
  for (const CluiAnywhereWord& word : language.grammar.anywhere) {
    codes.push_back({word.code, language.nameOf(word.tokenId), word.place, -1, word.tokenId});
  }
  return codes;
}

bool SelectsWord(const CluiForm& form) {
  return form.kind == CluiForm::Kind::FromStart || form.kind == CluiForm::Kind::FromEnd;
}

// The words that the forms of templates can mean.
class FormWords {
 public:
  explicit FormWords(CluiLintedLanguage& language)
      : language_(language), positions_(language.model, language.paths) {}

  // Valid until the next call. Null when nothing can be said: there are too many paths, or the form
  // means another word than the last one for a word that works anywhere.
  const Words* find(const Code& code, const CluiForm& form) {
    if (code.node < 0) {
      const bool isKnown =
          code.tokenId != 0 && form.kind == CluiForm::Kind::FromEnd && form.number == 0;
      return isKnown ? &language_.wordsOf(code.tokenId) : nullptr;
    }
    if (!language_.paths.isComplete() || !language_.paths.isReached(code.node)) return nullptr;
    if (form.kind == CluiForm::Kind::FromEnd && form.number == 0) {
      return &language_.wordsOf(language_.nodeAt(code.node).tokenId);
    }
    const Known* const known = findBefore(code.node, form);
    if (known == nullptr || !known->isSure) return nullptr;
    if (known->nodes.contains(code.node) || !positions_.canBeAt(code.node, form)) {
      return &known->words;
    }
    own_ = known->words;
    const Words& last = language_.wordsOf(language_.nodeAt(code.node).tokenId);
    own_.insert(own_.end(), last.begin(), last.end());
    return &own_;
  }

 private:
  struct Known {
    std::set<int> nodes;
    Words words;  // all names of the words that the nodes accept
    bool isSure = true;
  };

  CluiLintedLanguage& language_;
  CluiWordPositions positions_;
  std::map<std::tuple<int, CluiForm::Kind, long>, Known> known_;
  Words own_;

  const Known* findBefore(int node, const CluiForm& form) {
    const auto key = std::make_tuple(positions_.keyOf(node), form.kind, form.number);
    const auto [entry, isNew] = known_.try_emplace(key);
    Known& known = entry->second;
    if (!isNew) return &known;
    std::optional<std::set<int>> nodes = positions_.nodesFor(node, form);
    known.isSure = nodes.has_value();
    if (nodes) known.nodes = std::move(*nodes);
    std::set<std::uint32_t> ids;
    for (const int each : known.nodes) ids.insert(language_.nodeAt(each).tokenId);
    for (const std::uint32_t id : ids) {
      const Words& named = language_.wordsOf(id);
      if (named.empty()) known.isSure = false;
      known.words.insert(known.words.end(), named.begin(), named.end());
    }
    return &known;
  }
};

std::string TokenArgumentFor(const CluiForm& form) {
  const long word = form.kind == CluiForm::Kind::FromStart ? form.number : -form.number - 1;
  return "(token-argument $p " + std::to_string(word) + " " + std::to_string(form.argument) + ")";
}

// What a user can type as an argument beyond the declared ones is a text.
std::string TextInCode(const CluiForm& form, const CluiWord& word) {
  const auto index = static_cast<std::size_t>(form.argument);
  const std::string which = index < word.types.size() ? "argument " + std::to_string(index + 1)
                                                      : "an argument that is added to those";
  return form.text + " inserts a text that a user typed into code, " + which + " of " +
         CluiInQuotes(word.name) + "; write " + TokenArgumentFor(form) + " without quotes instead";
}

void CheckForm(CluiLintedLanguage& language, const Code& code, const CluiForm& form,
               const Words& words) {
  if (words.empty()) {
    if (language.recorder.mayPutDummies()) return;
    return language.add(
        code.place, "missing-word", code.subject,
        "no command has a word for " + form.text + " here; count the words of the command from 0");
  }
  if (form.argument < 0) return;
  const auto index = static_cast<std::size_t>(form.argument);
  const CluiWord* unsafe = nullptr;
  bool isDeclared = false;
  for (const CluiWord* word : words) {
    const bool declares = index < word->types.size();
    const bool isText = declares ? word->types[index] == YcluiValueString : !word->types.empty();
    if (isText && unsafe == nullptr) unsafe = word;
    isDeclared = isDeclared || declares;
  }
  if (!isDeclared) {
    const std::string reason = unsafe == nullptr
                                   ? " has no arguments"
                                   : " declares only " + std::to_string(unsafe->types.size()) +
                                         ", and what a user adds is a text";
    language.add(code.place, "missing-argument", code.subject,
                 form.text + " is no argument, since " +
                     CluiInQuotes((unsafe == nullptr ? words.front() : unsafe)->name) + reason +
                     "; count the arguments from 0, or declare it");
  } else if (unsafe != nullptr) {
    language.add(code.place, "text-in-code", code.subject, TextInCode(form, *unsafe));
  }
}

// What a form inserts in one of several variants. A number replaces text of users, since code that
// contains such text has its own finding.
std::string StandIn(const CluiForm& form, const Words& words, std::size_t variant) {
  if (!SelectsWord(form) || form.hasId || words.empty()) return "1";
  const CluiWord& word = *words[variant % words.size()];
  if (form.argument < 0) return word.name;
  const auto index = static_cast<std::size_t>(form.argument);
  const bool isPoint = index < word.types.size() && word.types[index] == YcluiValuePoint;
  return isPoint ? "1 1" : "1";
}

// The format with a word in place of each %s.
std::string FilledFormat(const std::string& format) {
  std::string text;
  for (std::size_t i = 0; i < format.size(); ++i) {
    const bool isForm = format[i] == '%' && i + 1 < format.size();
    if (!isForm) {
      text += format[i];
    } else {
      text += format[++i] == 's' ? '1' : format[i];
    }
  }
  return text;
}

bool InsertsWord(const std::string& format) {
  for (std::size_t i = 0; i + 1 < format.size(); ++i) {
    if (format[i] == '%' && format[++i] == 's') return true;
  }
  return false;
}

// Texts for Scheme, each once, and the codes that they were made of.
class CodeTexts {
 public:
  void add(const std::string& text, const Code& code) {
    const auto [entry, isNew] = numbers_.emplace(text, texts_.size());
    if (isNew) {
      texts_.push_back(text);
      owners_.emplace_back();
    }
    owners_[entry->second].push_back(code);
  }
  const std::vector<std::string>& texts() const { return texts_; }
  const std::vector<Code>& ownersOf(std::size_t text) const { return owners_[text]; }

 private:
  std::map<std::string, std::size_t> numbers_;
  std::vector<std::string> texts_;
  std::vector<std::vector<Code>> owners_;
};

void AddVariants(const Code& code, FormWords& formWords, CodeTexts& texts) {
  const CluiTemplate parsed(code.text);
  std::map<const CluiForm*, Words> words;  // the first ones
  std::size_t variants = 1;
  for (const CluiForm& form : parsed.forms()) {
    const Words* const found = SelectsWord(form) ? formWords.find(code, form) : nullptr;
    if (found == nullptr) continue;
    const std::size_t count = std::min(found->size(), MostVariants);
    words[&form].assign(found->data(), found->data() + count);
    variants = std::max(variants, count);
  }
  for (std::size_t i = 0; i < variants; ++i) {
    texts.add(parsed.filled([&](const CluiForm& form) { return StandIn(form, words[&form], i); }),
              code);
  }
}

}  // namespace

void CluiCheckTemplates(CluiLintedLanguage& language) {
  FormWords formWords(language);
  for (const Code& code : CodesOf(language)) {
    const CluiTemplate parsed(code.text);
    for (const CluiForm& form : parsed.forms()) {
      const Words* const words = SelectsWord(form) ? formWords.find(code, form) : nullptr;
      if (words != nullptr) CheckForm(language, code, form, *words);
    }
  }
}

void CluiCheckKeyFormats(CluiLintedLanguage& language) {
  for (const CluiKeyFormat& format : language.recorder.keyFormats()) {
    if (!InsertsWord(format.text)) continue;
    language.add(format.place, "text-in-code", CluiInQuotes(format.text),
                 "%s inserts the word that a user is typing into code; call "
                 "(clui-refer-current-word B) instead");
  }
}

void CluiCheckScheme(CluiLintedLanguage& language) {
  FormWords formWords(language);
  CodeTexts texts;
  for (const Code& code : CodesOf(language)) AddVariants(code, formWords, texts);
  for (const CluiKeyFormat& format : language.recorder.keyFormats()) {
    texts.add(FilledFormat(format.text), {format.text, CluiInQuotes(format.text), format.place});
  }
  for (const CluiCodeProblem& problem : CluiReadCode(texts.texts())) {
    for (const Code& code : texts.ownersOf(problem.code)) {
      if (problem.kind == CluiCodeProblem::Kind::Unbound) {
        language.add(code.place, "unbound-name", code.subject,
                     "its code uses " + CluiInQuotes(problem.text) +
                         ", which is bound nowhere; define it, or correct the name");
      } else {
        language.add(
            code.place, "unreadable-code", code.subject,
            "Scheme refuses its code: " + problem.text + "; correct " + CluiInQuotes(code.text));
      }
    }
  }
}
