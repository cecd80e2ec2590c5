// Command templates, compared with the forms as a regular expression describes them.

#include <regex>

#include "lex/YcluiLex.h"
#include "parser/YcluiCommandTemplate.h"
#include "tests/support/Choices.h"
#include "tests/support/lex_reader.h"

namespace {

constexpr int Context = -2;
constexpr long Number = 4711;

// A number of more than 9 digits selects nothing.
long NumberOf(const std::string& digits) {
  if (digits.empty()) return 0;
  const std::size_t first = digits.find_first_not_of("0-+ \t\n\v\f\r");
  if (first != std::string::npos && digits.size() - first > 9) {
    return digits.find('-') == std::string::npos ? 1L << 40 : -(1L << 40);
  }
  return std::stol(digits);
}

std::string PartOf(const YcluiToken& token, const std::string& selector, const std::string& part) {
  if (selector == "#") return std::to_string(token.id());
  const long k = selector.empty() ? -1 : NumberOf(part);
  if (k == -2) return std::to_string(token.id());
  if (k == -1) return token.string() == nullptr ? "" : token.string();
  if (k < 0 || k + 1 >= token.argc()) return "";
  std::string shown = Shown(*token[static_cast<int>(k) + 1]);
  if (shown[0] == 'p') shown.replace(shown.find(';'), 1, " ");
  return shown.substr(1);
}

std::string Expected(const std::string& given, const YcluiToken_Stack& tokens) {
  static const std::regex Form(
      R"(\\[\s\S]|\$(?:(c)|(p)|(?:(\$)|(-?[0-9]+|(?=-)))(#|\[((?:\s*[-+]?[0-9]+)?)[\s\S]?)?|[\s\S]?))");
  std::string filled;
  auto plain = given.begin();
  for (std::sregex_iterator i(given.begin(), given.end(), Form), end; i != end; ++i) {
    const std::smatch& m = *i;
    filled.append(plain, m[0].first);
    plain = m[0].second;
    const long last = tokens.count() - 1;
    long n = m[3].matched ? last : NumberOf(m[4]);
    if (n < 0) n += last;
    if (m[1].matched) {
      filled += std::to_string(Context);
    } else if (m[2].matched) {
      filled += std::to_string(Number);
    } else if (!m[3].matched && !m[4].matched) {
      filled += m[0];
    } else if (n >= 0 && n <= last) {
      filled += PartOf(tokens.at(static_cast<int>(n)), m[5].str().substr(0, 1), m[6]);
    }
  }
  return filled.append(plain, given.end());
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  Choices choices(bytes, count);
  const std::string given = choices.text();
  LexReader reader;
  YcluiToken_Stack tokens;
  reader.lex.setString(choices.text().c_str());
  while (reader.lex.more() != 0) {
    if (reader.lex.getNextToken(reader.token) == 0) reader.token = YcluiToken("odd");
    tokens.push(reader.token);
    if (reader.token.underConstruction() != 0) break;
  }
  YString result;
  YcluiFillTemplate(given.c_str(), static_cast<YWord>(Context), Number, tokens, result);
  Require(result.buffer == Expected(given, tokens), "the text that replaces the forms");
  return 0;
}
