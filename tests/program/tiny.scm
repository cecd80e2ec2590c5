;; A small language with one word of each kind.
(define p (clui-parser-new 7))
(define (show . parts) (for-each display parts) (newline))

(define hello (clui-token p "hello" "hel"))
(define move (clui-token p "move:" 3 3))
(define from (clui-token p "from:" 4))
(define to (clui-token p "to:" 4))
(define scale (clui-token p "scale:" 2))
(define say (clui-token p "say:" 1))
(define fail (clui-token p "fail"))
(define run (clui-token p "run:" 1))

(clui-set-syntax p
  (clui-oneof
   hello "(show \"Hello.\")"
   move "(show \"moved by \" $0[0] \" and \" $0[1])"
   (clui-syntax from to "(show \"from \" '($0[0]) \" to \" '($1[0]))")
   scale "(show \"scale \" $0[0])"
   say "(show \"said \" (token-argument $p -1 0))"
   fail "(car '())"
   run "(eval-string (token-argument $p -1 0))"))

(use-modules (ice-9 eval-string))
(clui-set-alias p "twice" "hello hello")
(clui-set-alias p "loop" "loop")
(clui-set-variable p "n" 12)
