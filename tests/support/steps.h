// Steps of a script for a parser: texts, and operations under short names.

#ifndef TESTS_SUPPORT_STEPS_H_
#define TESTS_SUPPORT_STEPS_H_

#include <map>
#include <string>
#include <vector>

#include "parser/YcluiParser.h"

// "^name given" is an operation; anything else is a text, and has no name.
struct Step {
  std::string name;
  std::string given;
};

// The steps of a script, which a separator and a blank divide.
std::vector<Step> StepsOf(const std::string& script, char separator);

// What works on any parser.
using ParserOperation = YWord (*)(YcluiParser& parser, const std::string& given);
extern const std::map<std::string, ParserOperation> ParserOperations;

#endif  // TESTS_SUPPORT_STEPS_H_
