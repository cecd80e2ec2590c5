// The same language declared in C++: each command is a function with the values as parameters.

#include "bench/peer/Implementation.h"
#include "parser/YcluiParser.h"
#include "yqrtClui/Language.h"

namespace {

class CluiLanguage final : public Implementation {
 public:
  explicit CluiLanguage(const Language& language) {
    using yqrtClui::word;
    const auto number = yqrtClui::integer("NUMBER");
    const auto text = yqrtClui::text("TEXT");
    const auto on = word("on:", number, text);
    const auto off = word("off:", number, text);
    for (std::size_t i = 0; i < language.words.size(); ++i) {
      const auto command = word(language.words[i], language.shortForms[i]);
      language_.command(command >> on,
                        [this](long value, std::string_view) { outcome_.sum += value; });
      language_.command(command >> off,
                        [this](long value, std::string_view) { outcome_.sum -= value; });
    }
  }

  std::string typed(const Line& line) const override {
    return line.word + (line.isOn ? " on:" : " off:") + std::to_string(line.number) + ",\"abc\"\n";
  }

  Outcome read(const TypedLines& lines) override {
    outcome_ = Outcome();
    // By the parser, as the other implementation, since what is compared is a call.
    YcluiParser& parser = language_.parser();
    lines.forEach([this, &parser](const char* line, std::size_t) {
      if (parser.interpret(line) == 0) ++outcome_.refused;
    });
    return outcome_;
  }

 private:
  yqrtClui::Language language_;
  Outcome outcome_;
};

}  // namespace

std::unique_ptr<Implementation> MakeCluiLanguage(const Language& language) {
  return std::make_unique<CluiLanguage>(language);
}
