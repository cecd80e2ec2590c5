// The words of a language. Internal to the language.

#ifndef LANGUAGE_LANGUAGEWORDS_H_
#define LANGUAGE_LANGUAGEWORDS_H_

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "language/Syntax.h"

class YcluiParser;

namespace yqrtClui {

// Declares words in a parser, with their help.
class LanguageWords {
 public:
  explicit LanguageWords(YcluiParser& parser) : parser_(parser) {}
  LanguageWords(const LanguageWords&) = delete;
  LanguageWords& operator=(const LanguageWords&) = delete;

  // Declares the words of a fragment that are not declared yet. Returns what is wrong with the
  // first one that cannot be declared, or the empty text.
  std::string declare(const Syntax& syntax);
  // Deletes a word from the dictionary; its id stays known. False when it is not declared.
  bool remove(const WordDeclaration& word);

  // The id of a declared word; 0 for any other.
  std::uint32_t idOf(const WordDeclaration& word) const;
  // The declaration of the word with that id, or null.
  const WordDeclaration* find(std::uint32_t id) const {
    const std::uint32_t index = id - firstId_;
    return index < declared_.size() ? declared_[index].word.get() : nullptr;
  }
  // The number of arguments of the word with that id, if every value of their types is accepted.
  // -1 when there are ranges or values to check, or no such word.
  int unrestrictedArguments(std::uint32_t id) const {
    const std::uint32_t index = id - firstId_;
    return index < declared_.size() ? declared_[index].unrestricted : -1;
  }

 private:
  struct Declared {
    std::shared_ptr<const WordDeclaration> word;  // null where there is none
    int unrestricted = -1;                        // see unrestrictedArguments
  };

  YcluiParser& parser_;
  std::uint32_t firstId_ = 0;
  std::vector<Declared> declared_;                      // by id
  std::unordered_map<std::string, std::uint32_t> ids_;  // by name; of removed words, too

  std::string declareWord(const std::shared_ptr<const WordDeclaration>& word);
  std::string faultOfDelimiters(const WordDeclaration& word) const;
  std::string compare(const WordDeclaration& word, std::uint32_t id, const char* knownName);
  std::uint32_t addToDictionary(const WordDeclaration& word, std::uint32_t id);
  void keep(const std::shared_ptr<const WordDeclaration>& word, std::uint32_t id);
  void setHelp(const WordDeclaration& word, std::uint32_t id);
};

}  // namespace yqrtClui

#endif  // LANGUAGE_LANGUAGEWORDS_H_
