// Parsers in several threads: one parser to a thread, each with a language of its own. Run under
// ThreadSanitizer, for CLUI_THREADS_SECONDS.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "foundation/YErr.h"
#include "parser/YcluiHelp.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiPreview.h"
#include "script/YcluiFieldBinding.h"
#include "tests/script/TestField.h"
#include "tests/support/words.h"

namespace {

constexpr int Threads = 8;

// A parser whose words end in the number of its language.
class Speaker final : public YcluiParser {
 public:
  explicit Speaker(int number) : number_(std::to_string(number)) {
    Declare(*lex(), word("go") + " " + word("at") + ":/ii " + word("say") + ":/s " + word("end") +
                        "=" + "e " + word("where") + " " + word("short") + "->" + word("go") + "_" +
                        word("end"));
    setVariable("who", YAttribValue(number_.c_str(), 0));
    renewSyntax();
  }

  void renewSyntax() {
    const std::string at = word("at") + ": ";
    setSyntaxGraph(SyntaxOf(*lex(), "( " + word("go") + " ( " + at + ")* " + word("end") +
                                        "{go $0} | " + word("say") + ":{$0[0]} )")
                       .release());
    addIndefiniteNode(new YcluiSyntaxNode(IdOfWord(*lex(), word("where")), "where"));
  }
  std::string word(const std::string& name) const { return name + number_; }
  // The texts of the commands that ran, each followed by ";".
  std::string took() { return std::exchange(commands_, std::string()); }

 private:
  std::string number_;
  std::string commands_;

  YWord evaluate(const char* text) override {
    commands_ += std::string(text) + ";";
    reset();
    return 1;
  }
};

void Speak(Speaker& speaker) {
  const std::string go = speaker.word("go");
  const std::string line = go + " " + speaker.word("at") + ":1,2 e ";
  speaker.interpret(line.c_str());
  EXPECT_EQ(speaker.took(), "go " + go + ";");
  speaker.interpret((speaker.word("short") + " ").c_str());
  EXPECT_EQ(speaker.took(), "go " + go + ";");
  speaker.interpret((speaker.word("say") + ":\"${who}${presentTime}\" ").c_str());
  EXPECT_EQ(speaker.took().substr(0, 1), speaker.word(""));
  // A failure is recorded in this thread only.
  const std::uint64_t before = YErr.count();
  speaker.interpret((speaker.word("at") + ":1,x ").c_str());
  EXPECT_EQ(YErr.count(), before + 1);
  speaker.dropOpenToken();
  speaker.exhaust();
  speaker.reset();
  YString none;
  EXPECT_EQ(none[3], '\0');
}

void LookAhead(Speaker& speaker) {
  YcluiPreview preview(speaker);
  preview.read((speaker.word("go") + " nothing").c_str());
  EXPECT_EQ(preview.firstRefused(), 2);
  preview.at(0);
  EXPECT_EQ(preview.findCandidates(), 4);
  YString_Array words;
  speaker.possibleWords(words);
  EXPECT_EQ(words.size(), 3U);
}

void Record(Speaker& speaker, const std::string& file) {
  EXPECT_EQ(speaker.startLogging(file.c_str(), 0), 1U);
  speaker.interpret((speaker.word("go") + " " + speaker.word("end") + " ").c_str());
  EXPECT_EQ(speaker.shutLogging(), 1U);
  speaker.took();
  EXPECT_EQ(speaker.playbackFromLog(file.c_str()), 1U);
  EXPECT_EQ(speaker.took(), "go " + speaker.word("go") + ";");
}

void TypeInto(Speaker& speaker) {
  TestField field;
  EXPECT_NE(YcluiFieldBinding::Attach(&field, &speaker, "", ""), nullptr);
  for (const char letter : speaker.word("go") + " ") field.key(std::string(1, letter));
  EXPECT_EQ(YuiTextField::FindLive(&field), &field);
  field.endBinding();
  speaker.reset();
}

void Work(int number, const std::string& folder, const std::atomic<bool>& goesOn) {
  do {
    YcluiParser::CreateMortuary();
    Speaker speaker(number);
    EXPECT_EQ(YcluiParser::Live(0), &speaker);
    EXPECT_EQ(YcluiParser::Live(1), nullptr);
    for (int i = 0; i < 20; ++i) {
      Speak(speaker);
      LookAhead(speaker);
    }
    speaker.renewSyntax();
    YcluiSyntaxNode::NoteChange();
    Speak(speaker);
    speaker.help().setText(1, "a text");
    Record(speaker, folder + "/" + std::to_string(number));
    TypeInto(speaker);
    YcluiParser::AddDeadBody(new YcluiParser);
    YcluiParser::CleanupMortuary();
    YcluiParser::DestroyMortuary();
  } while (goesOn);
}

class ThreadsTest : public ::testing::Test {
 protected:
  std::string folder_ = MakeFolder();

  ~ThreadsTest() override { std::filesystem::remove_all(folder_); }

 private:
  static std::string MakeFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "threadsXXXXXX").string();
    return mkdtemp(name.data());
  }
};

TEST_F(ThreadsTest, EachHasALanguageOfItsOwn) {
  const char* const seconds = std::getenv("CLUI_THREADS_SECONDS");
  std::atomic<bool> goesOn = true;
  std::vector<std::thread> threads;
  for (int i = 0; i < Threads; ++i) {
    threads.emplace_back([this, i, &goesOn] { Work(i, folder_, goesOn); });
  }
  std::this_thread::sleep_for(std::chrono::seconds(seconds == nullptr ? 1 : std::atoi(seconds)));
  goesOn = false;
  for (std::thread& thread : threads) thread.join();
}

// A parser that one thread has made can be used and destroyed by another.
TEST_F(ThreadsTest, AParserIsHandedOver) {
  std::vector<std::thread> threads;
  for (int i = 0; i < Threads; ++i) {
    auto speaker = std::make_unique<Speaker>(i);
    Speak(*speaker);
    threads.emplace_back([given = std::move(speaker)] {
      EXPECT_EQ(YcluiParser::Live(0), nullptr);  // it is known to its maker's scripts only
      Speak(*given);
      given->renewSyntax();
      LookAhead(*given);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(YcluiParser::Live(0), nullptr);
}

}  // namespace
