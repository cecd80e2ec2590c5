// The language server: a table of conversations, and streams that are broken.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "parser/YcluiHelp.h"
#include "parser/YcluiParser.h"
#include "tests/support/words.h"
#include "workshop/server/CluiLanguageServer.h"
#include "workshop/server/CluiServedText.h"

namespace {

using Json = nlohmann::json;

// "go box: 1,2 done", "say: ...", and "learn", after which the language may differ.
class Language : public YcluiParser {
 public:
  Language() {
    Declare(*lex(), "go box:/ii say:/s done=d learn where al->go_done", 11);
    setSyntaxGraph(
        SyntaxOf(*lex(), "go ( box: )* done{(draw)} | say:{(say)} | learn{(teach)}").release());
    addIndefiniteNode(new YcluiSyntaxNode(16, "(where)"));
    help().setText(12, "a box");
    help().setArgument(12, 1, "WIDTH", "in metres");
    help().setRange(12, 1, 0, 9);
    YString_Array values;
    values.append("hall");
    values.append("kitchen");
    help().setValues(13, 1, values);
  }
};

class ServerTest : public ::testing::Test {
 protected:
  Language language_;

  // Tests run at the same time in processes of their own.
  static std::string Script() {
    return ::testing::TempDir() + "server_test." + std::to_string(getpid()) + ".scm";
  }
  void SetUp() override { std::ofstream(Script()) << "(define (teach) (clui-token p \"new\"))"; }
  void TearDown() override { std::remove(Script().c_str()); }

  // What the server writes to a client that sends those bytes and then closes the stream.
  std::string served(const std::string& bytes, bool* wasAsked = nullptr) {
    int ends[2];
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    std::string answers;
    std::thread client([&answers, &bytes, end = ends[1]] {
      std::thread writer([&bytes, end] {
        for (std::size_t done = 0; done < bytes.size();) {
          done += static_cast<std::size_t>(
              write(end, bytes.data() + done, std::min<std::size_t>(bytes.size() - done, 7777)));
        }
        shutdown(end, SHUT_WR);
      });
      char room[4096];
      for (ssize_t n = 0; (n = read(end, room, sizeof room)) > 0;)
        answers.append(room, static_cast<std::size_t>(n));
      writer.join();
    });
    CluiMessageStream stream(ends[0], ends[0]);
    const bool asked = CluiLanguageServer(language_, Script(), stream).serve();
    if (wasAsked != nullptr) *wasAsked = asked;
    close(ends[0]);
    client.join();
    close(ends[1]);
    return answers;
  }

  static std::string Framed(const std::string& body) {
    return "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
  }

  // The messages in what was written.
  static std::vector<Json> Messages(const std::string& bytes) {
    std::vector<Json> messages;
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t body = bytes.find("\r\n\r\n", at) + 4;
      const std::size_t length = std::stoul(bytes.substr(at + 16));
      messages.push_back(Json::parse(bytes.substr(body, length)));
      at = body + length;
    }
    return messages;
  }

  // The results of the requests "METHOD PARAMS", one after the other, in an open document.
  std::vector<Json> talk(const std::string& text,
                         const std::vector<std::pair<std::string, std::string>>& requests) {
    std::string bytes = Framed(R"({"id":0,"method":"initialize","params":{}})");
    const Json item = {{"uri", "u"}, {"languageId", "x"}, {"version", 1}, {"text", text}};
    bytes += Framed(
        Json{{"method", "textDocument/didOpen"}, {"params", {{"textDocument", item}}}}.dump());
    int id = 0;
    for (const auto& [method, params] : requests) {
      Json message = {{"method", "textDocument/" + method}, {"params", Json::parse(params)}};
      message["params"]["textDocument"] = {{"uri", "u"}};
      if (!method.starts_with("did")) message["id"] = ++id;
      bytes += Framed(message.dump());
    }
    std::vector<Json> messages = Messages(served(bytes));
    messages.erase(messages.begin());
    return messages;
  }

  // "line:begin-end severity message" of each diagnostic, each followed by a newline.
  static std::string Diagnostics(const Json& message) {
    std::string text;
    for (const Json& each : message.at("params").at("diagnostics")) {
      const Json& range = each.at("range");
      text += std::to_string(range["start"]["line"].get<int>()) + ":" +
              std::to_string(range["start"]["character"].get<int>()) + "-" +
              std::to_string(range["end"]["character"].get<int>()) + " " +
              std::to_string(each.at("severity").get<int>()) + " " +
              each.at("message").get<std::string>() + "\n";
    }
    return text;
  }
};

TEST_F(ServerTest, Diagnostics) {
  const struct {
    const char* text;
    const char* diagnostics;
  } cases[] = {
      {"go box:1,2 done\n# a comment\nal", ""},
      {"lien: 1", "0:0-5 1 no such word \"lien:\"; expected go, learn, say:, where, al\n"},
      {"go box:10,2 done", "0:7-9 2 expected 0 to 9\n"},
      {"go nope done", "0:3-7 1 no such word \"nope\"; expected box:, done, where, al\n"},
      {"go\nbox:1,\n\n2 done", ""},  // the argument comes in a later line
      {"go\nbox:1,\n\n", "1:0-6 2 the text ends inside a command\n"},
      {"say:\"\xF0\x9F\x98\x80\" nope",
       "0:0-13 1 the character U+1F600 does not exist in code page 932\n"},
      {"learn nope\nnope\ngo nope done",
       "0:6-10 3 no such word \"nope\"; expected go, learn, say:, where, al; after \"learn\" in "
       "line 1 "
       "ran, this and what follows may differ\n"},
  };
  for (const auto& row : cases)
    EXPECT_EQ(Diagnostics(talk(row.text, {})[0]), row.diagnostics) << row.text;
}

TEST_F(ServerTest, Answers) {
  const struct {
    const char* text;
    const char* method;
    const char* params;
    const char* answer;  // a part of it
  } cases[] = {
      {"g", "completion", R"({"position":{"line":0,"character":1}})", R"("newText":"go")"},
      {"go ", "completion", R"({"position":{"line":0,"character":3}})",
       R"("documentation":"a box")"},
      {"say:\"h", "completion", R"({"position":{"line":0,"character":6}})", R"("label":"hall")"},
      {"go box:1", "hover", R"({"position":{"line":0,"character":7}})",
       "WIDTH: integer, 0 to 9; in metres"},
      {"go box:1", "hover", R"({"position":{"line":0,"character":4}})", "box:: a box"},
      {"go box:1", "hover", R"({"position":{"line":7,"character":4}})", R"("result":null)"},
      {"go\nbox:1,", "signatureHelp", R"({"position":{"line":1,"character":6}})",
       R"("activeParameter":1)"},
      {"go box:1,2\ndone", "documentSymbol", "{}", R"("name":"go box: done")"},
      {"go\n box:1", "semanticTokens/full", "{}", R"("data":[0,0,2,0,0,1,1,4,0,0,0,4,1,5,0])"},
      {"go\n box:1", "semanticTokens/range",
       R"({"range":{"start":{"line":0,"character":0},"end":{"line":0,"character":9}}})",
       R"("data":[0,0,2,0,0])"},
      {"go", "rename", "{}", "-32601"},
      {"go", "hover", R"({"position":3})", "-32602"},
      {"go", "hover", R"({"position":{"line":-1,"character":0}})", R"("result":null)"},
  };
  for (const auto& row : cases) {
    const std::string answer = talk(row.text, {{row.method, row.params}}).back().dump();
    EXPECT_NE(answer.find(row.answer), std::string::npos)
        << row.text << " " << row.method << ": " << answer;
  }
}

TEST_F(ServerTest, TokensChange) {
  const std::vector<Json> answers =
      talk("go\ngo\ngo",
           {{"semanticTokens/full", "{}"},
            {"didChange", R"({"contentChanges":[{"range":{"start":{"line":1,"character":0},)"
                          R"("end":{"line":1,"character":2}},"text":"# go"}]})"},
            {"semanticTokens/full/delta", R"({"previousResultId":"1"})"}});
  EXPECT_EQ(answers.back()["result"]["edits"].dump(),
            R"([{"data":[1,0,4,6,0],"deleteCount":0,"start":5}])");
}

// What is shown of a text.
std::string Shown(const CluiServedText& text) {
  std::string all;
  for (std::size_t line = 0; line < text.lineCount(); ++line) {
    for (const CluiServedPiece& piece : text.pieces(line)) {
      for (const std::uint32_t part : {piece.begin, piece.end, std::uint32_t{piece.kind}}) {
        all += std::to_string(part) + " ";
      }
    }
    all += "\n";
  }
  for (const CluiServedFinding& finding : text.findings()) {
    all += std::to_string(finding.line) + " " + finding.text + "\n";
  }
  return all;
}

using Characters = std::vector<std::string>;

// The position after so many of the characters.
CluiTextPosition PositionAfter(const Characters& characters, std::size_t count) {
  CluiTextPosition position;
  for (std::size_t i = 0; i < count; ++i) {
    if (characters[i] == "\n") {
      position = {position.line + 1, 0};
    } else {
      position.column += characters[i].size() == 4 ? 2 : 1;
    }
  }
  return position;
}

// After random changes a text is shown as one that was opened so.
TEST_F(ServerTest, ChangesAreIncremental) {
  const Characters parts = {
      "go ",  "box:1,", "2 ",    "done\n", "\n",           "nope ", "# x\n",
      "say:", "\"",     "1,2\n", "learn ", "\xE9\xA3\x9F", "al\n",  "\xF0\x9F\x98\x80"};
  const CluiChangingWords changing(language_, Script());
  CluiServedText changed(language_, changing);
  changed.set("");
  Characters reference;
  std::mt19937 random(7);
  const auto below = [&random](std::size_t n) { return random() % n; };
  for (int step = 0; step < 1500; ++step) {
    const std::size_t begin = below(reference.size() + 1);
    const std::size_t end = std::min(reference.size(), begin + below(below(10) == 0 ? 60 : 4));
    const std::string& part = parts[below(parts.size())];
    changed.replace(PositionAfter(reference, begin), PositionAfter(reference, end), part);
    const auto at = reference.erase(reference.begin() + static_cast<std::ptrdiff_t>(begin),
                                    reference.begin() + static_cast<std::ptrdiff_t>(end));
    Characters added = {part};
    if (static_cast<unsigned char>(part[0]) < 0x80) added.clear();
    for (const char c : part) {
      if (static_cast<unsigned char>(c) < 0x80) added.emplace_back(1, c);
    }
    reference.insert(at, added.begin(), added.end());
    std::string whole;
    for (const std::string& character : reference) whole += character;
    CluiServedText fresh(language_, changing);
    fresh.set(whole);
    ASSERT_EQ(Shown(changed), Shown(fresh)) << whole;
  }
}

TEST_F(ServerTest, HostileClients) {
  const std::string start = Framed(R"({"id":0,"method":"initialize","params":{}})");
  const struct {
    std::string bytes;
    const char* last;  // a part of the last message; null when there is none
    bool asked;
  } cases[] = {
      {"", nullptr, false},
      {Framed(R"({"id":1,"method":"textDocument/hover","params":{}})"), "-32002", false},
      {start + Framed("{\"id\":1,"), "-32700", false},
      {start + Framed("[1,2]"), "-32600", false},
      {start + Framed(R"({"id":{},"method":"shutdown"})"), "-32600", false},
      {start + "Content-Length: -5\r\n\r\n" + Framed(R"({"id":9,"method":"shutdown"})"), "\"id\":9",
       true},
      {start + "X: y\r\n\r\n", "no Content-Length", false},
      {start + "Content-Length: 99999\r\n\r\n{}", "capabilities", false},
      {start + std::string(100000, 'x'), "capabilities", false},
      {start + Framed(R"({"id":1,"method":"shutdown"})") + Framed(R"({"method":"exit"})") + "rest",
       "null", true},
      {start + Framed(R"({"method":"textDocument/didChange","params":{"contentChanges":7}})") +
           Framed(R"({"id":"a","method":"initialize"})"),
       "not allowed now", false},
      {start +
           Framed(
               R"({"id":1,"method":"textDocument/documentSymbol","params":{"textDocument":{"uri":"no"}}})"),
       "not open", false},
      {"content-length:2 \n\n{}" + start, "capabilities", false},
  };
  for (const auto& row : cases) {
    bool asked = !row.asked;
    const std::vector<Json> messages = Messages(served(row.bytes, &asked));
    EXPECT_EQ(asked, row.asked) << row.bytes.substr(0, 200);
    ASSERT_EQ(messages.empty(), row.last == nullptr) << row.bytes.substr(0, 200);
    if (row.last == nullptr) continue;
    EXPECT_NE(messages.back().dump().find(row.last), std::string::npos) << messages.back().dump();
  }
}

}  // namespace
