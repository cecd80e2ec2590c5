#include "tests/support/steps.h"

#include <algorithm>
#include <sstream>

std::vector<Step> StepsOf(const std::string& script, char separator) {
  std::vector<Step> steps;
  std::istringstream in(script);
  for (std::string step; std::getline(in, step, separator);) {
    if (!step.empty() && step[0] == ' ') step.erase(0, 1);
    if (step.empty() || step[0] != '^') {
      steps.push_back({"", step});
      continue;
    }
    if (step.back() == ' ') step.pop_back();
    const std::size_t end = std::min(step.find(' '), step.size());
    steps.push_back({step.substr(1, end - 1), step.substr(std::min(end + 1, step.size()))});
  }
  return steps;
}

const std::map<std::string, ParserOperation> ParserOperations = {
    {"count", [](auto& p, auto& text) { return YWord(p.interpret(text.c_str())); }},
    {"nothing", [](auto& p, auto&) { return YWord(p.interpret(nullptr)); }},
    {"inside", [](auto& p, auto& text) { return p.pushToken(text.c_str()); }},
    {"token",
     [](auto& p, auto& word) {
       YcluiToken token = p.makeToken(word.c_str());
       return p.pushToken(token);
     }},
    {"dummy", [](auto& p, auto& word) { return p.pushDummyToken(word.c_str()); }},
    {"exhaust", [](auto& p, auto&) { return p.exhaust(), 1u; }},
    {"drop", [](auto& p, auto&) { return p.dropOpenToken(), 1u; }},
    {"open", [](auto& p, auto&) { return p.tokenIsOpen(); }},
    {"alias", [](auto& p, auto&) { return p.isAliasRun(); }},
    {"offset", [](auto& p, auto&) { return YWord(p.lastTokenOffset()); }},
    {"find", [](auto& p, auto& word) { return YWord(p.findToken(word.c_str())); }},
    {"untoken", [](auto& p, auto&) { return p.popToken() == nullptr ? 0u : 1u; }},
    {"remove", [](auto& p, auto& i) { return p.removeToken(YWord(std::stoi(i))); }},
    {"reset", [](auto& p, auto&) { return p.reset(), 1u; }},
    {"push", [](auto& p, auto&) { return p.pushFrame(); }},
    {"pop", [](auto& p, auto&) { return p.popFrame(); }},
    {"depth", [](auto& p, auto&) { return YWord(p.nestingDepth()); }},
    {"unword", [](auto& p, auto& word) { return p.lex()->delKeyword(word.c_str()); }},
    {"put", [](auto& p, auto& text) { return p.lex()->putString(text.c_str()); }},
    {"suspend", [](auto& p, auto& text) { return p.lex()->pushString(text.c_str()); }},
    {"resume", [](auto& p, auto&) { return p.lex()->popString(); }},
    {"mute", [](auto& p, auto&) { return p.enableEcho(0), 1u; }},
    {"untok", [](auto& p, auto&) { return p.setTokCallback(nullptr, nullptr), 1u; }},
    {"unrefuse", [](auto& p, auto&) { return p.setTokRefuseCallback(nullptr, nullptr), 1u; }},
    {"unecho", [](auto& p, auto&) { return p.setEchoProcedure(nullptr, nullptr), 1u; }},
    {"unsyn", [](auto& p, auto&) { return p.setSynCallback(nullptr, nullptr), 1u; }},
    {"unfield", [](auto& p, auto&) { return p.sysSetEchoProcedure(nullptr, nullptr), 1u; }},
    {"unformat", [](auto& p, auto&) { return p.sysSetSynCallback(nullptr, nullptr), 1u; }},
    {"log", [](auto& p, auto& file) { return p.startLogging(file.c_str(), 0); }},
    {"append", [](auto& p, auto& file) { return p.startLogging(file.c_str(), 1); }},
    {"write", [](auto& p, auto& text) { return p.writeToLog(text.c_str()); }},
    {"nest", [](auto& p, auto& n) { return p.nestStyle(YcluiLogNestStyle(std::stoi(n))), 1u; }},
    {"shut", [](auto& p, auto&) { return p.shutLogging(); }},
    {"play", [](auto& p, auto& file) { return p.playbackFromLog(file.c_str()); }},
    {"pause", [](auto& p, auto&) { return p.pausePlayback(), 1u; }},
    {"continue", [](auto& p, auto&) { return p.continuePlayback(); }},
    {"playing", [](auto& p, auto&) { return p.isPlaybackRun(); }},
    {"condemn", [](auto& p, auto&) { return YcluiParser::AddDeadBody(&p), 1u; }},
    {"bury", [](auto&, auto&) { return YcluiParser::CleanupMortuary(), 1u; }},
};
