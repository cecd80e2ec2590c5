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
;; Down as Control-N, Return as Control-M, Tab as Control-I, Backspace as Control-H.
(define terminal-keys
  '((#\space . "(terminal-blank)")
    (#\" . "(terminal-quote)")
    (#\backspace . "(terminal-erase)")
    (#\return . "(terminal-return)")
    (#\tab . "(terminal-tab)")
    (#\? . "(terminal-question)")
    (#\# . "(terminal-number-sign)")
    (#\x10 . "(terminal-up)")
    (#\x0e . "(terminal-down)")
    (#\esc . "(terminal-escape)")
    (#\x03 . "(terminal-escape)")       ; Control-C
    (#\x04 . "(terminal-end)")          ; Control-D
    (#\x17 . "(terminal-back)")         ; Control-W
    (#\x15 . "(terminal-drop-word)")    ; Control-U
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

;;; Keys

;; A word ends where it ends for the parser: not in a quote, nor after a backslash or a comma. The
;; binding ignores keys in a quote. terminal-quote and terminal-erase replace the word instead of
;; typing and deleting quotes, so the binding never regards a quote as open.
(define (terminal-blank) (terminal-end-word " "))

(define (terminal-return) (terminal-end-word "\n"))

(define (terminal-end-word blank)
  (let* ((word (terminal-word)) (text (terminal-ended terminal-parser word blank)))
    (cond ((string-null? word) #f)
          (text (terminal-send text))
          (else (terminal-put (string-append word " "))))))

(define (terminal-quote) (terminal-put (string-append (terminal-word) "\"")))

(define (terminal-erase)
  (let ((word (terminal-word)))
    (if (string-null? word)
        (terminal-bell)
        (terminal-put (string-drop-right word 1)))))

;; Completes the word as far as possible. The second time, lists the words that begin with it.
(define (terminal-tab)
  (let* ((word (terminal-word))
         (more (terminal-complete terminal-parser word)))
    (cond ((and (string? more) (not (string=? more word))) (terminal-put more))
          ((equal? (terminal-last-key) "\t") (terminal-show word))
          (else (terminal-bell)))))

;; Lists the words that can come next. In an argument and in a paste, types a question mark.
(define (terminal-question)
  (let ((word (terminal-word)))
    (if (or (terminal-pasting?)
            (terminal-in-argument? terminal-parser word)
            (not (terminal-show word)))
        (terminal-put (string-append word "?")))))

(define (terminal-show word)
  (or (terminal-list terminal-parser word)
      (begin (terminal-bell) #f)))

(define (terminal-number-sign)
  (let ((word (terminal-word)))
    (if (string-null? word)
        (terminal-print "a comment cannot be typed; a word does not begin with \"#\"")
        (terminal-put (string-append word "#")))))

(define (terminal-up) (terminal-recall (terminal-older (terminal-word))))

(define (terminal-down) (terminal-recall (terminal-newer)))

(define (terminal-recall line)
  (if line (terminal-put line) (terminal-bell)))

(define (terminal-escape)
  (terminal-drop-word)
  (terminal-give-up terminal-parser))

(define (terminal-end)
  (if (terminal-empty?) (terminal-leave) (terminal-bell)))

(define (terminal-back)
  (if (string-null? (terminal-word))
      (terminal-take-back terminal-parser)
      (terminal-drop-word)))
