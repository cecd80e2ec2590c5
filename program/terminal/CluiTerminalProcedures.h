// The Scheme procedures of the terminal.

#ifndef PROGRAM_TERMINAL_CLUITERMINALPROCEDURES_H_
#define PROGRAM_TERMINAL_CLUITERMINALPROCEDURES_H_

#include "program/terminal/CluiTerminalSettings.h"

// Binds the procedures below and runs the prelude, which declares the keys. Without a session,
// those that concern it do nothing and return #f; terminal-empty? returns #t and terminal-field a
// null handle. P is a parser, WORD the word being typed. REQUIRES: the engine has been started.
//
//   (terminal-field)              the field of the terminal
//   (terminal-print TEXT)         prints TEXT above the line being typed
//   (terminal-mode MODE)          how typed text is sent: line, a line at Return, as at first; or
//                                 word, each word at its end. Before the session begins
//   (terminal-colours TEXT)       sets colours, see YcluiColours::read. Before the session begins
//   (terminal-prompt READY OPEN)  sets the prompts: without and with an unfinished command
//   (terminal-leave)              ends the session
//   (terminal-edit)               does what the present key does by itself
//   (terminal-insert TEXT)        inserts TEXT at the cursor
//   (terminal-at-end?)            whether the cursor is at the end of the word
//   (terminal-attached)           the binding of the field of the terminal
//   (terminal-typed)              the word being typed, as the line editor has it
//   (terminal-reload)             loads the language again after the line or word; #f, and does
//                                 nothing, before the session begins and without one
//   (terminal-complete P WORD)    the completion of WORD, ignoring case: a text; #t when WORD is
//                                 whole and nothing else matches; #f when nothing matches
//   (terminal-list P WORD)        lists what can continue WORD, up to the height of the window, or
//                                 says which argument comes; #f when there is neither
//   (terminal-older WORD)         the previous line of the history that begins with WORD, or #f
//   (terminal-newer)              the next one, WORD after the newest, or #f
//   (terminal-give-up P)          drops the unfinished command, or the frame when there is none
//   (terminal-take-back P)        removes the last word of the command line, or the open token
//   (terminal-empty?)             whether nothing is typed and no command is unfinished
//   (terminal-in-argument? P WORD) whether WORD ends inside an argument
//   (terminal-ended P WORD BLANK) the text to send to the parser when BLANK, a blank or a newline,
//                                 is typed after WORD; #f when BLANK does not end WORD
//   (terminal-last-key)           the previous key if it was a control character, or #f
//   (terminal-pasting?)           whether a paste is being read
//   (terminal-bell) (terminal-clear)
//
// False when the prelude failed, which has been reported.
bool CluiBindTerminalProcedures(CluiTerminalSettings& settings);

// Runs the prelude once more, so that all it defines is as it was before the script. False when it
// failed, which has been reported.
bool CluiRunPrelude();

#endif  // PROGRAM_TERMINAL_CLUITERMINALPROCEDURES_H_
