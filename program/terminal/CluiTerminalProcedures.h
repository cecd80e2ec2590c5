// What keys of a terminal can do beside what the library offers.

#ifndef PROGRAM_TERMINAL_CLUITERMINALPROCEDURES_H_
#define PROGRAM_TERMINAL_CLUITERMINALPROCEDURES_H_

// Binds the procedures below and runs the prelude, which declares the keys. The engine has been
// started. Without a session they do nothing and answer #f; the field is a null handle then. P is a
// parser.
//
//   (terminal-field)              the field that is typed into
//   (terminal-print TEXT)         prints TEXT above the line being typed
//   (terminal-prompt READY OPEN)  the prompt, and that while a command is open
//   (terminal-leave)              leaves
//   (terminal-complete P WORD)    how far WORD can be carried on, whatever its case: a text; #t
//                                 when it is a whole word that nothing can follow; #f when nothing
//                                 fits
//   (terminal-list P WORD)        prints what may come here and begins with WORD, as much
//                                 as the window holds; #f when nothing may
//   (terminal-older WORD)         the line before in the history, or #f; WORD comes back last
//   (terminal-newer)              the line behind, or #f
//   (terminal-give-up P)          drops the half-typed command, or the frame when there is none
//   (terminal-take-back P)        drops the last word that the parser has, or the half-read one
//   (terminal-empty?)             whether nothing is typed and no command is under way
//   (terminal-in-argument? P WORD) whether the end of WORD is in the middle of an argument
//   (terminal-ended P WORD BLANK) the text by which the parser is given WORD, which BLANK, a blank
//                                 or a newline, ends; #f when the word goes on behind it
//   (terminal-last-key)           the control character of the key before, or #f
//   (terminal-pasting?)           whether what comes is pasted
//   (terminal-bell) (terminal-clear)
//
// False when the prelude failed; the error was told.
bool CluiBindTerminalProcedures();

#endif  // PROGRAM_TERMINAL_CLUITERMINALPROCEDURES_H_
