#include <algorithm>
#include <memory>
#include <random>

#include "bench/scale/Rows.h"
#include "parser/YcluiParser.h"

namespace {

// Four syllables, different for each number below 10,000.
std::string Syllables(long number) {
  constexpr const char* All[] = {"ba", "de", "fi", "go", "ku", "la", "me", "ni", "po", "ru"};
  std::string text;
  for (int i = 0; i < 4; ++i, number /= 10) text += All[number % 10];
  return text;
}

// The same words in each of some dictionaries, and the keys for looking them up in random order.
struct Dictionaries {
  Dictionaries(long words, long dictionaries, const char* ending)
      : lexers(static_cast<std::size_t>(dictionaries)) {
    for (long i = 0; i < words; ++i) {
      shortForms.push_back(Syllables(i));
      keys.push_back(shortForms.back() + ending);
    }
    std::shuffle(keys.begin(), keys.end(), std::minstd_rand(1));
  }

  std::vector<std::unique_ptr<YcluiLex>> lexers;
  std::vector<std::string> shortForms;  // in the order of adding
  std::vector<std::string> keys;

  void clear() {
    for (auto& lexer : lexers) lexer = std::make_unique<YcluiLex>();
  }
  bool add() {
    bool isRight = true;
    for (auto& lexer : lexers) {
      for (const std::string& word : shortForms) {
        isRight = lexer->addKeyword((word + "-line").c_str(), word.c_str(), 0) != 0 && isRight;
      }
    }
    return isRight;
  }
  // Whether `operation` succeeds for each key.
  template <class Operation>
  bool all(Operation operation) {
    bool isRight = true;
    for (auto& lexer : lexers) {
      for (const std::string& key : keys) isRight = operation(*lexer, key.c_str()) && isRight;
    }
    return isRight;
  }
};

Work Added(long words, long dictionaries) {
  const auto all = std::make_shared<Dictionaries>(words, dictionaries, "-line");
  return {[all] { return all->add(); }, [all] { all->clear(); }};
}

Work Deleted(long words, long dictionaries) {
  const auto all = std::make_shared<Dictionaries>(words, dictionaries, "-line");
  const auto remove = [](YcluiLex& lexer, const char* key) { return lexer.delKeyword(key) != 0; };
  return {[all, remove] { return all->all(remove); },
          [all] {
            all->clear();
            all->add();
          }};
}

Work LookedUp(long words, long dictionaries, const char* ending, bool isKnown) {
  const auto all = std::make_shared<Dictionaries>(words, dictionaries, ending);
  all->clear();
  all->add();
  const auto find = [isKnown](const YcluiLex& lexer, const char* key) {
    return (lexer.keyword(key) != nullptr) == isKnown;
  };
  return {[all, find] { return all->all(find); }};
}

// Each word is allowed. It is a command, or it begins one command with each of the endings.
struct WordParser final : YcluiParser {
  explicit WordParser(long words, const std::vector<std::string>& endings = {}) {
    std::vector<unsigned long> ids;
    for (const std::string& ending : endings) {
      ids.push_back(lex()->addKeyword(ending.c_str(), nullptr, 0));
    }
    auto* allowed = new YcluiSyntaxGraph;
    for (long i = 0; i < words; ++i) {
      const std::string name = "w" + Syllables(i);
      const unsigned long word = lex()->addKeyword(name.c_str(), nullptr, 0);
      if (ids.empty()) allowed->insertOr(new YcluiSyntaxNode(word));
      for (const unsigned long id : ids) {
        YcluiSyntaxGraph command;
        command.insertAnd(new YcluiSyntaxNode(id));
        command.insertAnd(new YcluiSyntaxNode(word));
        allowed->insertOr(&command);
      }
    }
    setSyntaxGraph(allowed);
  }
};

// Every word is read once. The first one has been read before, so that the list of what can begin a
// command is cached.
struct FirstUses {
  FirstUses(long words, long languages, const std::vector<std::string>& allEndings)
      : parsers(static_cast<std::size_t>(languages)), size(words), endings(allEndings) {
    const std::string ending = endings.empty() ? "" : " " + endings.front();
    for (long i = 0; i < words; ++i) lines.push_back("w" + Syllables(i) + ending + "\n");
    std::shuffle(lines.begin(), lines.end(), std::minstd_rand(1));
  }

  std::vector<std::unique_ptr<WordParser>> parsers;
  long size;
  std::vector<std::string> endings;
  std::vector<std::string> lines;

  void renew() {
    constexpr int VisitsUntilCached = 3;
    for (auto& parser : parsers) {
      parser = std::make_unique<WordParser>(size, endings);
      for (int i = 0; i < VisitsUntilCached; ++i) parser->interpret(lines.front().c_str());
    }
  }
  bool read() {
    bool isRight = true;
    const int tokens = endings.empty() ? 1 : 2;
    for (auto& parser : parsers) {
      for (const std::string& line : lines) {
        isRight = parser->interpret(line.c_str()) == tokens && isRight;
      }
    }
    return isRight;
  }
};

Work UsedFirst(long words, long languages, const std::vector<std::string>& endings) {
  const auto all = std::make_shared<FirstUses>(words, languages, endings);
  return {[all] { return all->read(); }, [all] { all->renew(); }};
}

Work CommonPrefix(long words, long times) {
  return ForEachPiece(times, [parser = std::make_shared<WordParser>(words)] {
    YString completed;
    unsigned long unique = 0;
    return parser->completionString("w", completed, unique) != 0;
  });
}

Work Listed(long words, long times) {
  return ForEachPiece(times, [words, parser = std::make_shared<WordParser>(words)] {
    YString_Array list;
    return parser->completionList("w", list) == words;
  });
}

}  // namespace

std::vector<Row> WordRows() {
  return {
      {"words added", "word", 100, 10000, &Added},
      {"words deleted", "word", 100, 10000, &Deleted},
      {"words found by name", "word", 100, 10000,
       [](long words, long times) { return LookedUp(words, times, "-line", true); }},
      {"words found by a short form", "word", 100, 10000,
       [](long words, long times) { return LookedUp(words, times, "-l", true); }},
      {"unknown words", "word", 100, 10000,
       [](long words, long times) { return LookedUp(words, times, "-lines", false); }},
      {"words read for the first time", "word", 100, 10000,
       [](long words, long times) { return UsedFirst(words, times, {}); }},
      {"words with two commands each, for the first time", "word", 100, 10000,
       [](long words, long times) {
         return UsedFirst(words, times, {"on", "off"});
       }},
      {"the common prefix of candidates", "word", 100, 10000, &CommonPrefix},
      {"candidates listed", "word", 100, 10000, &Listed},
  };
}
