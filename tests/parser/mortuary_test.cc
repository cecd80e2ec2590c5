// Parsers that scripts delete.

#include "gtest/gtest.h"
#include "tests/parser/CommandLine.h"

namespace {

// The names in the order of destruction.
std::string Gone;

YcluiParser* Reporting(YcluiParser* parser, const char* name) {
  parser->sysSetGoneProcedure([](void* word) { Gone += static_cast<const char*>(word); },
                              const_cast<char*>(name));
  return parser;
}

YcluiParser* Found(const YcluiParser* parser) {
  return YcluiParser::FindLive(reinterpret_cast<long>(parser));
}

TEST(Mortuary, DestroysEachParserOnceTheLastFirst) {
  Gone.clear();
  YcluiParser early;
  Reporting(&early, "early ");
  YcluiParser::CleanupMortuary();
  YcluiParser::AddDeadBody(&early);
  EXPECT_EQ(early.isCondemned(), 0u) << "without a mortuary";
  YcluiParser::CreateMortuary();
  YcluiParser* parsers[] = {Reporting(new YcluiParser, "a "), Reporting(new YcluiParser, "b "),
                            Reporting(new YcluiParser, "c "), Reporting(new YcluiParser, "d ")};
  CommandLine derived("go");
  EXPECT_EQ(YcluiParser::Live(1), parsers[0]);
  for (YcluiParser* parser : parsers) YcluiParser::AddDeadBody(parser);
  YcluiParser::AddDeadBody(parsers[1]);
  YcluiParser::AddDeadBody(&derived);
  YcluiParser::AddDeadBody(nullptr);
  EXPECT_TRUE(Found(parsers[2]) == nullptr && Found(&early) == &early);
  EXPECT_TRUE(YcluiParser::Live(0) == &early && YcluiParser::Live(1) == nullptr);
  parsers[2]->YcluiParser::~YcluiParser();  // by its host
  ::operator delete(parsers[2]);
  YcluiParser::CleanupMortuary();
  EXPECT_EQ(Gone, "c d b a ");
  EXPECT_EQ(derived.isCondemned(), 1u) << "still condemned, but alive";
  YcluiParser::AddDeadBody(&early);
  YcluiParser::DestroyMortuary();
  EXPECT_EQ(Gone, "c d b a ");
}

}  // namespace
