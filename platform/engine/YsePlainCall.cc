// Reading the text of most commands: a single call of a name with constant arguments. Guile's
// reader is ten times slower than the rest of such a call.
//
// The result is always what Guile would read. Text whose meaning could differ, or can be changed by
// the options of Guile's reader, is left to Guile: a name with a capital letter or a colon, a
// number with an exponent, a string with escapes other than \" and \\, a byte outside ASCII.

#include <charconv>
#include <cstring>

#include "foundation/YAscii.h"
#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

constexpr std::size_t MostDigits = 18;  // always fits a long

// Guile does not treat a vertical tab as white space.
bool IsBlank(char c) {
  return c != '\v' && YIsWhiteSpace(c);
}

bool BeginsName(char c) {
  return YIsLower(c) || (c != '\0' && std::strchr("!$%&*/<=>?^_~", c) != nullptr);
}

bool ContinuesName(char c) {
  return BeginsName(c) || YIsDigit(c) || c == '-' || c == '+' || c == '.' || c == '@';
}

// Each function returns SCM_UNDEFINED for text that is left to Guile. Called from Scheme, may
// raise.
class PlainReader {
 public:
  explicit PlainReader(const char* text) : at_(text) {}

  SCM call() {
    skipBlanks();
    if (*at_ != '(') return SCM_UNDEFINED;
    ++at_;
    const SCM name = this->name();
    if (SCM_UNBNDP(name)) return SCM_UNDEFINED;
    SCM reversed = scm_list_1(name);
    for (skipBlanks(); *at_ != ')'; skipBlanks()) {
      const SCM value = constant();
      if (SCM_UNBNDP(value)) return SCM_UNDEFINED;
      reversed = scm_cons(value, reversed);
    }
    ++at_;
    skipBlanks();
    return *at_ == '\0' ? scm_reverse_x(reversed, SCM_EOL) : SCM_UNDEFINED;
  }

 private:
  const char* at_;

  void skipBlanks() {
    while (IsBlank(*at_)) ++at_;
  }

  // Whether the name or constant before `at_` is complete.
  bool isEnded() const { return IsBlank(*at_) || *at_ == ')'; }

  SCM name() {
    const char* const start = at_;
    if (!BeginsName(*at_)) return SCM_UNDEFINED;
    while (ContinuesName(*at_)) ++at_;
    if (!isEnded()) return SCM_UNDEFINED;
    return scm_from_latin1_symboln(start, static_cast<std::size_t>(at_ - start));
  }

  SCM constant() {
    if (*at_ == '"') return string();
    if (*at_ == '#') return boolean();
    if (*at_ == '\'') return quotation();
    return number();
  }

  SCM quotation() {
    ++at_;
    const SCM name = this->name();
    return SCM_UNBNDP(name) ? SCM_UNDEFINED : scm_list_2(TheEngine().quoteSymbol, name);
  }

  SCM boolean() {
    const char letter = at_[1];
    if (letter != 't' && letter != 'f') return SCM_UNDEFINED;
    at_ += 2;
    if (!isEnded() || hasOtherMeaning(letter)) return SCM_UNDEFINED;
    return scm_from_bool(letter == 't');
  }

  // Whether a script has installed a reader for "#" and this letter.
  static bool hasOtherMeaning(char letter) {
    const SCM meanings = scm_fluid_ref(TheEngine().hashReaders);
    return scm_is_true(scm_assv(SCM_MAKE_CHAR(letter), meanings));
  }

  SCM string() {
    const char* const start = ++at_;
    bool hasEscapes = false;
    for (; *at_ != '"'; ++at_) {
      if (*at_ == '\0' || static_cast<unsigned char>(*at_) >= 128) return SCM_UNDEFINED;
      if (*at_ != '\\') continue;
      hasEscapes = true;
      ++at_;
      if (*at_ != '"' && *at_ != '\\') return SCM_UNDEFINED;
    }
    const std::string_view text(start, static_cast<std::size_t>(at_ - start));
    ++at_;
    if (!isEnded()) return SCM_UNDEFINED;
    return hasEscapes ? withoutEscapes(text) : scm_from_latin1_stringn(text.data(), text.size());
  }

  static SCM withoutEscapes(std::string_view text) {
    std::string& bytes = TheEngine().bytes;
    bytes.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '\\') ++i;
      bytes.push_back(text[i]);
    }
    return scm_from_latin1_stringn(bytes.data(), bytes.size());
  }

  // Returns the number of digits.
  std::size_t skipDigits() {
    const char* const start = at_;
    while (YIsDigit(*at_)) ++at_;
    return static_cast<std::size_t>(at_ - start);
  }

  SCM number() {
    const bool hasPlus = *at_ == '+';  // not accepted by from_chars
    const char* const start = hasPlus ? at_ + 1 : at_;
    if (hasPlus || *at_ == '-') ++at_;
    const std::size_t digits = skipDigits();
    if (digits == 0) return SCM_UNDEFINED;
    if (*at_ == '.') return decimal(start);
    if (digits > MostDigits || !isEnded()) return SCM_UNDEFINED;
    long number = 0;
    std::from_chars(start, at_, number);
    return scm_from_long(number);
  }

  SCM decimal(const char* start) {
    ++at_;
    if (skipDigits() == 0 || !isEnded()) return SCM_UNDEFINED;
    double number = 0;
    if (std::from_chars(start, at_, number).ec != std::errc()) return SCM_UNDEFINED;
    return scm_from_double(number);
  }
};

}  // namespace

SCM ReadPlainCall(const char* text) {
  return PlainReader(text).call();
}

}  // namespace yse
