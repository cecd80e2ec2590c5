#include "platform/engine/YseEngine.h"

namespace yse {

// Names that begin with % are C++ functions.
const char* const Prelude = R"scheme(

;; Runs the innermost text of the engine. Every exit from it (an error, an abort to an outer prompt,
;; an interrupt) ends here: %leave returns true unless the text reached its end, and then `stop`,
;; which scripts cannot access, replaces the jump under way. The calls that led to an error are noted
;; before the jump.
(define call/ec (@ (ice-9 control) call/ec))

(define (guarded)
  (call/ec
    (lambda (stop)
      (%set-stop stop)
      (dynamic-wind
        %enter
        (lambda ()
          (with-exception-handler caught run-and-note-calls #:unwind? #t))
        (lambda () (if (%leave) (stop)))))))

(define (caught failure)
  (%caught failure (exception-kind failure) (exception-args failure)))

;; When the stack is used up, Guile runs no handler that would need more of it.
(define (run-and-note-calls)
  (with-exception-handler
    (lambda (failure)
      (note-calls failure)
      (raise-exception failure #:continuable? #t))
    (lambda ()
      (with-exception-handler caught %run #:unwind? #t #:unwind-for-type 'stack-overflow))))

(define (stack-overflow)
  (scm-error 'stack-overflow #f "Stack overflow" '() #f))

;; The text that `print` writes for a value, cut to about `limit` characters. The value may be
;; circular or endless.
(define (bounded print value limit)
  (let ((tag (make-prompt-tag "bounded")) (parts '()) (left limit))
    (define (take text)
      (set! parts (cons text parts))
      (set! left (- left (string-length text)))
      (if (< left 0) (abort-to-prompt tag)))
    (call-with-prompt tag
      (lambda ()
        (let ((port (make-soft-port
                      (vector (lambda (c) (take (string c))) take (lambda () #t) #f #f) "w")))
          (print value port)
          (force-output port)))
      (lambda (k) #f))
    (string-concatenate-reverse parts)))

(define (shortened text limit)
  (if (> (string-length text) limit)
      (string-append (substring text 0 limit) "...")
      text))

(define (written value limit) (bounded write value limit))
(define (brief print value) (shortened (bounded print value 200) 200))

;; The message with the arguments in place of its ~A and ~S.
(define (fill message args)
  (let loop ((parts '()) (rest (string->list message)) (args args))
    (cond
      ((null? rest) (string-concatenate-reverse parts))
      ((and (char=? (car rest) #\~) (pair? (cdr rest)))
       (case (cadr rest)
         ((#\A #\a #\S #\s)
          (if (pair? args)
              (let ((print (if (memv (cadr rest) '(#\A #\a)) display write)))
                (loop (cons (brief print (car args)) parts) (cddr rest) (cdr args)))
              (loop parts (cddr rest) args)))
         ((#\~) (loop (cons "~" parts) (cddr rest) args))
         ((#\%) (loop (cons "\n" parts) (cddr rest) args))
         (else (loop (cons "~" parts) (cdr rest) args))))
      (else (loop (cons (string (car rest)) parts) (cdr rest) args)))))

(define (with-irritants message irritants)
  (string-join (cons message (map (lambda (x) (brief write x)) irritants)) " "))

(define (message-of-object object)
  (let ((of (lambda (name) (module-ref (resolve-interface '(ice-9 exceptions)) name))))
    (if (and (exception? object) ((of 'exception-with-message?) object))
        (with-irritants (brief display ((of 'exception-message) object))
                        (if ((of 'exception-with-irritants?) object)
                            ((of 'exception-irritants) object)
                            '()))
        (string-append "uncaught " (brief write object)))))

(define (message-of-syntax-error who message where form . subform)
  (if (pair? where)
      (%set-error-place (assq-ref where 'filename) (assq-ref where 'line) (assq-ref where 'column)))
  (string-append (if who (string-append (brief display who) ": ") "")
                 message
                 (if form (string-append " in " (brief write form)) "")))

;; The reader puts file, line and column before its message.
(define (message-of-read-error port-name message args)
  (let* ((end (string-contains message ": "))
         (place (if end (string-split (substring message 0 end) #\:) '())))
    (if (< (length place) 3)
        (fill message args)
        (let ((column (string->number (car (last-pair place))))
              (line (string->number (cadr (reverse place)))))
          (if (and line column)
              (%set-error-place port-name (- line 1) (- column 1)))
          (fill (substring message (+ end 2)) args)))))

(define (message-of-key key args)
  (cond
    ((and (eq? key '%exception) (pair? args)) (message-of-object (car args)))
    ((eq? key 'stack-overflow) "the recursion is too deep")
    ((eq? key 'quit) (with-irritants "the text ended by exit with" args))
    ((and (eq? key 'syntax-error) (>= (length args) 5)) (apply message-of-syntax-error args))
    ((and (>= (length args) 3) (string? (cadr args))
          (or (list? (caddr args)) (not (caddr args))))
     (let ((who (car args)) (values (or (caddr args) '())))
       (if (eq? key 'read-error)
           (message-of-read-error (%place-file) (cadr args) values)
           (string-append (if who (string-append (brief display who) ": ") "")
                          (fill (cadr args) values)))))
    (else (with-irritants (string-append "uncaught " (brief write key)) args))))

;; The message for whatever was thrown.
(define (message-of key args)
  (catch #t
    (lambda () (message-of-key key args))
    (lambda rest (string-append "uncaught " (brief write key)))))

(define (refuse key name message . values)
  (scm-error key name message values #f))

;; Scripts. The forms of a file are evaluated one by one, and the position of the current form is
;; recorded, so that a failure can be reported with it.
(define (read-form port)
  (%set-place (port-line port) (port-column port))
  (let* ((form (read port))
         (at (if (pair? form) (source-properties form) '())))
    (if (pair? at) (%set-place (assq-ref at 'line) (assq-ref at 'column)))
    form))

(define (load-forms file port)
  (dynamic-wind
    (lambda () (%push-place file))
    (lambda ()
      (let loop ((value *unspecified*))
        (let ((form (read-form port)))
          (if (eof-object? form)
              value
              (loop (%evaluate (prepared form)))))))
    %pop-place))

(define (load-file file)
  (let ((port (open-input-string (%read-file file))))
    (set-port-filename! port file)
    (hash-set! script-files file #t)
    (save-module-excursion (lambda () (load-forms file port)))))

;; One handler records the failures of all files that a text loads. With a handler for each file,
;; raising would take quadratic time in the depth of nesting.
(define (load-script file)
  (if (not (string? file))
      (scm-error 'wrong-type-arg "load" "a file name must be a string, not ~S" (list file) #f))
  (if (%loading?)
      (load-file file)
      (with-exception-handler
        (lambda (failure)
          (%note-failure failure)
          (raise-exception failure #:continuable? #t))
        (lambda () (load-file file)))))

(define (load-beside file name)
  (load-script
    (if (and file (not (absolute-file-name? name)))
        (let ((folder (dirname file)))
          (if (string=? folder ".") name (string-append folder file-name-separator-string name)))
        name)))

;; A relative name is resolved against the folder of the file that contains the call.
(define-syntax load
  (lambda (form)
    (let ((file (assq-ref (or (syntax-source form) '()) 'filename)))
      (syntax-case form ()
        ((_ name) #`(load-beside #,file name))
        (id (identifier? #'id) #`(lambda (name) (load-beside #,file name)))))))

(debug-set! stack %stack-words)
(set! %load-should-auto-compile #f)
(fluid-set! %default-port-encoding "UTF-8")
(default-duplicate-binding-handler '(replace last))
(set-module-duplicates-handlers! %user
  (lookup-duplicates-handlers '(replace last)))
(module-define! %user 'load (module-ref (current-module) 'load))
(add-hook! after-gc-hook %after-collection)
)scheme";

}  // namespace yse
