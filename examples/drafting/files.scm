;;; Saves a file: under its name stands what was there before or the whole of what is new, whatever
;;; fails. The new text is written beside it and then takes the name.

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

;; What is written beside the file goes when anything fails, and also when an interrupt comes.
(define (replace-file file bytes)
  (let ((beside (string-append file "." (number->string (getpid)) ".new")))
    (dynamic-wind
      (const #f)
      (lambda ()
        (write-bytes beside bytes)
        (if (file-exists? file) (chmod beside (stat:perms (stat file))))
        (rename-file beside file))
      (lambda () (if (file-exists? beside) (delete-file beside))))))

;; Without a buffer, which would keep what could not be written.
(define (write-bytes file bytes)
  (let ((port (open-file file "wb")))
    (dynamic-wind
      (lambda () (setvbuf port 'none))
      (lambda () (put-bytevector port bytes))
      (lambda () (close-port port)))))
