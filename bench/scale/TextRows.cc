#include <memory>

#include "bench/DraftingParser.h"
#include "bench/scale/Rows.h"
#include "parser/YcluiPreview.h"
#include "tests/support/WorkingFolder.h"

namespace {

using SharedParser = std::shared_ptr<DraftingParser>;

std::string Repeated(const std::string& piece, long times) {
  std::string text;
  for (long i = 0; i < times; ++i) text += piece;
  return text;
}

// Whether the parser accepts that many tokens of the text.
bool Accepts(DraftingParser& parser, const std::string& text, long tokens) {
  return parser.interpret(text.c_str()) == tokens;
}

Work TextWork(const SharedParser& parser, long bytes, long times) {
  const auto text = std::make_shared<const DraftingText>(bytes);
  return ForEachPiece(times, [parser, text] {
    const long expected = parser->commands() + text->commands;
    return Accepts(*parser, text->text, text->tokens) && parser->commands() == expected;
  });
}

Work OneText(long bytes, long times) {
  return TextWork(std::make_shared<DraftingParser>(), bytes, times);
}

Work OneLoggedText(long bytes, long times) {
  const auto parser = std::make_shared<DraftingParser>();
  parser->startLogging(("text" + std::to_string(bytes)).c_str(), 0);
  return TextWork(parser, bytes, times);
}

Work Previewed(long bytes, long times) {
  const auto parser = std::make_shared<DraftingParser>();
  const auto preview = std::make_shared<YcluiPreview>(*parser);
  const auto text = std::make_shared<const DraftingText>(bytes);
  return ForEachPiece(times, [parser, preview, text] {
    preview->read(text->text.c_str());
    return preview->firstRefused() < 0 && !preview->leavesCommand();
  });
}

constexpr const char* PlayedLine = "rectangle:12,5 to:7,8 layer:\"walls\" \n";
constexpr long CommandsOfLine = 2;

Work Playback(long lines, long times) {
  const std::string file = "log" + std::to_string(lines);
  WriteFile(file, Repeated(PlayedLine, lines));
  const auto parser = std::make_shared<DraftingParser>();
  return ForEachPiece(times, [file, parser, lines] {
    const long expected = parser->commands() + lines * CommandsOfLine;
    return parser->playbackFromLog(file.c_str()) != 0 && parser->commands() == expected;
  });
}

// A played line, without the time to read a file.
Work LinesWithoutFile(long lines, long times) {
  const auto parser = std::make_shared<DraftingParser>();
  return ForEachPiece(lines * times,
                      [parser] { return Accepts(*parser, PlayedLine, CommandsOfLine + 1); });
}

// A file of one line, played by a new parser each time.
Work LongLine(long bytes, long times, const std::string& beginning, const std::string& piece) {
  const std::string file = "line" + std::to_string(bytes) + beginning.substr(0, 1);
  const long pieces = bytes / static_cast<long>(piece.size());
  WriteFile(file, beginning + Repeated(piece, pieces));
  return ForEachPiece(times,
                      [file] { return DraftingParser().playbackFromLog(file.c_str()) != 0; });
}

// One line of aliases, each for a command.
Work Aliases(long count, long times) {
  const auto parser = std::make_shared<DraftingParser>();
  parser->setAlias("rd", "redraw");
  parser->setAlias("un", "undo");
  parser->setAlias("g", "show grid");
  parser->setAlias("w", "weight: 5");
  return ForEachPiece(times, [parser, line = Repeated("rd un g w ", count / 4), count] {
    return Accepts(*parser, line, count);
  });
}

// A frame grows while callbacks receive its text, and is then emptied token by token.
Work FrameWork(const SharedParser& parser, const std::string& text, long tokens, long times) {
  parser->setEchoProcedure([](void*, const char*) {}, nullptr);
  parser->setSynCallback([](void*, const char*, const char*) {}, nullptr);
  return ForEachPiece(times, [parser, text, tokens] {
    parser->interpret(text.c_str());
    const bool isRight = static_cast<long>(parser->numberOfToken()) == tokens;
    while (parser->numberOfToken() > 0) parser->popToken();
    return isRight;
  });
}

Work LongFrame(long tokens, long times) {
  const std::string text = "polyline " + Repeated("at: 12,345 ", tokens - 1);
  return FrameWork(std::make_shared<DraftingParser>(), text, tokens, times);
}

// For each token of the upper frame the parser searches both frames for the first word of the
// command, and no command has begun in either.
Work InterruptingFrame(long tokens, long times) {
  const auto parser = std::make_shared<DraftingParser>();
  const std::string text = Repeated("; ", tokens);
  parser->interpret(text.c_str());
  parser->pushFrame();
  return FrameWork(parser, text, tokens, times);
}

}  // namespace

std::vector<Row> TextRows() {
  return {
      {"one text of plain commands", "byte", 10000, 10000000, &OneText},
      {"one text, with a log", "byte", 10000, 1000000, &OneLoggedText},
      {"one text previewed", "byte", 10000, 10000000, &Previewed},
      {"a log played back", "line", 100, 100000, &Playback},
      {"the same lines without a file", "line", 100, 100000, &LinesWithoutFile},
      {"a played line, all comment", "byte", 10000, 1000000,
       [](long bytes, long times) { return LongLine(bytes, times, "# ", "and so on "); }},
      {"a played line, an unterminated string", "byte", 10000, 1000000,
       [](long bytes, long times) { return LongLine(bytes, times, "layer:\"", "walls "); }},
      {"a played line, all backslashes", "byte", 10000, 1000000,
       [](long bytes, long times) { return LongLine(bytes, times, "", "\\"); }},
      {"aliases in one line", "alias", 100, 100000, &Aliases},
      {"a long frame, filled and emptied", "token", 100, 10000, &LongFrame},
      {"indefinite words in two frames", "token", 100, 10000, &InterruptingFrame},
  };
}
