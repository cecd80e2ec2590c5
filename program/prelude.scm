;;; What the keys of a terminal do.
;;;
;;; clui runs this text before the script of a language. So a language can bind a key otherwise with
;;; terminal-key, define any of the procedures below anew, or attach the field of the terminal in a
;;; way of its own. The other terminal- procedures are clui's.
;;;
;;; The text that a key runs begins with "(terminal-" when it prints with terminal-print only. Any
;;; other text makes the line being typed leave the screen first, as whatever it prints would
;;; disturb it.

(define terminal-binding #f) ; what ties the field to the parser
(define terminal-parser #f)

;; Each key and the text that it runs. Keys that have a name and no character of their own come as
;; control characters: Up as Control-P, Down as Control-N, Return as Control-M, Tab as Control-I,
;; Backspace as Control-H.
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

;; Ties the field to a parser, with these keys. clui does this behind the script of a language that
;; has not attached the field itself.
(define (terminal-attach parser)
  (terminal-use (clui-attach-field parser (terminal-field)) parser))

;; Gives these keys to a binding that a language has made.
(define (terminal-use binding parser)
  (set! terminal-binding binding)
  (set! terminal-parser parser)
  (for-each (lambda (key) (clui-set-keystroke-action binding (car key) (cdr key)))
            (reverse terminal-keys)))

;; What a key runs from now on.
(define (terminal-key character text)
  (set! terminal-keys (cons (cons character text) terminal-keys))
  (if terminal-binding (clui-set-keystroke-action terminal-binding character text)))

;;; The word being typed

(define (terminal-word) (clui-refer-current-word terminal-binding))

(define (terminal-put word) (clui-replace-current-word terminal-binding word))

(define (terminal-send word) (clui-replace-current-word terminal-binding word #t))

(define (terminal-drop-word) (terminal-put ""))

;;; Keys

;; Where a word ends is decided by the rules by which the parser reads it: in a quote, after a
;; backslash and after a comma it goes on. The binding has a rule of its own, by which a key does
;; nothing in a quote; so it never sees a quote typed or deleted.
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

;; Carries the word on as far as it goes; the second time lists what it could become.
(define (terminal-tab)
  (let* ((word (terminal-word))
         (more (terminal-complete terminal-parser word)))
    (cond ((and (string? more) (not (string=? more word))) (terminal-put more))
          ((equal? (terminal-last-key) "\t") (terminal-show word))
          (else (terminal-bell)))))

;; Lists what could come. Inside an argument and in a paste it is a character like others.
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
