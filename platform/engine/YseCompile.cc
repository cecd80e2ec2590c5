// The Scheme code that finds the places of an error: which procedures of scripts were running, and
// in which lines of their files.
//
// Guile's evaluator does not record places, its compiler does. Compiling a script while it is
// loaded would take several times as long as evaluating it, so each procedure of a script is
// compiled when it is first called after loading.

#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

// Called from Scheme, may raise.
SCM NoteCall(SCM procedure, SCM file, SCM line, SCM column) {
  std::vector<ScmVMCall>& calls = TheEngine().text->error.calls;
  calls.emplace_back();
  ScmVMCall& call = calls.back();
  if (scm_is_true(procedure)) ToUtf8(scm_symbol_to_string(procedure), call.procedure);
  ToUtf8(file, call.file);
  call.line = FromZeroBased(line);
  call.column = FromZeroBased(column);
  return SCM_UNSPECIFIED;
}

// Whether it is a procedure of Guile's or of a library that is written in C or C++.
SCM IsPrimitive(SCM value) {
  return scm_from_bool(SCM_PRIMITIVE_P(value));
}

SCM IsStackShort() {
  return scm_from_bool(StackIsShort());
}

}  // namespace

const char* const CompilePrelude = R"scheme(

;; Expanded code consists of structures of these types, whose fields are listed with them.
(define-values (<const> <lexical-ref> <module-ref> <toplevel-ref> <module-set> <toplevel-set>
                <toplevel-define> <conditional> <call> <seq> <lambda> <lambda-case> <let> <letrec>)
  (apply values
    (map (lambda (index) (vector-ref %expanded-vtables index))
         '(1     ; src exp
           3     ; src name gensym
           5     ; src mod name public?
           7     ; src mod name
           6     ; src mod name public? exp
           8     ; src mod name exp
           9     ; src mod name exp
           10    ; src test consequent alternate
           11    ; src proc args
           13    ; src head tail
           14    ; src meta body
           15    ; src req opt rest kw inits gensyms body alternate
           16    ; src names gensyms vals body
           17)))) ; src in-order? names gensyms vals body

(define (is? type code) (eq? (struct-vtable code) type))

;; Procedures of scripts

;; A procedure without free variables is replaced by a stub, which is a procedure with an identity
;; of its own. It evaluates calls while a script is being loaded. The first call after that compiles
;; the code, and from then on a call goes there directly.
(define <stub>
  (make-struct/no-tail <applicable-struct-vtable> (make-struct-layout "pwpwpwpw")
    (lambda (stub port)
      (format port "#<procedure ~a>" (or (stub-name stub) "without a name")))))

(define (stub-name stub) (struct-ref stub 1))
(define (stub-module stub) (struct-ref stub 2))
(define (stub-code stub) (struct-ref stub 3)) ; #f once it is compiled or only evaluated

(define (become! stub procedure)
  (struct-set! stub 0 procedure)
  (struct-set! stub 3 #f))

(define (make-stub code)
  (let* ((properties (or (struct-ref code 1) '()))
         (stub (make-struct/no-tail <stub> #f (assq-ref properties 'name) (current-module) code))
         (evaluated #f))
    (define (evaluate)
      (if (not evaluated) (set! evaluated (evaluate-in (stub-module stub) code)))
      evaluated)
    (struct-set! stub 0
      (lambda args
        (if (or (%loading?) (%stack-short?))
            (apply (evaluate) args)
            (begin
              (if (not (compile! stub)) (become! stub (evaluate)))
              (apply stub args)))))
    (set-procedure-properties! stub properties)
    (if (assq 'documentation properties)
        (set-procedure-properties! (struct-ref stub 0) properties))
    (apply set-procedure-minimum-arity! stub (least-arity (struct-ref code 2)))
    stub))

;; What procedure-minimum-arity returns for the clauses of a procedure: the clause with the fewest
;; required arguments, and of those the one that accepts the most.
(define (least-arity clause)
  (define (arity clause)
    (list (length (struct-ref clause 1)) (length (or (struct-ref clause 2) '()))
          (->bool (struct-ref clause 3))))
  (define (less? a b)
    (or (< (car a) (car b))
        (and (= (car a) (car b))
             (or (and (caddr a) (not (caddr b)))
                 (and (eq? (caddr a) (caddr b)) (> (cadr a) (cadr b)))))))
  (if clause
      (let loop ((least (arity clause)) (rest (struct-ref clause 8)))
        (cond ((not rest) least)
              ((less? (arity rest) least) (loop (arity rest) (struct-ref rest 8)))
              (else (loop least (struct-ref rest 8)))))
      '(0 0 #f)))

(define (evaluate-in module code)
  (save-module-excursion
    (lambda ()
      (set-current-module module)
      (primitive-eval code))))

;; Whether any frame can have a place in a script; looking for one takes about a millisecond.
(define some-are-compiled #f)

;; Compiling procedures together takes half the time of compiling each, so those that are called by
;; this one are compiled with it.
(define most-together 40)

;; False for code that only the evaluator can run, such as a macro's with values that cannot be
;; written. An interrupt waits meanwhile: the first call loads the compiler.
(define (compile! stub)
  (set! some-are-compiled #t)
  (call-with-blocked-asyncs
    (lambda ()
      (or (compile-all! (with-called-stubs stub))
          (compile-all! (list stub))))))

(define (compile-all! stubs)
  (catch #t
    (lambda ()
      (let ((code (make-struct/no-tail <call> #f
                    (make-struct/no-tail <module-ref> #f '(guile) 'list #f)
                    (map stub-code stubs))))
        (for-each become! stubs
          ((module-ref (resolve-interface '(system base compile)) 'compile)
           code #:from 'tree-il #:to 'value #:env (stub-module (car stubs))
           #:optimization-level 0 #:warning-level 0))
        #t))
    (lambda _ #f)))

(define (with-called-stubs stub)
  (let ((module (stub-module stub)) (found (list stub)) (count 1))
    (define (refers-to name)
      (let* ((variable (module-variable module name))
             (value (and variable (variable-bound? variable) (variable-ref variable))))
        (if (and (< count most-together)
                 (struct? value) (is? <stub> value) (stub-code value)
                 (eq? (stub-module value) module) (not (memq value found)))
            (begin
              (set! count (+ count 1))
              (append! found (list value))))))
    (let loop ((rest found))
      (if (pair? rest)
          (begin
            (with-last-calls (stub-code (car rest)) module refers-to)
            (loop (cdr rest)))))
    found))

;; A form of a script, ready to be evaluated.
(define (prepared form)
  (if (and (pair? form) (or-map pair? (if (list? form) (cdr form) '())))
      (with-stubs ((module-transformer (current-module)) form))
      form))

(define (with-stubs code)
  (define (replace-field! index)
    (struct-set! code index (with-stubs (struct-ref code index))))
  (cond
    ((is? <lambda> code)
     (make-struct/no-tail <const> (struct-ref code 0) (make-stub code)))
    ((or (is? <toplevel-define> code) (is? <toplevel-set> code)) (replace-field! 3) code)
    ((is? <module-set> code) (replace-field! 4) code)
    ((is? <seq> code) (replace-field! 1) (replace-field! 2) code)
    ((is? <call> code)
     (let ((args (struct-ref code 2)))
       (if (or-map (lambda (arg) (is? <lambda> arg)) args)
           (struct-set! code 2
             (map (lambda (arg) (if (is? <lambda> arg) (with-stubs arg) arg)) args))))
     code)
    (else code)))

;; The frame of a procedure is gone when a call that ends it fails. So a call of a primitive, or of
;; `error` and the like, is not made the end of its procedure: (car x) becomes (let ((v (car x))) v).
;; Calls `refers-to` with each global name.
(define (with-last-calls code module refers-to)
  (define (walk value ends?)
    (cond
      ((pair? value) (cons (walk (car value) #f) (walk (cdr value) #f)))
      ((not (struct? value)) value)
      ((is? <conditional> value) (fields! value '(1) '(2 3) ends?))
      ((is? <seq> value) (fields! value '(1) '(2) ends?))
      ((is? <let> value) (fields! value '(3) '(4) ends?))
      ((is? <letrec> value) (fields! value '(4) '(5) ends?))
      ((is? <lambda> value) (fields! value '() '(2) #t))
      ((is? <lambda-case> value) (fields! value '(5) '(7 8) #t))
      ((is? <call> value)
       (fields! value '(1 2) '() #f)
       (if (and ends? (returns-one-value? (struct-ref value 1) module)) (kept value) value))
      ((or (is? <toplevel-define> value) (is? <toplevel-set> value)) (fields! value '(3) '() #f))
      ((is? <module-set> value) (fields! value '(4) '() #f))
      ((is? <toplevel-ref> value) (refers-to (struct-ref value 2)) value)
      (else value)))
  (define (fields! value inner last ends?)
    (for-each (lambda (i) (struct-set! value i (walk (struct-ref value i) #f))) inner)
    (for-each (lambda (i) (struct-set! value i (walk (struct-ref value i) ends?))) last)
    value)
  (walk code #f))

(define (kept call)
  (let ((src (struct-ref call 0)) (name (gensym "value ")))
    (make-struct/no-tail <let> src '(value) (list name) (list call)
      (make-struct/no-tail <lexical-ref> src 'value name))))

(define raising '(error scm-error throw raise raise-exception))
;; The names of primitives that may return several values, often those of a procedure or a text.
(define several-values
  '(values apply call-with-values call-with-current-continuation call/cc abort-to-prompt
    abort-to-prompt* floor/ ceiling/ truncate/ euclidean/ round/ centered/ exact-integer-sqrt
    partition partition! char-set-diff+intersection char-set-diff+intersection!
    eval eval-string force primitive-load primitive-load-path load-compiled dynamic-call
    with-continuation-barrier with-fluids* call-with-blocked-asyncs call-with-unblocked-asyncs
    hash-fold string-fold string-fold-right string-any-c-code string-every-c-code
    char-set-fold char-set-any char-set-every))

(define (returns-one-value? head module)
  (and (is? <toplevel-ref> head)
       (let* ((name (struct-ref head 2))
              (variable (module-variable module name)))
         (and variable
              (variable-bound? variable)
              (let ((value (variable-ref variable)))
                (or (memq name raising)
                    (and (%primitive? value)
                         (not (memq (procedure-name value) several-values)))))))))

;; The calls that were running when an error was raised

(define most-calls 10)

;; The names of the script files that have been loaded.
(define script-files (make-hash-table))

;; Reports the innermost calls of procedures of scripts, up to the text that runs.
(define (note-calls failure)
  (if (and some-are-compiled (not (eq? (exception-kind failure) 'quit)))
      (catch #t
        (lambda ()
          (let loop ((frame (stack-ref (make-stack #t) 0)) (left most-calls))
            (if (and frame (> left 0) (not (eq? (frame-procedure-name frame) '%run)))
                (let* ((source (frame-source frame))
                       (is-ours (and source (hash-ref script-files (cadr source)))))
                  (if is-ours
                      (%note-call (frame-procedure-name frame) (cadr source) (caddr source)
                                  (cdddr source)))
                  (loop (frame-previous frame) (if is-ours (- left 1) left))))))
        (lambda _ #f))))
)scheme";

void DefineCompiling() {
  scm_c_define_gsubr("%note-call", 4, 0, 0, reinterpret_cast<void*>(&NoteCall));
  scm_c_define_gsubr("%stack-short?", 0, 0, 0, reinterpret_cast<void*>(&IsStackShort));
  scm_c_define_gsubr("%primitive?", 1, 0, 0, reinterpret_cast<void*>(&IsPrimitive));
}

}  // namespace yse
