// The $ forms of a command template.

#ifndef WORKSHOP_CLUITEMPLATE_H_
#define WORKSHOP_CLUITEMPLATE_H_

#include <functional>
#include <string>
#include <string_view>
#include <vector>

struct CluiForm {
  enum class Kind {
    Context,    // $c
    Parser,     // $p
    FromStart,  // $n
    FromEnd,    // $-n and $$
  };
  Kind kind = Kind::Context;
  std::string text;    // as written
  std::string before;  // the plain text before it
  long number = 0;     // of the word, in the last two kinds: the first and the last word are 0
  bool hasId = false;  // it inserts the id of the word
  long argument = -1;  // from 0; -1 when it inserts the name of the word or its id
};

// Reads a template exactly as the parser does when it fills it in.
class CluiTemplate {
 public:
  explicit CluiTemplate(std::string_view code);

  const std::vector<CluiForm>& forms() const { return forms_; }
  // The template with the texts for its forms.
  std::string filled(const std::function<std::string(const CluiForm&)>& textFor) const;

 private:
  std::vector<CluiForm> forms_;
  std::string rest_;  // after the last form

  static std::size_t ReadForm(std::string_view code, std::size_t at, CluiForm& form);
};

#endif  // WORKSHOP_CLUITEMPLATE_H_
