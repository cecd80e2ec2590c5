#include "tests/parser/CommandLine.h"

#include <sstream>
#include <utility>
#include <vector>

#include "gtest/gtest.h"
#include "tests/support/codes.h"
#include "tests/support/steps.h"
#include "tests/support/words.h"

namespace {

// Removed at the end of the process.
const WorkingFolder Folder;

using Operation = YWord (*)(CommandLine& line, const std::string& given);

const std::map<std::string, Operation> Operations = {
    {"syntax", [](auto& line, auto& syntax) { return line.setSyntax(syntax), 1u; }},
    {"tokens", [](auto& line, auto&) { return line.record("tokens", line.tokens()), 1u; }},
    {"on",
     [](auto& line, auto& given) {
       const std::size_t end = given.find(") ") + 1;
       const std::string steps = given.substr(end + 1);
       line.at[given.substr(0, end)] = [&line, steps] { line.perform(steps, '&'); };
       return 1u;
     }},
};

// An invalid word and a variable may have a token without a word.
const char* WordOf(const YcluiToken& token) {
  return token.string() == nullptr ? "" : token.string();
}

// The text must be unchanged after the steps that it triggers.
void Hear(void* self, const char* kind, const char* text) {
  const std::string before(text);
  static_cast<CommandLine*>(self)->record(kind, before);
  EXPECT_EQ(before, text);
}

}  // namespace

CommandLine::CommandLine(const std::string& words, const std::string& syntax) {
  std::istringstream in(words);
  for (std::string word; in >> word;) {
    if (word.back() == '!') {
      word.pop_back();
      anywhere_.push_back(word);
    }
    Declare(*lex(), word);
  }
  if (!syntax.empty()) setSyntax(syntax);
  setEchoProcedure([](void* self, const char* whole) { Hear(self, "echo", whole); }, this);
  sysSetEchoProcedure([](void* self, const char* whole) { Hear(self, "field", whole); }, this);
  setSynCallback(
      [](void* self, const char* line, const char* whole) {
        const std::string before = std::string(line) + "|" + whole;
        Hear(self, "syn", before.c_str());
        EXPECT_EQ(before, std::string(line) + "|" + whole);
      },
      this);
  setTokCallback(
      [](void* self, YcluiToken& token) {
        const std::string word = WordOf(token);
        Hear(self, "tok", word.c_str());
        if (word == "quiet") token.setEchoString(nullptr);
        return word == "lost" ? YcluiTokenDrop : YcluiTokenPass;
      },
      this);
  setTokRefuseCallback([](void* self, const YcluiToken& token,
                          std::uint32_t) { Hear(self, "refuse", WordOf(token)); },
                       this);
  YErr.setListener(
      [](void* self, unsigned int code, YErrSeverity severity) {
        Hear(self, "err", CodeText(code, severity).c_str());
      },
      this);
}

void CommandLine::setSyntax(const std::string& syntax) {
  setSyntaxGraph(SyntaxOf(*lex(), syntax).release());
  for (const std::string& word : anywhere_) {
    addIndefiniteNode(new YcluiSyntaxNode(IdOfWord(*lex(), word), (word + " $c").c_str()));
  }
}

void CommandLine::perform(const std::string& steps, char separator) {
  for (const auto& [name, given] : StepsOf(steps, separator)) {
    if (name.empty()) {
      interpret(given.c_str());
      continue;
    }
    const auto own = Operations.find(name);
    const YWord result = own != Operations.end() ? own->second(*this, given)
                                                 : ParserOperations.at(name)(*this, given);
    if (name != "on") record("result", std::to_string(static_cast<int>(result)), name);
  }
}

std::string CommandLine::traced() {
  return std::exchange(trace_, "");
}

std::string CommandLine::tokens() const {
  std::string words;
  std::string shown;
  for (YWord i = 0; i < numberOfToken(); ++i) {
    words += (i == 0 ? "" : " ") + std::string(tokenAt(i)->string());
    shown += (i == 0 ? "" : " ") + std::string(tokenAt(i)->echoString());
  }
  return shown == currentLine() ? words : words + "!";
}

int CommandLine::interpret(const char* text) {
  texts += std::string("[") + text + "]";
  return YcluiParser::interpret(text);
}

YWord CommandLine::evaluate(const char* text) {
  record("run", text);
  return 1;
}

// The steps at an entry may lead to the same entry again.
void CommandLine::record(const std::string& kind, const std::string& text,
                         const std::string& name) {
  const std::string entry = (name.empty() ? kind : name) + "(" + text + ")";
  if (kinds_.find(" " + kind + " ") != std::string::npos) {
    trace_ += (trace_.empty() ? "" : " ") + entry;
  }
  const auto found = at.find(entry);
  if (found == at.end()) return;
  const std::function<void()> task = std::move(found->second);
  at.erase(found);
  task();
}
