;;; Recording of the calls that declare a language.
;;;
;;; clui runs this file before the script of a language that it examines. The primitives below
;;; become macros, because only a macro knows the position of a call. A call has the result of the
;;; primitive, or its error; a name that is not called, as in (apply clui-syntax parts), is a
;;; procedure. Only set! and module-ref see the difference. All this is in a module of its own, so
;;; that a script may redefine any name.

(define-module (yqrt workshop)
  #:use-module (language tree-il)
  #:use-module (rnrs bytevectors))

;; Parts of clui: record a call, and that the name of a primitive occurs at a place.
(define note (@@ (guile-user) workshop-note))
(define mention (@@ (guile-user) workshop-mention))

;; Calls the primitive and records the call when it succeeds. `place` is (file line column) or #f.
(define (call name primitive place . arguments)
  (let ((result (apply primitive arguments)))
    (if (eq? name 'clui-priority)
        (hashq-set! priorities result place)
        (apply note (symbol->string name) (for-clui place) result (map argument arguments)))
    result))

;; The pairs that clui-priority has returned, and their places.
(define priorities (make-weak-key-hash-table))

;; Priorities are recorded as (priority limit . place).
(define (argument value)
  (if (pair? value)
      (cons* (car value) (cdr value) (for-clui (hashq-ref priorities value)))
      value))

(define (for-clui place)
  (if place (cons (bytes (car place)) (cdr place)) '()))

;; A text that clui gets as UTF-8. The engine passes the private-use characters as single bytes.
(define (bytes text)
  (if (string-every char-set:ascii text)
      text
      (list->string
       (map (lambda (byte) (integer->char (if (< byte 128) byte (+ #xf700 byte))))
            (bytevector->u8-list (string->utf8 text))))))

(define (place-of form)
  (let* ((source (or (syntax-source form) '()))
         (file (assq-ref source 'filename)))
    (and file (list file (1+ (assq-ref source 'line)) (1+ (assq-ref source 'column))))))

(define-syntax record
  (syntax-rules ()
    ((_ (name procedure primitive) ...)
     (begin
       (begin
         (define primitive (@@ (guile-user) name))
         (define (procedure . arguments) (apply call 'name primitive #f arguments))
         (define-syntax name
           (lambda (form)
             (let ((place (place-of form)))
               (mention (symbol->string 'name) (for-clui place))
               (syntax-case form ()
                 ((_ argument (... ...))
                  #`(call 'name primitive '#,(datum->syntax #'here place) argument (... ...)))
                 (_ (identifier? form) #'procedure)))))
         (module-define! (resolve-module '(guile-user)) 'name
                         (module-ref (current-module) 'name)))
       ...))))

(record
 (clui-parser-new parser-new primitive-parser-new)
 (clui-token token primitive-token)
 (clui-syntax syntax primitive-syntax)
 (clui-oneof oneof primitive-oneof)
 (clui-anyof anyof primitive-anyof)
 (clui-priority priority primitive-priority)
 (clui-set-syntax set-syntax primitive-set-syntax)
 (clui-indefinite-syntax indefinite-syntax primitive-indefinite-syntax)
 (clui-set-keystroke-action keystroke-action primitive-keystroke-action)
 (clui-put-dummy-token put-dummy-token primitive-put-dummy-token))

;;; Reading of the code of words

;; Reads and expands the texts that clui hands out, and reports what Scheme refuses, and names that
;; are bound neither in the script nor by one of the texts.
(define (check-codes)
  (let ((next (@@ (guile-user) workshop-next-code))
        (problem (@@ (guile-user) workshop-problem))
        (defined (make-hash-table))
        (used (make-hash-table))) ; a list of (number of text . module) for each name
    (define (use! name module number)
      (hashq-set! used name (cons (cons number module) (hashq-ref used name '()))))
    (define (check text number)
      (catch #t
        (lambda ()
          (for-each (lambda (form)
                      (each-name (macroexpand form)
                                 (lambda (name module) (use! name module number))
                                 (lambda (name) (hashq-set! defined name #t))))
                    (forms-of text)))
        (lambda (key . details)
          (problem number "refused" ((@@ (yqrt engine) message-of) key details)))))
    (let loop ((number 0))
      (let ((text (next)))
        (when text
          (check text number)
          (loop (1+ number)))))
    (hash-for-each
     (lambda (name uses)
       (for-each (lambda (each)
                   (if (not (or (hashq-ref defined name) (bound? name (cdr each))))
                       (problem (car each) "unbound" (symbol->string name))))
                 uses))
     used)))

(define (forms-of text)
  (call-with-input-string text
    (lambda (port)
      (let loop ((form (read port)))
        (if (eof-object? form) '() (cons form (loop (read port))))))))

;; Calls `use` with each global name that the expanded code refers to and its module, #f for that of
;; the script, and `define` with each one that it defines.
(define (each-name code use define)
  (tree-il-fold
   (lambda (node seed)
     (cond ((toplevel-ref? node) (use (toplevel-ref-name node) #f))
           ((toplevel-set? node) (use (toplevel-set-name node) #f))
           ((module-ref? node) (use (module-ref-name node) (module-ref-mod node)))
           ((toplevel-define? node) (define (toplevel-define-name node)))))
   (lambda (node seed) seed)
   #f
   code))

(define (bound? name module)
  (let* ((module (if module
                     (resolve-module module #f #:ensure #f)
                     (resolve-module '(guile-user))))
         (variable (and module (module-variable module name))))
    (and variable (variable-bound? variable))))
