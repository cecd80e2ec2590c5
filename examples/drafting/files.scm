;;; Saves a file so that, whatever fails, it has either its old content or all of the new one: the
;;; new content is written to a temporary file, which is then renamed.

(use-modules (ice-9 binary-ports))

(define (save-file file bytes)
  (catch 'system-error
    (lambda ()
      (cond ((not (file-exists? file)) (replace-file file bytes))
            ((not (access? file W_OK)) (refuse-file file EACCES))
            ((eq? 'regular (stat:type (stat file)))
             (replace-file (canonicalize-path file) bytes)) ; not the link that leads to it
            (else (write-bytes file bytes)))) ; a terminal or a pipe, which keeps nothing
    (lambda error (refuse-file file (system-error-errno error)))))

(define (refuse-file file code)
  (refuse "cannot write " file ": " (strerror code)))

;; The temporary file is deleted when anything fails or an interrupt occurs.
(define (replace-file file bytes)
  (let ((beside (string-append file "." (number->string (getpid)) ".new")))
    (dynamic-wind
      (const #f)
      (lambda ()
        (write-bytes beside bytes)
        (if (file-exists? file) (chmod beside (stat:perms (stat file))))
        (rename-file beside file))
      (lambda () (if (file-exists? beside) (delete-file beside))))))

;; Without a buffer, so that a failure to write is noticed at once.
(define (write-bytes file bytes)
  (let ((port (open-file file "wb")))
    (dynamic-wind
      (lambda () (setvbuf port 'none))
      (lambda () (put-bytevector port bytes))
      (lambda () (close-port port)))))
