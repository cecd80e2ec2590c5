// Parsers that scripts delete.

#include "gtest/gtest.h"
#include "tests/parser/CommandLine.h"

namespace {

// The names in the order of destruction.
std::string Gone;

YcluiParser* Telling(YcluiParser* parser, const char* name) {
  parser->sysSetGoneProcedure([](void* word) { Gone += static_cast<const char*>(word); },
                              const_cast<char*>(name));
  return parser;
}

YcluiParser* Found(const YcluiParser* parser) {
  return YcluiParser::FindLive(reinterpret_cast<long>(parser));
}

TEST(Mortuary, BuriesOnceFromTheLast) {
  Gone.clear();
  YcluiParser early;
  Telling(&early, "early ");
  YcluiParser::CleanupMortuary();
  YcluiParser::AddDeadBody(&early);
  EXPECT_EQ(early.isCondemned(), 0u) << "there is no mortuary yet";
  YcluiParser::CreateMortuary();
  YcluiParser* parsers[] = {Telling(new YcluiParser, "a "), Telling(new YcluiParser, "b "),
                            Telling(new YcluiParser, "c "), Telling(new YcluiParser, "d ")};
  CommandLine derived("go");
  EXPECT_EQ(YcluiParser::Live(1), parsers[0]);
  for (YcluiParser* parser : parsers) YcluiParser::AddDeadBody(parser);
  YcluiParser::AddDeadBody(parsers[1]);
  YcluiParser::AddDeadBody(&derived);
  YcluiParser::AddDeadBody(nullptr);
  EXPECT_TRUE(Found(parsers[2]) == nullptr && Found(&early) == &early);
  EXPECT_TRUE(YcluiParser::Live(0) == &early && YcluiParser::Live(1) == nullptr);
  parsers[2]->YcluiParser::~YcluiParser();  // its host's doing
  ::operator delete(parsers[2]);
  YcluiParser::CleanupMortuary();
  EXPECT_EQ(Gone, "c d b a ");
  EXPECT_EQ(derived.isCondemned(), 1u) << "alive, but no script's any more";
  YcluiParser::AddDeadBody(&early);
  YcluiParser::DestroyMortuary();
  EXPECT_EQ(Gone, "c d b a ");
}

}  // namespace
