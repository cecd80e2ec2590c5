// Every code that the system pushes onto the error manager, with what it means. The system itself
// has no message texts: a host words them for its users.

#ifndef FOUNDATION_YERRCODES_H_
#define FOUNDATION_YERRCODES_H_

enum YErrCode : unsigned int {
  YErrNothing = 0,               // answered for an entry that does not exist
  YErrNoMemory = 2049,           // no memory
  YErrEndOfInput = 2050,         // the input ended inside a literal, or where one had to begin
  YErrNotANumber = 2051,         // no number here, or a variable's value that cannot serve as one
  YErrTooDeep = 2052,            // nesting too deep
  YErrBadPoint = 2053,           // malformed point
  YErrNoSuchWord = 2054,         // no such word, or the word is an alias
  YErrOutsideArray = 2055,       // an element outside the array
  YErrNoSyntax = 2056,           // a text came before the first syntax was set
  YErrNotAlive = 2057,           // not a live object of that kind
  YErrBadFormat = 2058,          // a script format with other conversions than it may have
  YErrNameExists = 2059,         // the name exists already
  YErrOutOfRange = 2060,         // an integer outside -2147483648 to 2147483647
  YErrNoWordTable = 2061,        // the word table could not be made
  YErrAmbiguous = 2062,          // a token led to the end of the syntax by more than one way
  YErrTextTooLong = 2063,        // a text would grow beyond YcluiLongestExpansion
  YErrBadTokenArgument = 2069,   // clui-token: a bad argument
  YErrBadSyntaxArgument = 2070,  // an argument of a type that a syntax primitive cannot use
  YErrBadTokenParser = 2071,     // clui-token: the first argument is no parser
  YErrIsAlias = 2072,            // addAlias: the name is already an alias
  YErrIsWord = 2073,             // addAlias: the name is already a word of another kind
  YErrNoSuchAlias = 2074,        // delAlias: the name is no alias
  YErrNotDetached = 2075,        // a word that was found could not be taken out of the table
  YErrFileIsPlayed = 2076,       // the file is being played
  YErrFileIsLogged = 2077,       // the file is being logged to
  YErrLogIsOpen = 2078,          // logging is on already
  YErrNotOpened = 2079,          // a file could not be opened
  YErrNotClosed = 2080,          // a file could not be written out or closed
  YErrInterruptRefused = 2082,   // the interrupted command does not admit this one
  YErrNoVariableTable = 2083,    // the variable table could not be made
  YErrNoText = 2084,             // a variable's value has no text
  YErrWrongKind = 2085,          // an array read or set as a simple variable, or the reverse
  YErrNoSuchVariable = 2086,     // no such variable
  YErrNoClosingBrace = 2087,     // the closing brace or bracket of a variable form is missing
};

#endif  // FOUNDATION_YERRCODES_H_
