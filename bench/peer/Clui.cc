// yqrtClui as used by a host that runs its commands itself: the command's template is the name of
// the action, and the action gets its values from the token.

#include "bench/peer/Implementation.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiPreview.h"

namespace {

class SwitchParser : public YcluiParser {
 public:
  Outcome outcome;

  explicit SwitchParser(const Language& language) {
    const YcluiValueType values[] = {YcluiValueInteger, YcluiValueString};
    const std::uint32_t on = lex()->addKeyword("on:", 2, values, 0);
    const std::uint32_t off = lex()->addKeyword("off:", 2, values, 0);
    auto* commands = new YcluiSyntaxGraph;
    for (std::size_t i = 0; i < language.words.size(); ++i) {
      const std::uint32_t id =
          lex()->addKeyword(language.words[i].c_str(), language.shortForms[i].c_str(), 0);
      auto* command = new YcluiSyntaxGraph;
      command->insertOr(new YcluiSyntaxNode(on, "+"));
      command->insertOr(new YcluiSyntaxNode(off, "-"));
      command->insertAnd(new YcluiSyntaxNode(id));
      commands->insertOr(command);
      delete command;
    }
    setSyntaxGraph(commands);
  }

 private:
  YWord evaluate(const char* command) override {
    const std::int32_t number = (*currentToken())[1]->GetLong();
    outcome.sum += *command == '+' ? number : -number;
    return 1;
  }
};

class Clui : public Implementation {
 public:
  explicit Clui(const Language& language) : parser_(language) {}

  std::string typed(const Line& line) const override {
    return line.word + (line.isOn ? " on:" : " off:") + std::to_string(line.number) + ",\"abc\"\n";
  }

  Outcome read(const TypedLines& lines) override {
    parser_.outcome = Outcome();
    lines.forEach([this](const char* line, std::size_t) {
      if (parser_.interpret(line) == 0) ++parser_.outcome.refused;
    });
    return parser_.outcome;
  }

  long preview(const TypedLines& lines) override {
    long complete = 0;
    lines.forEach([this, &complete](const char* line, std::size_t) {
      preview_.read(line);
      if (preview_.firstRefused() < 0 && !preview_.leavesCommand()) ++complete;
    });
    return complete;
  }

  long complete(const char* prefix) override {
    YString_Array words;
    return parser_.completionList(prefix, words);
  }

  void completeAfter(const std::string& word) override {
    parser_.interpret((word + " ").c_str());
    complete("");
    parser_.reset();
  }

 protected:
  SwitchParser parser_;

 private:
  YcluiPreview preview_{parser_};
};

// Each reading writes a new log into the working folder.
class CluiWithLog : public Clui {
 public:
  using Clui::Clui;

  Outcome read(const TypedLines& lines) override {
    if (parser_.startLogging("clui.log", 0) == 0) return {};
    const Outcome outcome = Clui::read(lines);
    parser_.shutLogging();
    return outcome;
  }
};

}  // namespace

std::unique_ptr<Implementation> MakeClui(const Language& language) {
  return std::make_unique<Clui>(language);
}

std::unique_ptr<Implementation> MakeCluiWithLog(const Language& language) {
  return std::make_unique<CluiWithLog>(language);
}
