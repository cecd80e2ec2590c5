;;; The device: its settings, and their checks.
;;;
;;; All settings are one immutable value, an association list, so a copy is only a second reference:
;;; the running configuration and the startup configuration are two variables that may have the same
;;; value. Nothing here depends on words, parsers or modes.

(use-modules (srfi srfi-1) (srfi srfi-9))

;; Raises an error with a message for the user. The program prints it with the typed line.
(define (refuse . parts)
  (scm-error 'misc-error #f "~A" (list (text-of parts)) #f))

(define (text-of parts)
  (string-concatenate
   (map (lambda (part) (if (string? part) part (object->string part))) parts)))

(define (quoted text)
  (let ((cut? (> (string-length text) 40)))
    (string-append "\"" (if cut? (string-append (substring text 0 40) "...") text) "\"")))

(define (within what least number most)
  (if (<= least number most)
      number
      (refuse what " is from " least " to " most ", and not " number)))

;;; Addresses ------------------------------------------------------------------------------------
;;;
;;; An address is a number of 32 bits. A block is an address and the length of its mask: a network
;;; or, for an interface, the address of the device and its network.

(define make-block cons)
(define block-address car)
(define block-length cdr)

(define decimal-digits (string->char-set "0123456789")) ; and not those of other scripts

;; A number of one to `most` digits, or #f.
(define (short-number text most)
  (and (<= 1 (string-length text) most)
       (string-every decimal-digits text)
       (string->number text)))

(define (octet part text)
  (let ((number (short-number part 3)))
    (cond ((> number 255)
           (refuse (quoted text) " is not an address: " part " is more than 255"))
          ((not (string=? part (number->string number)))
           (refuse (quoted text) " is not an address: write " number ", and not " part))
          (else number))))

(define (address-of text)
  (let ((parts (string-split text #\.)))
    (if (not (and (= (length parts) 4) (every (lambda (part) (short-number part 3)) parts)))
        (refuse (quoted text) " is not an address: expected four numbers separated by dots, "
                "such as 192.0.2.1"))
    (fold (lambda (part sum) (+ (* 256 sum) (octet part text))) 0 parts)))

;; An address that one machine can have.
(define (host-of text)
  (let* ((address (address-of text))
         (first-octet (ash address -24)))
    (cond ((memv first-octet '(0 127))
           (refuse text " is not the address of a machine in a network"))
          ((> first-octet 223)
           (refuse text " is above 223.255.255.255 and so not the address of a single machine"))
          (else address))))

(define (mask-of length) (logand #xFFFFFFFF (ash #xFFFFFFFF (- 32 length))))

;; "24" or "255.255.255.0".
(define (mask-length-of text)
  (if (string-index text #\.)
      (let ((zeros (- #xFFFFFFFF (address-of text))))
        (if (not (zero? (logand zeros (1+ zeros))))
            (refuse text " is not a mask: in a mask all ones precede all zeros"))
        (- 32 (integer-length zeros)))
      (let ((length (short-number text 2)))
        (if (and length (<= length 32))
            length
            (refuse (quoted text)
                    " is no mask; wanted is 0 to 32, or the like of 255.255.255.0")))))

;; From "10.0.0.1/24" alone, or from "10.0.0.1" and a mask. `length` is the default length of the
;; mask; #f means that a mask is required.
(define (block-of texts length read-address)
  (let* ((parts (string-split (first texts) #\/))
         (masks (append (cdr parts) (cdr texts)))
         (address (read-address (first parts))))
    (cond ((null? masks)
           (make-block address (or length (refuse "the mask is missing; write " (first parts)
                                                  "/24, or " (first parts) ", 255.255.255.0"))))
          ((null? (cdr masks)) (make-block address (mask-length-of (first masks))))
          (else (refuse (first parts) " has more than one mask")))))

;; The address of a machine, with its network.
(define (machine-of texts)
  (let* ((block (block-of texts #f host-of))
         (rest (logand (block-address block) (lognot (mask-of (block-length block)))
                       #xFFFFFFFF)))
    (cond ((zero? (block-length block))
           (refuse "a mask of length 0 leaves no network"))
          ((>= (block-length block) 31) block)
          ((zero? rest)
           (refuse (block-text block) " is the network itself; its machines begin at "
                   (address-text (1+ (block-address block)))))
          ((= rest (1- (ash 1 (- 32 (block-length block)))))
           (refuse (block-text block) " is the broadcast address of its network"))
          (else block))))

;; A network: a block whose host bits are 0.
(define (network-of texts length)
  (let* ((block (block-of texts length address-of))
         (network (block-network block)))
    (if (= network (block-address block))
        block
        (refuse (block-text block) " has bits outside its mask; the network is "
                (block-text (make-block network (block-length block)))))))

(define (block-network block)
  (logand (block-address block) (mask-of (block-length block))))

(define (in-block? block address)
  (= (block-network block) (logand address (mask-of (block-length block)))))

(define (overlap? a b)
  (if (<= (block-length a) (block-length b))
      (in-block? a (block-address b))
      (in-block? b (block-address a))))

(define (address-text address)
  (string-join (map (lambda (shift) (number->string (logand 255 (ash address shift))))
                    '(-24 -16 -8 0))
               "."))

(define (block-text block)
  (string-append (address-text (block-address block)) "/"
                 (number->string (block-length block))))

;;; Settings -------------------------------------------------------------------------------------

(define (with thing key value) (acons key value (alist-delete key thing eq?)))
(define (of thing key) (assq-ref thing key))

(define room 250) ; of each table and each list; this is a small device
(define ports 4)  ; it has ethernet 0 to 3

(define (fresh-interface kind)
  `((up . ,(not (eq? kind 'ethernet))) (mtu . 1500) (speed . "auto") (duplex . "auto")
    (address . #f) (secondary . ()) (helper . #f) (in . #f) (out . #f) (description . #f)))

(define fresh-pool '((network . #f) (range . #f) (gateway . #f) (servers . ()) (domain . #f)
                     (lease . 24)))

(define fresh-settings
  `((hostname . "router") (domain . #f) (banner . #f) (zone . ("UTC" 0)) (forwarding . #t)
    (lookup . #t) (dns . ()) (ntp . ()) (log-level . 6) (log-hosts . ()) (communities . ())
    (location . #f) (contact . #f) (services . ()) (users . ()) (lists . ()) (pools . ())
    (routes . ())
    (interfaces . ,(map (lambda (n) (cons (cons 'ethernet n) (fresh-interface 'ethernet)))
                        (iota ports)))))

(define running fresh-settings)
(define startup #f) ; what a reload brings back; #f as long as nothing was saved

(define (setting key) (of running key))
(define (set-to! key value) (set! running (with running key value)))

(define (check-room things)
  (if (>= (length things) room) (refuse "there is room for " room " of them only")))

(define (put-in-order thing things before?)
  (let ((front (take-while (lambda (other) (before? other thing)) things)))
    (append front (cons thing (drop things (length front))))))

;; A setting that holds several values, in the order in which they were typed.
(define (include! key value)
  (when (not (member value (setting key)))
    (check-room (setting key))
    (set-to! key (append (setting key) (list value)))))

(define (exclude! key value text)
  (if (not (member value (setting key))) (refuse text " is not there"))
  (set-to! key (delete value (setting key))))

;; A setting that is a table of entries by name.
(define (entry table name) (assoc-ref (setting table) name))

(define (set-entry! table name thing)
  (if (not (entry table name)) (check-room (setting table)))
  (set-to! table (acons name thing (alist-delete name (setting table)))))

(define (drop-entry! table name)
  (set-to! table (alist-delete name (setting table))))

;; The entry that is being configured: a table and a name, or #f.
(define section #f)

(define (open-section! table name fresh)
  (if (not (entry table name)) (set-entry! table name fresh))
  (set! section (cons table name)))

(define (this) (entry (car section) (cdr section)))

(define (set-here! key value)
  (set-entry! (car section) (cdr section) (with (this) key value)))

;;; Names and texts ------------------------------------------------------------------------------

(define name-letters
  (string->char-set "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_."))

(define (name-of what text)
  (cond ((string-null? text) (refuse what " needs a name"))
        ((> (string-length text) 63) (refuse (quoted text) " is longer than 63 letters"))
        ((string-every name-letters text) text)
        (else (refuse (quoted text)
                      " is no name; it may hold A to Z, digits, and the signs - _ ."))))

(define (known table what name)
  (if (entry table name)
      name
      (refuse "there is no " what " " (quoted name)
              (if (null? (setting table))
                  ""
                  (string-append "; there are "
                                 (string-join (sort (map car (setting table)) string<?) " "))))))

(define (note-of text)
  (if (<= 1 (string-length text) 200)
      text
      (refuse "the text must have 1 to 200 letters, and not " (string-length text))))

;; Simulates the digest of a real device, which would be a slow hash. It includes the name, so that
;; two users with the same secret have different digests.
(define (digest-of name secret)
  (define (step letter sum)
    (modulo (* (logxor sum (char->integer letter)) #x100000001b3) (expt 2 64)))
  (string-pad (number->string (string-fold step #xcbf29ce484222325
                                           (string-append name ":" secret))
                              16)
              16 #\0))

(define (check-digest text)
  (if (and (= (string-length text) 16) (string-every char-set:hex-digit text))
      (string-downcase text)
      (refuse (quoted text) " is not a digest, 16 digits from 0 to f")))

(define (set-user! name privilege digest)
  (set-entry! 'users (name-of "a user" name)
              `((privilege . ,(within "a privilege" 0 privilege 15)) (digest . ,digest))))

(define (secret-of text)
  (if (< (string-length text) 6) (refuse "a secret has 6 letters or more") text))

;;; Interfaces -----------------------------------------------------------------------------------

(define interface-kinds '((ethernet 0 3) (vlan 1 4094) (loopback 0 99)))

(define (interface-name kind number)
  (let ((bounds (assq-ref interface-kinds kind)))
    (within (text-of (list "the number of " (symbol->string kind)))
            (first bounds) number (second bounds))
    (cons kind number)))

(define (interface-text name)
  (string-append (symbol->string (car name)) " " (number->string (cdr name))))

(define (known-interface kind number)
  (let ((name (interface-name kind number)))
    (if (entry 'interfaces name) name (refuse "there is no " (interface-text name)))))

(define (drop-interface! kind number)
  (drop-entry! 'interfaces (known-interface kind number)))

(define (interface-before? a b)
  (define (rank name) (list-index (lambda (kind) (eq? (car kind) (car name))) interface-kinds))
  (or (< (rank a) (rank b))
      (and (= (rank a) (rank b)) (< (cdr a) (cdr b)))))

;; The interfaces with their names, in order.
(define (interfaces)
  (sort (setting 'interfaces) (lambda (a b) (interface-before? (car a) (car b)))))

(define (blocks-of interface)
  (append (if (of interface 'address) (list (of interface 'address)) '())
          (of interface 'secondary)))

;; Two networks of a router must not overlap, because the route of a packet would be ambiguous.
;; `but` are the blocks of this interface that are kept.
(define (check-free block but)
  (for-each
   (lambda (other)
     (let ((blocks (if (equal? (car other) (cdr section)) but (blocks-of (cdr other)))))
       (for-each (lambda (taken)
                   (if (overlap? block taken)
                       (refuse (block-text block) " overlaps with " (block-text taken) " on "
                               (interface-text (car other)))))
                 blocks)))
   (setting 'interfaces)))

(define (set-address! texts)
  (let ((block (machine-of texts)))
    (check-free block (of (this) 'secondary))
    (set-here! 'address block)))

(define (clear-address!)
  (if (pair? (of (this) 'secondary)) (refuse "remove the secondary addresses first"))
  (set-here! 'address #f))

(define (add-secondary! texts)
  (let ((block (machine-of texts))
        (others (of (this) 'secondary)))
    (if (not (of (this) 'address)) (refuse "the interface needs its first address before others"))
    (when (not (member block others))
      (check-free block (blocks-of (this)))
      (check-room others)
      (set-here! 'secondary (append others (list block))))))

(define (drop-secondary! texts)
  (let ((block (machine-of texts)))
    (if (not (member block (of (this) 'secondary))) (refuse (block-text block) " is not there"))
    (set-here! 'secondary (delete block (of (this) 'secondary)))))

(define (only-ethernet what)
  (if (not (eq? (cadr section) 'ethernet)) (refuse "only an Ethernet port has a " what)))

(define (set-speed! speed)
  (only-ethernet "speed")
  (if (not (member speed '(10 100 1000 "auto")))
      (refuse "the speed is 10, 100 or 1000, and not " speed))
  (set-here! 'speed speed))

(define (set-duplex! duplex)
  (only-ethernet "duplex")
  (set-here! 'duplex duplex))

(define (attach-list! direction name)
  (set-here! direction (known 'lists "access list" name)))

;;; Access lists ---------------------------------------------------------------------------------

;; A remark has the action `remark` and its text instead of the protocol.
(define-record-type <rule> (make-rule number action protocol from to ports) rule?
  (number rule-number)     ; the rules of a list stand in the order of these
  (action rule-action)     ; permit, deny, remark
  (protocol rule-protocol) ; ip, tcp, udp, icmp
  (from rule-from)         ; a block; length 0 is any
  (to rule-to)
  (ports rule-ports))      ; (first . last), `established`, or #f for all

(define any-block (make-block 0 0))

(define (side-of texts)
  (cond ((not (string-ci=? (first texts) "any")) (network-of texts 32))
        ((null? (cdr texts)) any-block)
        (else (refuse "\"any\" has no mask"))))

(define (port-of number) (within "a port" 0 number 65535))

(define (port-range numbers)
  (let ((low (port-of (first numbers)))
        (high (port-of (second numbers))))
    (if (> low high) (refuse "the first port is above the last one"))
    (cons low high)))

(define (rules) (of (this) 'rules))

(define (next-number)
  (if (null? (rules)) 10 (* 10 (1+ (quotient (rule-number (last (rules))) 10)))))

;; With #f as `number` the rule is added after the last one. A rule with the same number is
;; replaced.
(define (add-rule! number action protocol from to ports)
  (let* ((number (within "the number of a rule" 1 (or number (next-number)) 100000))
         (others (remove (lambda (rule) (= (rule-number rule) number)) (rules))))
    (check-room others)
    (set-here! 'rules
               (put-in-order (make-rule number action protocol from to ports) others
                             (lambda (a b) (< (rule-number a) (rule-number b)))))))

(define (drop-rule! number)
  (if (not (any (lambda (rule) (= (rule-number rule) number)) (rules)))
      (refuse "there is no rule " number))
  (set-here! 'rules (remove (lambda (rule) (= (rule-number rule) number)) (rules))))

(define (renumber!)
  (set-here! 'rules
             (map (lambda (rule n)
                    (make-rule n (rule-action rule) (rule-protocol rule) (rule-from rule)
                               (rule-to rule) (rule-ports rule)))
                  (rules) (iota (length (rules)) 10 10))))

(define (port-matches? ports port)
  (and (pair? ports) port (<= (car ports) port (cdr ports))))

;; The rule that applies to a packet that opens a connection, or #f.
(define (deciding-rule list-name protocol from to port)
  (find (lambda (rule)
          (and (not (eq? (rule-action rule) 'remark))
               (memq (rule-protocol rule) (list 'ip protocol))
               (in-block? (rule-from rule) from)
               (in-block? (rule-to rule) to)
               (or (not (rule-ports rule)) (port-matches? (rule-ports rule) port))))
        (of (entry 'lists list-name) 'rules)))

;; The names of the interfaces that use a list.
(define (users-of-list name)
  (filter-map (lambda (each)
                (and (member name (list (of (cdr each) 'in) (of (cdr each) 'out)))
                     (car each)))
              (interfaces)))

(define (drop-list! name)
  (for-each
   (lambda (user)
     (for-each (lambda (direction)
                 (let ((interface (entry 'interfaces user)))
                   (if (equal? (of interface direction) name)
                       (set-entry! 'interfaces user (with interface direction #f)))))
               '(in out)))
   (users-of-list name))
  (drop-entry! 'lists name))

;;; Pools of addresses ---------------------------------------------------------------------------

(define (pool-network)
  (or (of (this) 'network) (refuse "the pool needs its network first")))

(define (in-pool address)
  (if (in-block? (pool-network) address)
      address
      (refuse (address-text address) " is outside the pool's network, "
              (block-text (pool-network)))))

(define (set-pool-network! texts)
  (let ((network (network-of texts #f))
        (range (of (this) 'range))
        (gateway (of (this) 'gateway)))
    (for-each (lambda (address)
                (if (not (in-block? network address))
                    (refuse (address-text address) " of this pool is outside "
                            (block-text network) "; change it first")))
              (append (if range (list (car range) (cdr range)) '())
                      (if gateway (list gateway) '())))
    (set-here! 'network network)))

(define (set-pool-range! texts)
  (let ((low (in-pool (host-of (first texts))))
        (high (in-pool (host-of (second texts)))))
    (if (> low high) (refuse "the first address is above the last one"))
    (set-here! 'range (cons low high))))

(define (add-pool-server! text)
  (let ((address (host-of text))
        (others (of (this) 'servers)))
    (if (not (member address others)) (set-here! 'servers (append others (list address))))))

;;; Routes ---------------------------------------------------------------------------------------

(define-record-type <route> (make-route block hop distance) route?
  (block route-block)
  (hop route-hop)            ; an address, or #f: packets are thrown away
  (distance route-distance)) ; the smaller one wins

(define (same-way? block hop)
  (lambda (route) (and (equal? (route-block route) block) (equal? (route-hop route) hop))))

(define (route-before? a b)
  (define (key route)
    (list (block-address (route-block route)) (block-length (route-block route))
          (route-distance route) (or (route-hop route) -1)))
  (let loop ((a (key a)) (b (key b)))
    (and (pair? a)
         (or (< (car a) (car b)) (and (= (car a) (car b)) (loop (cdr a) (cdr b)))))))

(define (own-address? address)
  (any (lambda (each) (any (lambda (block) (= (block-address block) address))
                           (blocks-of (cdr each))))
       (setting 'interfaces)))

(define (add-route! texts hop distance)
  (let* ((block (network-of texts #f))
         (others (remove (same-way? block hop) (setting 'routes))))
    (if (and hop (own-address? hop)) (refuse (address-text hop) " is the device itself"))
    (check-room others)
    (set-to! 'routes
             (put-in-order (make-route block hop (within "a distance" 1 distance 255)) others
                           route-before?))))

(define (drop-routes! texts)
  (let* ((block (network-of texts #f))
         (others (remove (lambda (route) (equal? (route-block route) block))
                         (setting 'routes))))
    (if (= (length others) (length (setting 'routes)))
        (refuse "there is no route to " (block-text block)))
    (set-to! 'routes others)))

;; The networks of interfaces that are up: (block . name of the interface).
(define (connected)
  (append-map (lambda (each)
                (if (of (cdr each) 'up)
                    (map (lambda (block) (cons block (car each))) (blocks-of (cdr each)))
                    '()))
              (interfaces)))

;; The one of these networks that contains the address, or #f.
(define (link-to address links)
  (find (lambda (each) (in-block? (car each) address)) links))

;; A route is usable when its next hop can be reached without another route.
(define (active? route links)
  (or (not (route-hop route)) (link-to (route-hop route) links)))

;; The route of a packet, or #f: the one with the longest mask, then the smallest distance.
(define (best-route address links)
  (let ((fitting (filter (lambda (route)
                           (and (in-block? (route-block route) address) (active? route links)))
                         (setting 'routes))))
    (fold (lambda (route best)
            (if (or (not best)
                    (> (block-length (route-block route)) (block-length (route-block best)))
                    (and (= (block-length (route-block route)) (block-length (route-block best)))
                         (< (route-distance route) (route-distance best))))
                route
                best))
          #f fitting)))

;;; The clock ------------------------------------------------------------------------------------

;; The clock does not advance, so that a file of commands prints the same each time.
(define clock '((2000 1 1) (0 0 0)))

(define (leap-year? year)
  (and (zero? (modulo year 4)) (or (positive? (modulo year 100)) (zero? (modulo year 400)))))

(define (days-of-month year month)
  (if (and (= month 2) (leap-year? year)) 29 (list-ref '(31 28 31 30 31 30 31 31 30 31 30 31)
                                                       (1- month))))

(define (numbers-of text separator widths example)
  (let ((parts (string-split text separator)))
    (if (and (= (length parts) (length widths))
             (every (lambda (part width)
                      (and (= (string-length part) width) (short-number part width)))
                    parts widths))
        (map string->number parts)
        (refuse (quoted text) " is invalid; expected a form like " example))))

(define (set-clock! date-text time-text)
  (let ((date (numbers-of date-text #\- '(4 2 2) "2024-05-31"))
        (time (numbers-of time-text #\: '(2 2 2) "09:30:00")))
    (within "a year" 1970 (first date) 2099)
    (within "a month" 1 (second date) 12)
    (within "a day of this month" 1 (third date) (days-of-month (first date) (second date)))
    (for-each within '("an hour" "a minute" "a second") '(0 0 0) time '(23 59 59))
    (set! clock (list date time))))
