#include <fstream>
#include <string>

#include "bench/DraftingParser.h"
#include "bench/Row.h"
#include "bench/TemporaryFile.h"

namespace {

constexpr long WarmBytes = 10000;

const char* LastText = nullptr;

void KeepLine(void*, const char* wholeLine) {
  LastText = wholeLine;
}

void KeepLines(void*, const char* line, const char* wholeLine) {
  LastText = line == wholeLine ? line : wholeLine;
}

// A text in one piece, read by a parser that has read a short one before.
class OneText : public Work {
 public:
  explicit OneText(long bytes) : text_(bytes) {
    parser_.interpret(DraftingText(WarmBytes).text.c_str());
  }
  void prepare() override { commandsBefore_ = parser_.commands(); }
  void run() override { taken_ = parser_.interpret(text_.text.c_str()); }
  bool isDone() const override {
    return taken_ == text_.tokens && parser_.commands() - commandsBefore_ == text_.commands;
  }

 protected:
  DraftingParser parser_;

 private:
  DraftingText text_;
  int taken_ = 0;
  long commandsBefore_ = 0;
};

class OneLoggedText : public OneText {
 public:
  explicit OneLoggedText(long bytes) : OneText(bytes) {
    isLogged_ = parser_.startLogging(file_.path().c_str(), 0) != 0;
  }
  bool isDone() const override { return isLogged_ && OneText::isDone(); }

 private:
  TemporaryFile file_;
  bool isLogged_ = false;
};

class Playback : public Work {
 public:
  explicit Playback(long lines) : lines_(lines) {
    std::ofstream log(file_.path());
    for (long i = 0; i < lines; ++i)
      log << "rectangle:" << i % 90 << ",5 to:7,8 layer:\"walls\" \n";
  }
  void prepare() override { commandsBefore_ = parser_.commands(); }
  void run() override { played_ = parser_.playbackFromLog(file_.path().c_str()); }
  bool isDone() const override {
    return played_ != 0 && parser_.commands() - commandsBefore_ == 2 * lines_;
  }

 private:
  long lines_;
  TemporaryFile file_;
  DraftingParser parser_;
  YWord played_ = 0;
  long commandsBefore_ = 0;
};

// One line of nothing but aliases, each for a command.
class Aliases : public Work {
 public:
  explicit Aliases(long count) : count_(count) {
    constexpr const char* Texts[][2] = {
        {"rd", "redraw"}, {"un", "undo"}, {"g", "show grid"}, {"w", "weight: 5"}};
    for (const auto& [name, text] : Texts) parser_.setAlias(name, text);
    for (long i = 0; i < count; ++i) line_.append(Texts[i % 4][0]).append(" ");
  }
  void prepare() override { commandsBefore_ = parser_.commands(); }
  void run() override { taken_ = parser_.interpret(line_.c_str()); }
  bool isDone() const override {
    return taken_ == count_ && parser_.commands() - commandsBefore_ == count_;
  }

 private:
  long count_;
  std::string line_;
  DraftingParser parser_;
  int taken_ = 0;
  long commandsBefore_ = 0;
};

// A frame that only grows, with callbacks that take what they are given.
class EndlessFrame : public Work {
 public:
  explicit EndlessFrame(long tokens) : EndlessFrame(tokens, "polyline ", "at: 12,345 ") {}
  void prepare() override { parser_.reset(); }
  void run() override { parser_.interpret(text_.c_str()); }
  bool isDone() const override { return static_cast<long>(parser_.numberOfToken()) == tokens_; }

 protected:
  EndlessFrame(long tokens, const char* first, const char* next) : tokens_(tokens), text_(first) {
    for (long i = 1; i < tokens; ++i) text_ += next;
    parser_.setEchoProcedure(KeepLine, nullptr);
    parser_.setSynCallback(KeepLines, nullptr);
  }

  long tokens_;
  std::string text_;
  DraftingParser parser_;
};

class FrameTakenBack : public EndlessFrame {
 public:
  explicit FrameTakenBack(long tokens) : EndlessFrame(tokens) {}
  void prepare() override {
    EndlessFrame::prepare();
    EndlessFrame::run();
  }
  void run() override {
    while (parser_.numberOfToken() > 0) parser_.popToken();
  }
  bool isDone() const override { return parser_.numberOfToken() == 0; }
};

// Each token of the upper frame looks for the words that both commands began with, and no command
// has begun in either.
class InterruptingFrame : public EndlessFrame {
 public:
  explicit InterruptingFrame(long tokens) : EndlessFrame(tokens, "; ", "; ") {
    parser_.interpret(text_.c_str());
    parser_.pushFrame();
  }
};

}  // namespace

std::vector<Row> TextRows() {
  return {
      RowOf<OneText>("one text", "byte", 10000, 10000000, 1.5),
      RowOf<OneLoggedText>("one text, with a log", "byte", 10000, 1000000, 1.5),
      RowOf<Playback>("a log played back", "line", 100, 10000, 1.5),
      RowOf<Aliases>("aliases in one line", "alias", 100, 100000, 1.5),
      RowOf<EndlessFrame>("a frame that never ends", "token", 100, 10000, 1.5),
      RowOf<FrameTakenBack>("that frame taken back", "token", 100, 10000, 1.5),
      RowOf<InterruptingFrame>("marks in a frame above marks", "token", 100, 10000, 1.5),
  };
}
