;;; The keys of a terminal.
;;;
;;; clui runs this file before the script of a language. A language can therefore bind a key to
;;; another action with terminal-key, redefine any of the procedures below, or attach the field of
;;; the terminal itself. The other terminal- procedures are part of clui.
;;;
;;; The action of a key begins with "(terminal-" if it prints with terminal-print only. Before any
;;; other action the line being typed is hidden, since its output would overwrite the line.

(define terminal-binding #f) ; attaches the field to the parser
(define terminal-parser #f)

;; Each key and its action. Keys without a character arrive as control characters: Up as Control-P,
;; Down as Control-N, Return as Control-M, Tab as Control-I, Backspace as Control-H. Any other key
;; edits the word.
(define terminal-keys
  '((#\space . "(terminal-blank)")
    (#\" . "(terminal-quote)")
    (#\backspace . "(terminal-erase)")
    (#\return . "(terminal-return)")
    (#\tab . "(terminal-tab)")
    (#\? . "(terminal-question)")
    (#\x10 . "(terminal-up)")
    (#\x0e . "(terminal-down)")
    (#\esc . "(terminal-escape)")
    (#\x03 . "(terminal-escape)")       ; Control-C
    (#\x04 . "(terminal-end)")          ; Control-D
    (#\x17 . "(terminal-back)")         ; Control-W
    (#\x0c . "(terminal-clear)")))      ; Control-L

;; How typed text is sent: a line at Return, or each word at its end.
(define (terminal-mode mode)
  (case mode
    ((line word) (terminal-send-words (eq? mode 'word)))
    (else (error "terminal-mode: expected line or word, found" mode))))

;; Sets colours, as CLUI_COLOURS does, which comes after it. Before the session begins.
(define (terminal-colours text)
  (let ((fault (terminal-set-colours text)))
    (if (string? fault) (error (string-append "terminal-colours: " fault)))))

;; Called when Control-C is typed in a line, which is dropped.
(define (terminal-interrupt parser) (terminal-give-up parser))

;; Attaches the field to a parser, with these keys. clui calls this after the script of a language
;; that has not attached the field itself.
(define (terminal-attach parser)
  (terminal-use (clui-attach-field parser (terminal-field)) parser))

;; Sets these keys on a binding that a language has created.
(define (terminal-use binding parser)
  (set! terminal-binding binding)
  (set! terminal-parser parser)
  (for-each (lambda (key) (clui-set-keystroke-action binding (car key) (cdr key)))
            (reverse terminal-keys)))

;; Binds a key to another action.
(define (terminal-key character text)
  (set! terminal-keys (cons (cons character text) terminal-keys))
  (if terminal-binding (clui-set-keystroke-action terminal-binding character text)))

;;; The word being typed

(define (terminal-word) (clui-refer-current-word terminal-binding))

(define (terminal-put word) (clui-replace-current-word terminal-binding word))

(define (terminal-send word) (clui-replace-current-word terminal-binding word #t))

(define (terminal-drop-word) (terminal-put ""))

;; Called when a key has edited the word, to set the field's text to it.
(define (terminal-update) (clui-replace-current-word (terminal-attached) (terminal-typed)))

;;; Keys
;;;
;;; terminal-edit does what a key does without an action: it edits the word, completes it, opens the
;;; list or recalls a line.

;; A word ends where it ends for the parser: not in a quote, nor after a backslash or a comma; a
;; comment ends at Return. In the middle of the word a blank is inserted. The binding ignores keys in a quote; terminal-quote
;; inserts a quote without the binding, so that it never regards one as open.
(define (terminal-blank)
  (if (terminal-at-end?)
      (terminal-end-word " ")
      (terminal-insert " ")))

(define (terminal-return) (terminal-end-word "\n"))

(define (terminal-end-word blank)
  (let* ((word (terminal-word)) (text (terminal-ended terminal-parser word blank)))
    (cond ((string-null? word) #f)
          (text (terminal-send text))
          (else (terminal-put (string-append word " "))))))

(define (terminal-quote) (terminal-insert "\""))

(define (terminal-erase) (terminal-edit))

(define (terminal-tab) (terminal-edit))

(define (terminal-question) (terminal-edit))

(define (terminal-up) (terminal-edit))

(define (terminal-down) (terminal-edit))

(define (terminal-back) (terminal-edit))

(define (terminal-escape)
  (terminal-drop-word)
  (terminal-give-up terminal-parser))

(define (terminal-end)
  (if (string-null? (terminal-word)) (terminal-leave) (terminal-edit)))
