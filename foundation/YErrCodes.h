// Every code that the library records in the error manager. The library has no message texts; a
// host words them for its users.

#ifndef FOUNDATION_YERRCODES_H_
#define FOUNDATION_YERRCODES_H_

enum YErrCode : unsigned int {
  YErrNothing = 0,               // no error: returned for an entry that does not exist
  YErrNoMemory = 2049,           // no memory
  YErrEndOfInput = 2050,         // the input ended inside a literal, or where one was expected
  YErrNotANumber = 2051,         // expected a number, or a variable whose value is one
  YErrTooDeep = 2052,            // nesting too deep
  YErrBadPoint = 2053,           // malformed point
  YErrNoSuchWord = 2054,         // no such word, or the word is an alias
  YErrOutsideArray = 2055,       // an element outside the array
  YErrNoSyntax = 2056,           // a text came before the first syntax was set
  YErrNotAlive = 2057,           // the argument is no existing object of that kind
  YErrBadFormat = 2058,          // invalid conversions in a format of a script
  YErrNameExists = 2059,         // the name already exists
  YErrOutOfRange = 2060,         // an integer outside -2147483648 to 2147483647
  YErrNoWordTable = 2061,        // the word table could not be created
  YErrAmbiguous = 2062,          // more than one path led from a token to the end of the syntax
  YErrTextTooLong = 2063,        // an expansion would exceed YcluiLongestExpansion
  YErrEncodingIsFixed = 2064,    // the encoding inside cannot be changed any more
  YErrOtherEncoding = 2065,      // the text of a file is not in the encoding inside
  YErrBadTokenArgument = 2069,   // clui-token: invalid argument
  YErrBadSyntaxArgument = 2070,  // a syntax primitive got an argument of another type
  YErrBadTokenParser = 2071,     // clui-token: the first argument is no parser
  YErrIsAlias = 2072,            // addAlias: the name is already an alias
  YErrIsWord = 2073,             // addAlias: the name is already a word of another kind
  YErrNoSuchAlias = 2074,        // delAlias: the name is no alias
  YErrNotDetached = 2075,        // a word that was found could not be removed from the table
  YErrFileIsPlayed = 2076,       // the file is being played
  YErrFileIsLogged = 2077,       // the file is being logged to
  YErrLogIsOpen = 2078,          // logging is already on
  YErrNotOpened = 2079,          // a file could not be opened
  YErrNotClosed = 2080,          // a file could not be written out or closed
  YErrInterruptRefused = 2082,   // the current command may not be interrupted by this one
  YErrNoVariableTable = 2083,    // the variable table could not be created
  YErrNoText = 2084,             // a variable's value has no text
  YErrWrongKind = 2085,          // an array read or set as a simple variable, or the reverse
  YErrNoSuchVariable = 2086,     // no such variable
  YErrNoClosingBrace = 2087,     // the closing brace or bracket of a variable form is missing
};

#endif  // FOUNDATION_YERRCODES_H_
