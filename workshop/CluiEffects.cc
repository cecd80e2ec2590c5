#include "workshop/CluiEffects.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

// A datum: a list, or an atom, whose text is that of the script. A string keeps its first quote.
struct CluiEffects::Form {
  bool isList = false;
  bool isQuoted = false;  // data, in which names are just symbols
  std::string text;
  std::vector<Form> parts;

  bool isString() const { return text.starts_with('"'); }
  std::string_view head() const {
    return isList && !parts.empty() ? std::string_view(parts.front().text) : std::string_view();
  }
  bool begins(std::string_view prefix) const { return head().starts_with(prefix); }
};

// The names in a form that mean what the script defines, and not a parameter or a local variable.
class CluiEffects::FreeNames {
 public:
  explicit FreeNames(Names& names) : names_(names) {}

  void add(const Form& form) {
    if (!form.isList) return addAtom(form);
    if (form.head() == "quote") return;
    const std::size_t outer = bound_.size();
    std::size_t body = 0;
    if (form.parts.size() > 1 && (form.begins("lambda") || form.begins("define"))) {
      bind(form.parts[1]);
      body = 2;
    } else if (form.parts.size() > 2 && (form.begins("let") || form.head() == "do")) {
      body = addBindings(form);
    }
    for (; body < form.parts.size(); ++body) add(form.parts[body]);
    bound_.resize(outer);
  }

  // Those that are not just called: of values, and all within procedures.
  void addHeld(const Form& form) {
    if (!form.isList || form.begins("lambda")) return add(form);
    for (std::size_t i = 0; i < form.parts.size(); ++i) {
      if (form.parts[i].isList || i > 0) addHeld(form.parts[i]);
    }
  }

 private:
  Names& names_;
  std::vector<std::string_view> bound_;

  void addAtom(const Form& atom) {
    const bool isBound = std::find(bound_.begin(), bound_.end(), atom.text) != bound_.end();
    if (!atom.isString() && !isBound) names_.insert(atom.text);
  }

  // Parameters: all atoms of the list.
  void bind(const Form& form) {
    if (!form.isList) bound_.push_back(form.text);
    for (const Form& part : form.parts) bind(part);
  }

  // Of `let` and its kin, with a name or without. Returns where the body begins.
  std::size_t addBindings(const Form& form) {
    const std::size_t at = form.parts[1].isList ? 1 : 2;
    for (const Form& binding : form.parts[at].parts) {
      for (std::size_t i = 1; i < binding.parts.size(); ++i) add(binding.parts[i]);
    }
    if (at == 2) bind(form.parts[1]);
    for (const Form& binding : form.parts[at].parts) {
      if (!binding.parts.empty()) bind(binding.parts.front());
    }
    return at + 1;
  }
};

namespace {

constexpr int DeepestForm = 500;

// Divides Scheme text into parentheses, strings and other atoms.
class Atoms {
 public:
  explicit Atoms(std::string_view text) : text_(text) {}

  // The next one, empty at the end. A string is without its closing quote, and not unescaped.
  std::string_view next() {
    skip();
    if (at_ >= text_.size()) return {};
    const std::size_t begin = at_;
    if (std::strchr("()[]'", text_[at_]) != nullptr) return text_.substr(at_++, 1);
    if (text_[at_] == '"') return string();
    if (text_.substr(at_, 2) == "#\\") at_ += 3;
    while (at_ < text_.size() && std::strchr(" \t\r\n\f()[]\";'`,", text_[at_]) == nullptr) ++at_;
    return text_.substr(begin, at_ - begin);
  }

 private:
  std::string_view text_;
  std::size_t at_ = 0;

  // Skips blanks, comments and the marks of quasiquotation.
  void skip() {
    while (at_ < text_.size()) {
      if (text_[at_] == ';') {
        at_ = std::min(text_.find('\n', at_), text_.size());
      } else if (text_.substr(at_, 2) == "#|") {
        at_ = std::min(text_.find("|#", at_), text_.size() - 2) + 2;
      } else if (text_.substr(at_, 2) == "#(" || text_.substr(at_, 2) == "#;") {
        at_ += text_[at_ + 1] == ';' ? 2 : 1;
        if (text_[at_ - 1] != ';') return;
      } else if (std::strchr(" \t\r\n\f`,@", text_[at_]) != nullptr && text_[at_] != '\0') {
        ++at_;
      } else {
        return;
      }
    }
  }

  std::string_view string() {
    const std::size_t begin = at_++;
    while (at_ < text_.size() && text_[at_] != '"') at_ += text_[at_] == '\\' ? 2 : 1;
    const std::size_t end = std::min(at_, text_.size());
    at_ = end + 1;
    return text_.substr(begin, end - begin);
  }
};

bool Opens(std::string_view atom) {
  return atom == "(" || atom == "[";
}

bool Closes(std::string_view atom) {
  return atom == ")" || atom == "]";
}

struct Row {
  std::string_view name;
  unsigned effects;
};

// Names that do something to a parser, and those with which code can reach what it does not name.
constexpr Row Primitives[] = {
    {"clui-token", CluiChangesWords},
    {"clui-set-alias", CluiChangesWords},
    {"clui-unset-alias", CluiChangesWords},
    {"clui-set-variable", CluiChangesVariables},
    {"clui-set-syntax", CluiChangesSyntax},
    {"clui-indefinite-syntax", CluiChangesSyntax},
    {"clui-push", CluiChangesSyntax},
    {"clui-pop", CluiChangesSyntax},
    {"clui-reset", CluiResets},
    {"clui-delete-last", CluiDeletesLast},
    {"clui-eval", CluiChangesAnything},
    {"clui-playback-from-file", CluiChangesAnything},
    {"clui-parser-delete", CluiChangesAnything},
    {"eval", CluiChangesAnything},
    {"eval-string", CluiChangesAnything},
    {"primitive-eval", CluiChangesAnything},
    {"local-eval", CluiChangesAnything},
    {"load", CluiChangesAnything},
    {"primitive-load", CluiChangesAnything},
    {"load-from-path", CluiChangesAnything},
    {"primitive-load-path", CluiChangesAnything},
    {"include", CluiChangesAnything},
    {"include-from-path", CluiChangesAnything},
    {"module-ref", CluiChangesAnything},
    {"module-variable", CluiChangesAnything},
    {"module-set!", CluiChangesAnything},
    {"module-define!", CluiChangesAnything},
    {"variable-ref", CluiChangesAnything},
    {"resolve-module", CluiChangesAnything},
    {"@@", CluiChangesAnything},
};

// Guile's own modules; they know nothing of parsers.
constexpr std::string_view Modules[] = {"srfi", "ice-9",   "rnrs", "system",   "sxml",
                                        "web",  "texinfo", "oop",  "language", "scheme"};

// These call what they are given, and keep nothing of it.
constexpr std::string_view Callers[] = {"for-each",
                                        "map",
                                        "append-map",
                                        "filter-map",
                                        "filter",
                                        "apply",
                                        "fold",
                                        "fold-right",
                                        "reduce",
                                        "sort",
                                        "vector-for-each",
                                        "hash-for-each",
                                        "call-with-output-string",
                                        "with-output-to-string",
                                        "list",
                                        "cons",
                                        "cons*",
                                        "vector",
                                        "append",
                                        "let",
                                        "let*",
                                        "letrec",
                                        "begin",
                                        "if",
                                        "when",
                                        "unless",
                                        "cond",
                                        "and",
                                        "or",
                                        "catch",
                                        "dynamic-wind",
                                        "find",
                                        "any",
                                        "every"};

constexpr std::string_view Setters[] = {
    "set!",       "hash-set!",  "hashq-set!", "hashv-set!", "hashx-set!", "vector-set!",
    "set-car!",   "set-cdr!",   "append!",    "assq-set!",  "assv-set!",  "assoc-set!",
    "array-set!", "fluid-set!", "add-hook!",  "list-set!",  "slot-set!"};

template <std::size_t Count>
bool IsOneOf(std::string_view name, const std::string_view (&names)[Count]) {
  for (const std::string_view each : names) {
    if (each == name) return true;
  }
  return false;
}

unsigned OfPrimitive(std::string_view name) {
  for (const Row& row : Primitives) {
    if (row.name == name) return row.effects;
  }
  return 0;
}

}  // namespace

void CluiEffects::readScript(const std::string& file) {
  if (!files_.insert(file).second) return;
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  if (!stream) {
    always_ = CluiChangesAnything;
    return;
  }
  readText(text.str(), std::filesystem::path(file).parent_path().string());
}

void CluiEffects::readText(std::string_view text, const std::string& folder) {
  std::vector<Form> open(1);
  bool isQuoted = false;  // the next datum is
  Atoms atoms(text);
  for (std::string_view atom = atoms.next(); !atom.empty(); atom = atoms.next()) {
    if (atom == "'") {
      isQuoted = true;
      continue;
    }
    if (Opens(atom) && open.size() < DeepestForm) {
      open.emplace_back().isList = true;
      open.back().isQuoted = isQuoted;
    } else if (Closes(atom) && open.size() > 1) {
      Form done = std::move(open.back());
      open.pop_back();
      if (!done.isQuoted) open.back().parts.push_back(std::move(done));
    } else if (atom.starts_with('"')) {
      learnTemplate(atom.substr(1));
      open.back().parts.emplace_back().text = atom;
    } else if (!Opens(atom) && !isQuoted) {
      open.back().parts.emplace_back().text = atom;
    }
    isQuoted = false;
  }
  for (const Form& form : open.front().parts) learn(form, folder);
  known_.clear();
  for (const std::string& name : stored_) always_ |= ofName(name);
}

// Any string may be, or be a part of, the code of a command.
void CluiEffects::learnTemplate(std::string_view text) {
  Atoms atoms(text);
  for (std::string_view atom = atoms.next(); !atom.empty(); atom = atoms.next()) {
    if (!atom.starts_with('"') && !Opens(atom) && !Closes(atom)) inTemplates_.emplace(atom);
  }
}

unsigned CluiEffects::ofAny() {
  unsigned effects = always_;
  for (const std::string& name : inTemplates_) effects |= ofName(name);
  return effects;
}

// A form at the outermost level of a script.
void CluiEffects::learn(const Form& form, const std::string& folder) {
  if (form.head() == "load") return load(form, folder);
  if (form.head() == "use-modules") {
    for (std::size_t i = 1; i < form.parts.size(); ++i) {
      const Form& module = form.parts[i];
      const bool isNested = !module.parts.empty() && module.parts.front().isList;
      if (!IsOneOf(isNested ? module.parts.front().head() : module.head(), Modules)) {
        always_ = CluiChangesAnything;
      }
    }
    return;
  }
  learnSettings(form);
  if (form.begins("define") && form.parts.size() > 1) {
    // The name, those of several values, or the name and the parameters of a procedure.
    const Form* what = &form.parts[1];
    while (what->isList && !what->parts.empty() && what->parts.front().isList) {
      what = &what->parts.front();
    }
    if (!what->isList && (form.head() == "define" || form.head() == "define-public")) {
      return learnValue(form);
    }
    const std::string name = what->isList ? std::string(what->head()) : what->text;
    FreeNames(definitions_[name]).add(form);
    if (form.head() != "define-values" && form.head() != "define-record-type") return;
    Names all;
    for (const Form& part : form.parts) FreeNames(all).add(part);
    definitions_[name] = all;
    for (const std::string& each : all) definitions_[each].insert(name);
    return;
  }
  learnPassedOn(form);
}

// The value is computed while the script is loaded; what matters is which procedures it holds.
void CluiEffects::learnValue(const Form& form) {
  Names& names = definitions_[form.parts[1].text];
  for (std::size_t i = 2; i < form.parts.size(); ++i) {
    FreeNames(names).addHeld(form.parts[i]);
    learnPassedOn(form.parts[i]);
  }
}

// A variable may hold what it is set to, and a structure what is put into it.
void CluiEffects::learnSettings(const Form& form) {
  if (!form.isList) return;
  if (IsOneOf(form.head(), Setters) && form.parts.size() > 2 && !form.parts[1].isList) {
    for (std::size_t i = 2; i < form.parts.size(); ++i) {
      FreeNames(definitions_[form.parts[1].text]).addHeld(form.parts[i]);
    }
  } else if (form.begins("set-") && form.head().ends_with("!")) {
    FreeNames(definitions_[std::string(form.head())]).addHeld(form);
  }
  for (const Form& part : form.parts) learnSettings(part);
}

// A procedure that is given to another one while the script is loaded may be kept and called by any
// command.
void CluiEffects::learnPassedOn(const Form& form) {
  if (!form.isList) return;
  // What a terminal calls is not called by the commands of a file.
  const bool isKept = !IsOneOf(form.head(), Callers) && !IsOneOf(form.head(), Setters) &&
                      !form.begins("clui-") && !form.begins("terminal-") && form.head() != "lambda";
  for (std::size_t i = 1; i < form.parts.size(); ++i) {
    const Form& part = form.parts[i];
    const bool isName = !part.isList && !part.isString();
    if (isKept && (isName || part.begins("lambda"))) FreeNames(stored_).add(part);
    learnPassedOn(part);
  }
}

void CluiEffects::load(const Form& form, const std::string& folder) {
  if (form.parts.size() != 2 || !form.parts[1].isString()) {
    always_ = CluiChangesAnything;
    return;
  }
  const std::filesystem::path name = form.parts[1].text.substr(1);
  readScript(name.is_absolute() ? name.string() : (std::filesystem::path(folder) / name).string());
}

unsigned CluiEffects::of(std::string_view code) {
  unsigned effects = always_;
  Atoms atoms(code);
  std::string name;
  bool isQuoted = false;
  bool isSetting = false;
  for (std::string_view atom = atoms.next(); !atom.empty(); atom = atoms.next()) {
    const bool isSymbol = std::exchange(isQuoted, atom == "'");
    if (isSymbol || isQuoted || atom.front() == '"' || Opens(atom) || Closes(atom)) continue;
    name.assign(atom);
    effects |= ofName(name);
    isSetting = isSetting || atom == "set!" || atom == "define";
  }
  // What a command sets, a later one may call.
  if (isSetting) always_ |= effects;
  return effects;
}

unsigned CluiEffects::ofName(const std::string& name) {
  const auto known = known_.find(name);
  if (known != known_.end()) return known->second;
  unsigned effects = 0;
  Names seen = {name};
  std::vector<std::string> open = {name};
  while (!open.empty()) {
    const std::string next = std::move(open.back());
    open.pop_back();
    const auto found = definitions_.find(next);
    effects |= OfPrimitive(next);
    if (found == definitions_.end()) continue;
    for (const std::string& used : found->second) {
      if (seen.insert(used).second) open.push_back(used);
    }
  }
  // Numbers in the code of commands are no names to remember.
  if (definitions_.contains(name) || OfPrimitive(name) != 0) known_[name] = effects;
  return effects;
}
