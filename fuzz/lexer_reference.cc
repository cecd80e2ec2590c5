// The reference examines every byte, copies every text and compares with every word. It shares only
// values, ids and codes with the lexer.

#include "fuzz/lexer_reference.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "foundation/YEncoding.h"
#include "lex/YcluiLex.h"
#include "tests/support/Choices.h"
#include "tests/support/codes.h"
#include "tests/support/lex_reader.h"

namespace {

constexpr std::size_t LongestValue = 1U << 14;  // a run with a longer value is given up
constexpr int MostTokens = 4000;                // and one with more tokens
constexpr std::size_t MostExpanded = 1U << 20;  // and one with longer expansions in all
constexpr int MostExpansions = 3;               // aliases in each other's text

using Value = YAttribValue;

Value LongValue(std::int32_t number) {
  Value value;
  value.SetLong(number);
  return value;
}
Value DoubleValue(double number) {
  Value value;
  value.SetDouble(number);
  return value;
}
Value PointValue(std::int32_t x, std::int32_t y) {
  Value value;
  value.SetPoint(x, y);
  return value;
}
Value StringValue(const std::string& text) {
  return {text.c_str(), 0};
}

// The text of a number or a string, nothing for any other value.
std::optional<std::string> TextOf(const Value& value) {
  if (value.tag == YAttribLong) return std::to_string(value.GetLong());
  if (value.tag == YAttribString) return value.GetString();
  if (value.tag != YAttribDouble) return std::nullopt;
  YString text;
  text << value.GetDouble();
  return text.buffer;
}

bool IsSpace(char c) {
  return c != '\0' && std::string(" \t\n\v\f\r").find(c) != std::string::npos;
}
bool IsAnyOf(const std::string& set, char c) {
  return set.find(c) != std::string::npos;
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Whether two bytes, the second of which may be the end of the text, begin a double-byte character.
bool IsDouble(char first, char second) {
  if (!YEncoding::IsDoubleByte()) return false;
  const int lead = static_cast<unsigned char>(first);
  const int trail = static_cast<unsigned char>(second);
  if (lead < 0x81 || (lead > 0x9F && lead < 0xE0) || lead > 0xFC) return false;
  return trail == 0 || (trail >= 0x40 && trail != 0x7F && trail <= 0xFC);
}

std::string Lower(std::string text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsDouble(text[i], text.c_str()[i + 1])) {
      ++i;
    } else if (IsLetter(text[i])) {
      text[i] = static_cast<char>(text[i] | 0x20);
    }
  }
  return text;
}

struct Word {
  std::string name;
  std::optional<std::string> shortest = std::nullopt;
  std::string types = "";
  std::string aliasText = "";
  std::uint32_t type = YcluiTokenKeyword;
  std::uint32_t id = 0;

  std::string shortestForm() const { return shortest.value_or(name); }
  bool accepts(const std::string& key) const {
    return shortest ? key.starts_with(*shortest) && name.starts_with(key) : key == name;
  }
};

struct Token {
  std::uint32_t type = YcluiTokenKeyword;
  std::uint32_t id = 0;
  std::vector<Value> args{1};
  std::string whole;
  bool isOpen = false;

  void setArg0(const std::string& word) {
    args[0] = StringValue(word);
    rebuild();
  }
  void setValue(const Value& value, std::size_t index) {
    args.resize(index + 1);
    args[index] = value;
    rebuild();
  }
  void setWord(const Word& word) {
    type = word.type;
    id = word.id;
    args = {StringValue(word.name)};
    whole = word.name;
  }
  void rebuild() {
    whole = args[0].GetString();
    for (std::size_t i = 1; i < args.size(); ++i) {
      if (i > 1) whole += ',';
      const Value& value = args[i];
      const std::string quote = value.tag == YAttribString ? "\"" : "";
      whole += quote + TextOf(value).value_or("") + quote;
      YStatus ignored{0};
      if (value.tag != YAttribPoint) continue;
      whole +=
          std::to_string(value.GetPointX(ignored)) + ',' + std::to_string(value.GetPointY(ignored));
    }
  }
};

struct Variable {
  YcluiVariableKind kind = YcluiVariableSimple;
  std::vector<Value> values{1};
};

// A scanner reads from an offset and returns the offset after what it read; nothing on failure.
using Offset = std::optional<std::size_t>;

class Reference {
 public:
  std::vector<std::pair<unsigned, unsigned>> codes;  // with their severities
  std::vector<Word> words;                           // first added first
  std::map<std::string, Variable> variables{{"presenttime", {}}};
  bool gaveUp = false;  // the rest is not comparable
  std::size_t tokenStart = 0;
  std::vector<long> argumentStarts;  // of the present text; -1 for arguments of others
  bool hasFault = false;             // of the token read last

  std::size_t offset() const { return cursor_.value_or(text_.size()); }
  std::size_t suspended() const { return suspended_.size(); }

  void setString(const std::string& text) {
    argumentStarts.clear();
    text_ = text;
    cursor_ = skip(0);
  }
  void putString(const std::string& text) {
    text_ += text;
    cursor_ = cursor_.value_or(0);
  }
  void reset() {
    if (cursor_) text_.resize(*cursor_);
  }
  bool pushString(const std::string& text) {
    if (suspended_.size() == YcluiMostSuspendedTexts) return fail(YErrTooDeep);
    suspended_.emplace_back(text_, offset());
    setString(text);
    return true;
  }
  bool popString() {
    if (suspended_.empty()) return false;
    argumentStarts.clear();
    std::tie(text_, cursor_) = suspended_.back();
    suspended_.pop_back();
    return true;
  }
  bool more() {
    if (!cursor_ || at(*cursor_) == '\0') return false;
    cursor_ = skip(*cursor_);
    return cursor_.has_value();
  }

  std::uint32_t addKeyword(Word word) {
    if (find(word.name) != nullptr) return fail(YErrNameExists, YErrWarning);
    if (word.id == 0) word.id = nextId_;
    if (!keep(word)) return 0;
    ++nextId_;
    return word.id;
  }
  std::uint32_t addDelimiter(char byte) {
    const std::uint32_t id = addKeyword({std::string(1, byte)});
    if (id != 0) delimiters_ += byte;
    return id;
  }
  bool addAlias(const std::string& name, const std::string& text) {
    const Word* known = find(name);
    if (known == nullptr) return keep({name, {}, "", text, YcluiTokenAlias, YcluiIdAlias});
    return fail(known->type == YcluiTokenAlias ? YErrIsAlias : YErrIsWord, YErrWarning);
  }
  bool remove(const std::string& name, bool alias) {
    const Word* known = find(name);
    if (known == nullptr || (known->type == YcluiTokenAlias) != alias) {
      return fail(alias ? YErrNoSuchAlias : YErrNoSuchWord, YErrWarning);
    }
    words.erase(words.begin() + (known - words.data()));
    return true;
  }

  bool addVariable(const std::string& name, const Value& value) {
    Variable& known = variables.try_emplace(Lower(name), Variable()).first->second;
    if (known.kind == YcluiVariableSimple) known.values = {value};
    return known.kind == YcluiVariableSimple;
  }
  bool addVariable(const std::string& name, const Value& value, std::size_t from, std::size_t end) {
    const Variable none{YcluiVariableArray, {}};
    Variable& known = variables.try_emplace(Lower(name), none).first->second;
    if (known.kind != YcluiVariableArray) return false;
    if (known.values.size() < end) known.values.resize(end);
    for (std::size_t i = from; i < end; ++i) known.values[i] = value;
    return true;
  }

  bool getNextToken(Token& token) {
    hasFault = false;
    if (!more()) return false;
    tokenStart = *cursor_;
    hasFault = !readToken(token);
    return !hasFault;
  }

 private:
  bool readToken(Token& token) {
    if (token.isOpen) return readArguments(token, find(Lower(token.args[0].GetString())));
    argumentStarts.clear();
    if (opensForm(*cursor_)) return getForm(token);
    std::string text(1, at(*cursor_));
    bool announces = false;
    if (IsAnyOf(delimiters_, text[0])) {
      ++*cursor_;
    } else {
      cursor_ = unquoted(*cursor_, text, announces, ":", delimiters_);
      if (!cursor_) return false;
    }
    const Word* word = find(Lower(text));
    if (word == nullptr) {
      token.setArg0(text);
      token.id = announces ? YcluiIdFreeWord : YcluiIdNone;
      if (announces) token.isOpen = true;
      return announces && readArguments(token, nullptr);
    }
    token.setWord(*word);
    if (word->type == YcluiTokenAlias) token.setValue(StringValue(word->aliasText), 1);
    return word->type != YcluiTokenArgKeyword || readArguments(token, word);
  }

  std::string text_;
  Offset cursor_;  // none when the text is exhausted
  std::vector<std::pair<std::string, std::size_t>> suspended_;
  std::string delimiters_;
  std::uint32_t nextId_ = 5000;
  int indexNesting_ = 0;

  char at(std::size_t p) const { return p < text_.size() ? text_[p] : '\0'; }
  bool opensForm(std::size_t p) const { return at(p) == '$' && at(p + 1) == '{'; }
  bool startsDouble(std::size_t p) const { return IsDouble(at(p), at(p + 1)); }
  bool fail(unsigned code, unsigned severity = YErrError) {
    codes.emplace_back(code, severity);
    return false;
  }
  Offset refuse(unsigned code, unsigned severity = YErrError) {
    fail(code, severity);
    return std::nullopt;
  }

  Offset skip(std::size_t p) const {
    while (at(p) != '\0') {
      if (at(p) == '#') {
        while (at(p) != '\n' && at(p) != '\0') ++p;
      } else if (IsSpace(at(p))) {
        ++p;
      } else {
        return p;
      }
    }
    return std::nullopt;
  }

  // First stage: the shortest form is the name in lower case. Second stage: the name as given is
  // accepted.
  const Word* find(const std::string& name) const {
    const std::string key = Lower(name);
    for (const Word& word : words) {
      if (word.shortestForm() == key && word.accepts(key)) return &word;
    }
    for (const Word& word : words) {
      if (word.accepts(name)) return &word;
    }
    return nullptr;
  }
  // A word cannot be added when one of the same shortest form accepts its name.
  bool keep(Word word) {
    word.name = Lower(word.name);
    if (word.shortest) word.shortest = Lower(*word.shortest);
    for (const Word& other : words) {
      if (other.shortestForm() == word.shortestForm() && other.accepts(word.name)) return false;
    }
    words.push_back(word);
    return true;
  }

  bool readArguments(Token& token, const Word* word) {
    const std::string types = word == nullptr ? "" : word->types;
    std::size_t n = types.empty() ? 0 : token.args.size() - 1;
    bool done = types.size() <= n;
    Value value;
    for (;;) {
      const int type = done ? int{YcluiValueString} : types[n];
      if (!done && !more()) {
        token.isOpen = true;
        break;
      }
      if (!getArgument(value, type, n)) return false;
      token.setValue(value, ++n);
      if (types.size() <= n) {
        token.isOpen = false;
        done = true;
      }
      cursor_ = skip(*cursor_);
      if (!cursor_ || at(*cursor_) != ',') {
        if (!done) token.isOpen = true;
        break;
      }
      ++*cursor_;
    }
    return true;
  }

  bool getArgument(Value& value, int type, std::size_t index) {
    if (!more()) return false;
    const std::size_t p = *cursor_;
    argumentStarts.resize(index, -1);
    argumentStarts.push_back(static_cast<long>(p));
    if (type == YcluiValueString) cursor_ = stringArgument(p, value);
    if (type == YcluiValueFloat) cursor_ = opensForm(p) ? floatForm(p, value) : real(p, value);
    if (type == YcluiValueInteger) cursor_ = opensForm(p) ? longForm(p, value) : integer(p, value);
    if (type == YcluiValuePoint) cursor_ = point(p, value);
    return cursor_.has_value();
  }
  Offset stringArgument(std::size_t p, Value& value) {
    if (at(p) == '"' || at(p) == '\'') return quoted(p, value);
    return opensForm(p) ? stringForm(p, value) : unquotedValue(p, value);
  }

  Offset unquoted(std::size_t p, std::string& word, bool& announces, const std::string& introducers,
                  const std::string& stops) {
    word.clear();
    announces = false;
    while (at(p) != '\0' && !announces) {
      if (IsAnyOf(stops, at(p)) || IsSpace(at(p)) || opensForm(p)) break;
      const bool isDouble = startsDouble(p);
      if (isDouble || at(p) == '\\') {
        if (at(p + 1) == '\0') return refuse(YErrEndOfInput);
        if (isDouble) word += at(p);
        word += at(p + 1);
        p += 2;
      } else {
        announces = IsAnyOf(introducers, at(p));
        word += at(p++);
      }
    }
    return p;
  }
  Offset unquotedValue(std::size_t p, Value& value) {
    std::string text;
    bool announces = false;
    const Offset end = unquoted(p, text, announces, "", "," + delimiters_);
    value = StringValue(text);
    return end;
  }

  Offset quoted(std::size_t start, Value& value) {
    std::string text;
    std::size_t p = start + 1;
    while (at(p) != '\0' && at(p) != at(start)) {
      if (opensForm(p)) {
        const Offset end = stringForm(p, value);
        if (!end) return end;
        text += value.GetString();
        if (text.size() > LongestValue) gaveUp = true;
        if (gaveUp) return std::nullopt;
        p = *end;
        continue;
      }
      if (startsDouble(p)) {
        text += at(p++);
      } else if (at(p) == '\\') {
        ++p;
      }
      if (at(p) != '\0') text += at(p++);
    }
    value = StringValue(text);
    return at(p) == '\0' ? refuse(YErrEndOfInput) : Offset(p + 1);
  }

  // A decimal number, after white space.
  Offset number(std::size_t p, double& number) {
    while (IsSpace(at(p))) ++p;
    const std::size_t start = p;
    if (at(p) == '+' || at(p) == '-') ++p;
    int digits = 0;
    for (; IsDigit(at(p)); ++p) ++digits;
    if (at(p) == '.') {
      for (++p; IsDigit(at(p)); ++p) ++digits;
    }
    if (digits == 0) return refuse(YErrNotANumber);
    std::size_t exponent = p + 1;
    if (at(exponent) == '+' || at(exponent) == '-') ++exponent;
    if ((at(p) == 'e' || at(p) == 'E') && IsDigit(at(exponent))) {
      for (p = exponent; IsDigit(at(p));) ++p;
    }
    number = std::strtod(text_.substr(start, p - start).c_str(), nullptr);
    return p;
  }
  Offset real(std::size_t p, Value& value) {
    double found = 0;
    const Offset end = number(p, found);
    value = DoubleValue(found);
    return end;
  }
  bool cut(double number, Value& value) {
    if (number < -2147483648.0 || number > 2147483647.0) return fail(YErrOutOfRange);
    value = LongValue(static_cast<std::int32_t>(number));
    return true;
  }
  Offset integer(std::size_t p, Value& value) {
    double found = 0;
    const Offset end = number(p, found);
    return end && cut(found, value) ? end : std::nullopt;
  }
  Offset point(std::size_t p, Value& value) {
    Value x;
    Value y;
    Offset end = integer(p, x);
    if (end) end = skip(*end);
    end = end && at(*end) == ',' ? integer(*end + 1, y) : std::nullopt;
    value = PointValue(x.GetLong(), y.GetLong());
    return end ? end : refuse(YErrBadPoint, YErrWarning);
  }

  struct Form {
    std::string name;
    YcluiVariableKind kind = YcluiVariableSimple;
    std::size_t index = 0;
  };

  Offset closing(std::size_t p, char byte) {
    if (at(p) == byte) return p + 1;
    return refuse(at(p) == '\0' ? YErrEndOfInput : YErrNoClosingBrace);
  }
  Offset form(std::size_t p, Form& form) {
    for (p += 2;; ++p) {
      if (at(p) == '\\') ++p;
      if (!IsDigit(at(p)) && !IsLetter(at(p))) break;
      form.name += at(p);
    }
    form.name = Lower(form.name);
    const Offset end = closing(p, '}');
    if (!end || at(*end) != '[') return end;
    Value index;
    const Offset digits = indexAt(*end + 1, index);
    if (!digits) return std::nullopt;
    form.kind = YcluiVariableArray;
    form.index = static_cast<std::size_t>(index.GetLong());  // a negative index is in no array
    return closing(*digits, ']');
  }
  Offset indexAt(std::size_t p, Value& index) {
    if (!opensForm(p)) return integer(p, index);
    if (indexNesting_ == YcluiMostIndexNesting) return refuse(YErrTooDeep);
    ++indexNesting_;
    const Offset end = longForm(p, index);
    --indexNesting_;
    return end;
  }

  bool valueOf(const Form& form, Value& value) {
    const auto known = variables.find(form.name);
    if (known == variables.end()) return fail(YErrNoSuchVariable);
    const Variable& variable = known->second;
    if (variable.kind != form.kind) return fail(YErrWrongKind);
    if (form.index >= variable.values.size()) return fail(YErrOutsideArray);
    if (form.name == "presenttime") gaveUp = true;  // the two lexers may see different times
    value = variable.values[form.index];
    return !gaveUp;
  }
  Offset anyForm(std::size_t p, Value& value) {
    Form read;
    const Offset end = form(p, read);
    return end && valueOf(read, value) ? end : std::nullopt;
  }
  Offset stringForm(std::size_t p, Value& value) {
    const Offset end = anyForm(p, value);
    if (!end) return end;
    const std::optional<std::string> text = TextOf(value);
    if (!text) return refuse(YErrNotANumber);
    value = StringValue(*text);
    return end;
  }
  Offset floatForm(std::size_t p, Value& value) {
    const Offset end = anyForm(p, value);
    if (!end) return end;
    if (value.tag == YAttribLong) value = DoubleValue(value.GetLong());
    return value.tag == YAttribDouble ? end : refuse(YErrNotANumber);
  }
  Offset longForm(std::size_t p, Value& value) {
    const Offset end = anyForm(p, value);
    if (!end || value.tag == YAttribLong) return end;
    if (value.tag != YAttribDouble) return refuse(YErrNotANumber);
    return cut(value.GetDouble(), value) ? end : std::nullopt;
  }

  // A form that is a token: a reference or an assignment.
  bool getForm(Token& token) {
    Form read;
    cursor_ = form(*cursor_, read);
    if (!cursor_) return false;
    Value value;
    if (at(*cursor_) == '=') {
      cursor_ = settingValue(*cursor_ + 1, value);
      if (!cursor_ || !set(read, value)) return exhaust();
      token.id = YcluiIdVariable;
      return true;
    }
    if (!valueOf(read, value)) return exhaust();
    const std::optional<std::string> text = TextOf(value);
    if (!text) {
      fail(YErrNoText);
      return exhaust();
    }
    token.type = YcluiTokenAlias;
    token.id = YcluiIdAlias;
    token.setValue(StringValue(*text), 1);
    return true;
  }
  bool exhaust() {
    cursor_ = std::nullopt;
    return false;
  }
  Offset settingValue(std::size_t p, Value& value) {
    if (at(p) == '\0') return refuse(YErrEndOfInput);
    if (opensForm(p)) return anyForm(p, value);
    if (at(p) == '"' || at(p) == '\'') return quoted(p, value);
    return IsDigit(at(p)) ? real(p, value) : unquotedValue(p, value);
  }
  bool set(const Form& form, const Value& value) {
    const auto known = variables.find(form.name);
    if (known != variables.end() && known->second.kind != form.kind) return fail(YErrWrongKind);
    if (form.kind == YcluiVariableSimple) return addVariable(form.name, value);
    if (form.index >= YcluiMostElements) return fail(YErrOutsideArray);
    return addVariable(form.name, value, form.index, form.index + 1);
  }
};

// Carries out each operation with both lexers and compares the visible results as texts.
class Comparison {
 public:
  std::string difference;

  bool goesOn() const {
    return difference.empty() && !reference_.gaveUp && tokens_ < MostTokens &&
           expanded_ < MostExpanded;
  }

  void operate(char what, Choices& choices) {
    if (what == 'g') return readOne();
    if (what == 'x') return dropOpenToken();
    if (what == ')') return expect(reference_.popString(), lex_.popString());
    if (what == 'r') return reset();
    const std::string text = choices.text();
    const char* name = text.c_str();
    if (what == 't') return read(text, 0);
    if (IsAnyOf("Kkw;", what)) return addWord(what, text, choices);
    if (IsAnyOf("vil", what)) return setVariable(what, text, choices);
    if (what == 'd') expect(reference_.remove(text, false), lex_.delKeyword(name));
    if (what == 'u') expect(reference_.remove(text, true), lex_.delAlias(name));
    if (what == 'a') {
      const std::string replacement = choices.text();
      expect(reference_.addAlias(text, replacement), lex_.addAlias(name, replacement.c_str()));
    }
    if (what == 'p') {
      reference_.putString(text);
      expect(1, lex_.putString(name));
    }
    if (what == '(') expect(reference_.pushString(text), lex_.pushString(name));
  }

  void compareTables() {
    for (const Word& word : reference_.words) {
      const auto sameId = [&word](const Word& other) { return other.id == word.id; };
      const Word& first = *std::find_if(reference_.words.begin(), reference_.words.end(), sameId);
      const char* name = lex_.keyword(word.id);
      compare(first.name, name == nullptr ? "none" : name);
    }
    for (const auto& [name, expected] : reference_.variables) {
      YcluiVariable* variable = lex_.variable(name.c_str());
      if (variable == nullptr) return compare(name, "no variable");
      const bool isArray = variable->kind() == YcluiVariableArray;
      std::string values = std::to_string(variable->kind());
      for (std::uint32_t i = 0; i < variable->elementCount(); ++i) {
        values += ' ' + Shown(*variable->element(i));
      }
      if (!isArray && name != "presenttime") values += ' ' + Shown(*variable->valuePointer());
      std::string wanted = std::to_string(expected.kind);
      for (const Value& value : expected.values) {
        if (name != "presenttime") wanted += ' ' + Shown(value);
      }
      compare(wanted, values);
    }
  }

 private:
  YcluiLex lex_;
  YcluiToken token_;
  Reference reference_;
  Token expected_;
  std::uint64_t codesBefore_ = YErr.count();
  int tokens_ = 0;
  std::size_t expanded_ = 0;
  bool read_ = false;  // whether readOne read a token

  void compare(const std::string& wanted, const std::string& found) {
    if (difference.empty() && wanted != found) difference = "wanted " + wanted + ", got " + found;
  }

  // Compares what an operation returned and what it left.
  void expect(std::uint32_t wanted, std::uint32_t found) {
    if (reference_.gaveUp) return;
    std::string expected = std::to_string(wanted);
    for (const auto& [code, severity] : reference_.codes) {
      expected += '!' + CodeText(code, severity);
    }
    reference_.codes.clear();
    std::string actual = std::to_string(found);
    actual += CodesSince(codesBefore_, "!");
    codesBefore_ = YErr.count();
    expected += " at " + std::to_string(reference_.offset()) + " in " +
                std::to_string(reference_.suspended());
    actual += " at " + std::to_string(lex_.cursorOffset()) + " in " +
              std::to_string(lex_.suspendedTexts());
    compare(expected, actual);
  }

  void compareTokens() {
    std::string wanted = std::to_string(expected_.type) + ' ' + std::to_string(expected_.id) + ' ' +
                         (expected_.isOpen ? "open " : "") + expected_.whole;
    for (const Value& value : expected_.args) wanted += ' ' + Shown(value);
    std::string found = std::to_string(token_.type()) + ' ' + std::to_string(token_.id()) + ' ' +
                        (token_.underConstruction() != 0 ? "open " : "") + token_.wholeString();
    for (int i = 0; token_[i] != nullptr; ++i) found += ' ' + Shown(*token_[i]);
    compare(wanted, found);
    compare(std::to_string(reference_.tokenStart), std::to_string(lex_.tokenOffset()));
    for (std::size_t i = 0; i <= reference_.argumentStarts.size(); ++i) {
      const bool isKnown = i < reference_.argumentStarts.size();
      const long start = isKnown ? reference_.argumentStarts[i] : -1;
      compare(std::to_string(start), std::to_string(lex_.argumentOffset(static_cast<int>(i) + 1)));
    }
    const long fault = lex_.faultOffset();
    const bool isRead = fault >= lex_.tokenOffset() && fault <= lex_.cursorOffset();
    compare(reference_.hasFault ? "fault" : "none",
            fault < 0 ? "none" : (isRead ? "fault" : "fault outside its token"));
    compare(expected_.args[0].GetString(), token_.string() == nullptr ? "" : token_.string());
  }

  bool more() {
    const bool isMore = reference_.more();
    expect(isMore, lex_.more());
    return isMore && goesOn();
  }

  void readOne() {
    ++tokens_;
    const bool wanted = reference_.getNextToken(expected_);
    if (reference_.gaveUp) return;
    expect(wanted, lex_.getNextToken(token_));
    compareTokens();
    read_ = wanted;
    if (hasReplacement()) expanded_ += std::strlen(expected_.args[1].GetString());
  }
  bool hasReplacement() const {
    return read_ && expected_.type == YcluiTokenAlias && expected_.id == YcluiIdAlias;
  }

  // Reads a text as a parser does, including the texts of aliases.
  void read(const std::string& text, int nesting) {
    if (more()) {
      reference_.putString(text);
      lex_.putString(text.c_str());
    } else {
      reference_.setString(text);
      lex_.setString(text.c_str());
    }
    while (more()) {
      readOne();
      if (!goesOn()) return;
      if (!read_) {
        dropOpenToken();
      } else if (expected_.isOpen) {
        return;
      } else if (hasReplacement() && nesting < MostExpansions) {
        readInstead(expected_.args[1].GetString(), nesting);
      }
    }
  }
  void readInstead(const std::string& text, int nesting) {
    expect(reference_.pushString(""), lex_.pushString(""));
    read(text, nesting + 1);
    if (goesOn()) expect(reference_.popString(), lex_.popString());
  }

  void reset() {
    reference_.reset();
    lex_.reset();
    expect(0, 0);
  }
  void dropOpenToken() {
    if (!expected_.isOpen) return;
    token_ = YcluiToken(token_.string());
    const std::string word = expected_.args[0].GetString();
    expected_ = Token();
    expected_.setArg0(word);
  }

  void addWord(char what, const std::string& name, Choices& choices) {
    if (what == ';') {
      const char byte = name.empty() ? ';' : name[0];
      return expect(reference_.addDelimiter(byte), lex_.addKeyword(byte, 0));
    }
    const std::string more = what == 'K' ? "" : choices.text();
    if (what != 'w') {
      Word word{name};
      if (what == 'k') word.shortest = more;
      const char* shortest = what == 'k' ? more.c_str() : nullptr;
      const std::uint32_t id = word.id = choices.byte();
      return expect(reference_.addKeyword(word), lex_.addKeyword(name.c_str(), shortest, id));
    }
    Word word{name, {}, "", "", YcluiTokenArgKeyword};
    std::vector<YcluiValueType> types;
    for (const char byte : more) {
      types.push_back(YcluiValueType(static_cast<unsigned char>(byte) % 6));
      word.types += static_cast<char>(types.back());
    }
    const int count = static_cast<int>(types.size());
    expect(reference_.addKeyword(word), lex_.addKeyword(name.c_str(), count, types.data(), 0));
  }

  void setVariable(char what, const std::string& name, Choices& choices) {
    const std::string text = choices.text();
    Value value;
    if (!text.empty()) value = LongValue(std::atoi(text.c_str()));
    if (text == ",") value = PointValue(7, -8);
    if (text == ".") value = DoubleValue(1e10);
    if (text[0] == '=') value = StringValue(text.substr(1));
    if (what == 'v') {
      return expect(reference_.addVariable(name, value), lex_.addVariable(name.c_str(), value));
    }
    const unsigned n = choices.byte();
    if (what == 'i') {
      return expect(reference_.addVariable(name, value, n, n + 1),
                    lex_.addVariable(name.c_str(), value, n));
    }
    const std::vector<YAttribValue> values(n, value);
    expect(reference_.addVariable(name, value, 0, n),
           lex_.addVariable(name.c_str(), n, values.data()));
  }
};

}  // namespace

std::string CompareLexers(const std::uint8_t* bytes, std::size_t count) {
  Choices choices(bytes, count);
  Comparison comparison;
  while (choices.more() && comparison.goesOn()) {
    comparison.operate(static_cast<char>(choices.byte()), choices);
  }
  if (comparison.goesOn()) comparison.compareTables();
  return comparison.difference;
}

std::string CompareLexers(std::string operations) {
  std::replace(operations.begin(), operations.end(), '~', '\0');
  return CompareLexers(reinterpret_cast<const std::uint8_t*>(operations.data()), operations.size());
}
