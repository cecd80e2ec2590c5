// Both readers of a playback, with any file and pauses after any line. The texts are compared with
// those of a reference implementation that reads the whole file first.

#include <vector>

#include "foundation/YKanji.h"
#include "parser/YcluiLogEncoding.h"
#include "parser/YcluiParser.h"
#include "tests/support/Choices.h"
#include "tests/support/WorkingFolder.h"

namespace {

// Pauses after the lines whose bits are set.
class Player : public YcluiParser {
 public:
  explicit Player(unsigned pauses) : pauses_(pauses) {
    const YcluiValueType string = YcluiValueString;
    lex()->addKeyword("say:", 1, &string, 1);
    auto* syntax = new YcluiSyntaxGraph;
    syntax->insertAnd(new YcluiSyntaxNode(1, "f $0[0]"));
    setSyntaxGraph(syntax);
  }

  std::vector<std::string> texts;

  bool pausesAfter(std::size_t line) const { return (pauses_ >> (line % 8) & 1U) != 0; }
  int interpret(const char* text) override {
    if (isAliasRun() != 0) return YcluiParser::interpret(text);  // not a text of the file
    if (pausesAfter(texts.size())) pausePlayback();
    texts.emplace_back(text);
    return YcluiParser::interpret(text);
  }

 private:
  unsigned pauses_;

  YWord evaluate(const char* /*text*/) override { return 1; }
};

// The line at offset `at` as the first reader passes it. Sets `at` to its end.
std::string LineAt(const std::string& log, std::size_t& at, bool& inString) {
  std::string line;
  for (; at < log.size() && (log[at] != '\n' || inString); ++at) {
    line += log[at];
    if (log[at] == '"') inString = !inString;
    const bool isEscape = log[at] == '\\' && at + 1 < log.size();
    const bool isPair = at + 1 < log.size() && IsKanjiStart(log.substr(at, 2).c_str()) != 0;
    if (isEscape && (log[at + 1] == '"' || log[at + 1] == '\\')) line += "\\\\";
    if (isEscape || isPair) line += log[++at];
  }
  return line.c_str();
}

std::vector<std::string> Expected(const std::string& log, const Player& player) {
  std::vector<std::string> texts;
  std::size_t at = 0;
  bool inString = false;
  for (bool follows = true; follows; ++at) {
    texts.push_back(LineAt(log, at, inString));
    follows = at < log.size();
    if (follows && player.pausesAfter(texts.size() - 1)) {
      ++at;
      break;
    }
  }
  while (at < log.size()) {
    const std::size_t length = std::min<std::size_t>(log.find('\n', at) - at, 1022) + 1;
    const std::string piece = log.substr(at, length);
    if (piece[0] != '\n') texts.emplace_back(piece.c_str());
    at += length;
  }
  return texts;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  static const WorkingFolder folder;
  const std::string path = folder.path + "/log";
  // In UTF-8 the opening lines with the mark admit any bytes.
  const std::string head = YEncoding::IsDoubleByte()
                               ? ""
                               : "#\n" + std::string(YcluiLogEncoding::Opening) + "\n#\n" +
                                     std::string(YcluiLogEncoding::Mark) + "\n";
  Choices choices(bytes, count);
  Player player(choices.byte());
  const std::string log = head + choices.rest();
  WriteFile(path, log);
  Require(player.playbackFromLog(path.c_str()) == 1, "a file can be played");
  while (player.continuePlayback() != 0) {
  }
  Require(player.texts == Expected(log, player), "the texts of the file");
  return 0;
}
