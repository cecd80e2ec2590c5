#include "tests/parser/CommandLine.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <utility>

#include "foundation/YErr.h"
#include "gtest/gtest.h"

namespace {

// Reads the notation of setSyntax, from the back, as fragments are built.
class SyntaxReader {
 public:
  SyntaxReader(CommandLine& line, const std::string& text) : line_(line) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == ' ') continue;
      std::size_t end = i + 1;
      if (text[i] == '{') end = text.find('}', i) + 1;
      if (std::string("{()|*").find(text[i]) == std::string::npos) {
        end = std::min(text.find_first_of(" {()|*", i), text.size());
      }
      parts_.push_back(text.substr(i, end - i));
      i = end - 1;
    }
  }

  // One level of parentheses.
  YcluiSyntaxGraph* read() {
    std::vector<YcluiSyntaxGraph*> alternatives = {sequence()};
    while (!parts_.empty() && parts_.back() == "|") {
      parts_.pop_back();
      alternatives.push_back(sequence());
    }
    if (!parts_.empty()) parts_.pop_back();  // the parenthesis
    if (alternatives.size() == 1) return alternatives[0];
    auto* all = new YcluiSyntaxGraph;
    for (YcluiSyntaxGraph* one : alternatives) {
      all->insertOr(one);
      delete one;
    }
    return all;
  }

 private:
  CommandLine& line_;
  Texts parts_;

  YcluiSyntaxGraph* sequence() {
    auto* graph = new YcluiSyntaxGraph;
    std::string command;
    std::string priorities;
    while (!parts_.empty() && parts_.back() != "|" && parts_.back() != "(") {
      const std::string part = parts_.back();
      parts_.pop_back();
      if (part[0] == '{') {
        command = part.substr(1, part.size() - 2);
      } else if (part == ")" || part == "*") {
        if (part == "*") parts_.pop_back();
        YcluiSyntaxGraph* inner = read();
        if (part == "*") inner->makeClosure();
        graph->insertAnd(inner);
        delete inner;
      } else {
        graph->insertAnd(wordNode(part, command));
        command.clear();
      }
    }
    return graph;
  }

  YcluiSyntaxNode* wordNode(const std::string& part, const std::string& command) {
    const std::size_t mark = part.find('^');
    YcluiSyntaxNode* made =
        line_.node(part.substr(0, mark), command.empty() ? nullptr : command.c_str());
    if (mark == std::string::npos) return made;
    made->priority = static_cast<std::uint8_t>(std::stoi(part.substr(mark + 1)));
    made->interruptLimit =
        static_cast<std::uint8_t>(std::stoi(part.substr(part.find(',', mark) + 1)));
    return made;
  }
};

YcluiValueType TypeOf(char letter) {
  switch (letter) {
    case 'i':
      return YcluiValueInteger;
    case 'f':
      return YcluiValueFloat;
    case 'p':
      return YcluiValuePoint;
    default:
      return YcluiValueString;
  }
}

// A token whose word was bad, and one for a variable, may have none.
std::string WordOf(const YcluiToken& token) {
  return token.string() == nullptr ? "" : token.string();
}

}  // namespace

CommandLine::CommandLine(const std::string& words, const std::string& syntax) {
  std::istringstream in(words);
  for (std::string word; in >> word;) {
    const std::size_t mark = word.find_first_of("/=");
    const std::string name = word.substr(0, mark);
    const std::string rest = mark == std::string::npos ? "" : word.substr(mark + 1);
    if (mark == std::string::npos || word[mark] == '=') {
      lex()->addKeyword(name.c_str(), rest.empty() ? nullptr : rest.c_str(), 0);
      continue;
    }
    std::vector<YcluiValueType> types;
    for (const char letter : rest) types.push_back(TypeOf(letter));
    lex()->addKeyword(name.c_str(), static_cast<int>(types.size()), types.data(), 0);
  }
  if (!syntax.empty()) setSyntax(syntax);
  // What a callback is given must still be there when it is done.
  const auto echo = [](void* self, const char* whole) {
    const std::string copy(whole);
    static_cast<CommandLine*>(self)->tell("echo", copy);
    EXPECT_EQ(copy, whole);
  };
  const auto field = [](void* self, const char* whole) {
    const std::string copy(whole);
    static_cast<CommandLine*>(self)->tell("field", copy);
    EXPECT_EQ(copy, whole);
  };
  const auto syn = [](void* self, const char* line, const char* whole) {
    const std::string copy = std::string(line) + "|" + whole;
    static_cast<CommandLine*>(self)->tell("syn", copy);
    EXPECT_EQ(copy, std::string(line) + "|" + whole);
  };
  const auto token = [](void* self, YcluiToken& given) {
    static_cast<CommandLine*>(self)->tell("tok", WordOf(given));
    return YcluiTokenPass;
  };
  const auto refuse = [](void* self, const YcluiToken& given, std::uint32_t) {
    const std::string copy = WordOf(given);
    static_cast<CommandLine*>(self)->tell("refuse", copy);
    EXPECT_EQ(copy, WordOf(given));
  };
  setEchoProcedure(echo, this);
  sysSetEchoProcedure(field, this);
  setSynCallback(syn, this);
  setTokCallback(token, this);
  setTokRefuseCallback(refuse, this);
}

void CommandLine::setSyntax(const std::string& syntax) {
  setSyntaxGraph(SyntaxReader(*this, syntax).read());
}

YcluiSyntaxNode* CommandLine::node(const std::string& word, const char* command) {
  return new YcluiSyntaxNode(makeToken(word.c_str()).id(), command);
}

void CommandLine::addIndefinite(const std::string& word, const char* command) {
  addIndefiniteNode(node(word, command));
}

void CommandLine::trace(const std::string& kinds) {
  kinds_ = " " + kinds + " ";
}

std::string CommandLine::told() {
  return std::exchange(told_, "");
}

std::string CommandLine::feed(const std::string& text) {
  told_.clear();
  interpret(text.c_str());
  return told();
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
  if (kinds_.find(" text ") != std::string::npos) lines.emplace_back(text);
  return YcluiParser::interpret(text);
}

YWord CommandLine::evaluate(const char* text) {
  tell("run", text);
  return 1;
}

void CommandLine::tell(const std::string& kind, const std::string& text) {
  const std::string entry = kind + "(" + text + ")";
  if (kinds_.find(" " + kind + " ") != std::string::npos) {
    told_ += (told_.empty() ? "" : " ") + entry;
  }
  const auto found = at.find(entry);
  if (found == at.end()) return;
  const std::function<void()> task = std::move(found->second);
  at.erase(found);
  task();
}

std::string PathOf(const std::string& name) {
  return ::testing::TempDir() + "yclui_parser_" + name;
}

void WriteFile(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

std::string ReadFile(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

std::string NewErrors() {
  static std::uint64_t seen = 0;
  std::string all;
  for (int i = static_cast<int>(YErr.count() - seen) - 1; i >= 0; --i) {
    all += (all.empty() ? "" : " ") + std::to_string(YErr.code(i)) + "/" +
           std::to_string(YErr.severity(i));
  }
  seen = YErr.count();
  return all;
}
