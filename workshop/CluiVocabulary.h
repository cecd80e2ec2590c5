// The words, aliases and variables of a language as texts for pictures and pages.

#ifndef WORKSHOP_CLUIVOCABULARY_H_
#define WORKSHOP_CLUIVOCABULARY_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class YcluiKeyword;
class YcluiParser;

// An argument of a word. Texts here are in UTF-8, and empty where there is nothing to say.
struct CluiWordArgument {
  std::string name;  // from its help; otherwise its type
  std::string type;  // "string", "number", "integer" or "point"
  std::string text;
  std::string range;                // "0 to 20"
  std::vector<std::string> values;  // what is offered for it at present
  bool isFile = false;
  bool isOptional = false;  // not declared, but it has help
};

// A name of a word.
struct CluiSpelling {
  std::string name;
  std::size_t shortest = 0;  // how many bytes of it are accepted as the word
};

// The words of one id.
struct CluiWordText {
  std::vector<CluiSpelling> spellings;  // at least one; the first is shown
  std::vector<CluiWordArgument> arguments;
  std::string text;
  bool isAnywhere = false;  // accepted at any point of a command

  const std::string& name() const { return spellings.front().name; }
};

struct CluiNamedText {
  std::string name;
  std::string text;
};

class CluiVocabulary {
 public:
  // Reads all texts, with values that a procedure of the language gives at this time.
  explicit CluiVocabulary(const YcluiParser& parser);
  CluiVocabulary(const CluiVocabulary&) = delete;
  CluiVocabulary& operator=(const CluiVocabulary&) = delete;

  // The words of an id; for an id without a word a text that says so. Valid as long as this object.
  const CluiWordText& word(std::uint32_t id) const;
  // The id of the word that is found by a name, with or without its ":", or by a short form; 0 when
  // there is none.
  std::uint32_t find(std::string_view name) const;
  // Marks the words of an id as accepted at any point of a command.
  void setAnywhere(std::uint32_t id);

  // In the order in which they were declared.
  const std::vector<CluiNamedText>& aliases() const { return aliases_; }
  const std::vector<CluiNamedText>& variables() const { return variables_; }

 private:
  const YcluiParser& parser_;
  mutable std::unordered_map<std::uint32_t, CluiWordText> words_;
  std::vector<CluiNamedText> aliases_;
  std::vector<CluiNamedText> variables_;

  void addWord(const YcluiKeyword& keyword);
  void addArguments(const YcluiKeyword& keyword, CluiWordText& word);
  CluiWordArgument argumentOf(std::uint32_t id, int index) const;
  void addVariables();
};

#endif  // WORKSHOP_CLUIVOCABULARY_H_
