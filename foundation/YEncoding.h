// The encodings of the process.

#ifndef FOUNDATION_YENCODING_H_
#define FOUNDATION_YENCODING_H_

#include "foundation/YTypes.h"

// The encoding of text inside the process is one setting. All texts that the library is given and
// returns are in it: commands, names of words, logs, texts for a script engine.
//
//   YEncoding::SetInside(YEncoding::Utf8);  // at the beginning of main
//   YcluiParser parser;
class YQRT_API YEncoding {
 public:
  enum Kind : std::uint32_t {
    ShiftJis,  // code page 932, the default
    Utf8,      // any bytes; those that are not UTF-8 are kept and have no meaning
  };

  // Chooses the encoding inside and returns 1. Must be called before the first lexer or parser is
  // created and before the script engine starts; these fix the setting for the rest of the process.
  // Returns 0 with YErrEncodingIsFixed, as YErrWarning, when it is fixed to the other encoding, and
  // changes nothing.
  static YWord SetInside(Kind kind);
  static Kind InsideKind() { return inside_; }
  // Whether characters of two bytes exist, whose second byte can have an ASCII value. In UTF-8 no
  // byte above 0x7F has a meaning, so nothing needs to know where characters start.
  static bool IsDoubleByte() { return inside_ == ShiftJis; }
  // Fixes the setting. For what depends on it, on being created; may be called by any thread.
  static void Fix();

  // The name of the encoding inside for iconv: CP932 or UTF-8. It is not SHIFT_JIS, which converts
  // a backslash to a yen sign.
  static const char* Inside() { return IsDoubleByte() ? "CP932" : "UTF-8"; }
  // Its name in messages.
  static const char* InsideInWords() { return IsDoubleByte() ? "code page 932" : "UTF-8"; }

  // The encoding of the locale, by a name for iconv: of file names and of the files that scripts
  // read and write. A locale with ASCII only, as in a process that never calls setlocale, is
  // treated as UTF-8, because file names with other characters are made by programs that use UTF-8.
  static const char* OfLocale();

 private:
  static Kind inside_;
};

#endif  // FOUNDATION_YENCODING_H_
