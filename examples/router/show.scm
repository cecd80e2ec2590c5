;;; Printing: tables, and the running configuration as commands.

(use-modules (ice-9 iconv))

(define (say . parts)
  (display (text-of parts))
  (newline))

;;; Tables ---------------------------------------------------------------------------------------

;; Japanese letters take two columns of a terminal.
(define (width-of text)
  (string-fold (lambda (letter sum) (+ sum (if (char<? letter #\x1100) 1 2))) 0 text))

(define (padded text width)
  (string-append text (make-string (max 0 (- width (width-of text))) #\space)))

(define gap 2) ; blanks between columns

(define (print-row cells widths)
  (say (string-trim-right
        (string-concatenate
         (map (lambda (cell width) (padded cell (+ width gap))) cells widths)))))

;; Each row is a list of texts, as many as there are in the heading.
(define (print-table heading rows nothing)
  (if (null? rows)
      (say nothing)
      (let ((widths (apply map (lambda cells (apply max (map width-of cells)))
                           (cons heading rows))))
        (print-row heading widths)
        (print-row (map (lambda (width) (make-string width #\-)) widths) widths)
        (for-each (lambda (row) (print-row row widths)) rows))))

;; A list of facts (name . text); those without a text are omitted.
(define (print-facts facts)
  (let* ((there (filter cdr facts))
         (width (apply max (map (lambda (fact) (width-of (car fact))) there))))
    (for-each (lambda (fact) (say "  " (padded (car fact) (+ width gap)) (cdr fact))) there)))

(define (or-dash text) (or text "-"))
(define (joined texts) (if (null? texts) #f (string-join texts ", ")))
(define (yes-or-no flag) (if flag "yes" "no"))
(define (count-text n what)
  (string-append (number->string n) " " what (if (= n 1) "" "s")))

;;; What is shown --------------------------------------------------------------------------------

(define (state-text interface) (if (of interface 'up) "up" "down"))

(define (address-or-dash interface)
  (or-dash (and (of interface 'address) (block-text (of interface 'address)))))

(define (value-text value) (if (number? value) (number->string value) value))

(define (show-interfaces)
  (print-table
   '("Interface" "Address" "State" "MTU" "Speed" "Duplex" "Description")
   (map (lambda (each)
          (let* ((name (car each))
                 (interface (cdr each))
                 (ethernet? (eq? (car name) 'ethernet)))
            (list (interface-text name) (address-or-dash interface) (state-text interface)
                  (value-text (of interface 'mtu))
                  (if ethernet? (value-text (of interface 'speed)) "-")
                  (if ethernet? (of interface 'duplex) "-")
                  (or (of interface 'description) ""))))
        (interfaces))
   "there are no interfaces"))

(define (show-interface kind number)
  (let* ((name (known-interface kind number))
         (interface (entry 'interfaces name))
         (block (of interface 'address)))
    (say (interface-text name) " is " (state-text interface))
    (print-facts
     `(("description" . ,(of interface 'description))
       ("address" . ,(or (and block (block-text block)) "none"))
       ("mask" . ,(and block (address-text (mask-of (block-length block)))))
       ("secondary" . ,(joined (map block-text (of interface 'secondary))))
       ("relays DHCP to" . ,(and (of interface 'helper) (address-text (of interface 'helper))))
       ("list inwards" . ,(of interface 'in))
       ("list outwards" . ,(of interface 'out))
       ("MTU" . ,(value-text (of interface 'mtu)))
       ("speed" . ,(and (eq? kind 'ethernet) (value-text (of interface 'speed))))
       ("duplex" . ,(and (eq? kind 'ethernet) (of interface 'duplex)))))))

(define (show-ip-interfaces)
  (print-table
   '("Interface" "Address" "Mask" "State" "List in" "List out")
   (append-map
    (lambda (each)
      (map (lambda (block)
             (list (interface-text (car each)) (address-text (block-address block))
                   (address-text (mask-of (block-length block))) (state-text (cdr each))
                   (or-dash (of (cdr each) 'in)) (or-dash (of (cdr each) 'out))))
           (blocks-of (cdr each))))
    (interfaces))
   "no interface has an address"))

(define (hop-text route)
  (if (route-hop route) (address-text (route-hop route)) "thrown away"))

(define (show-routes)
  (define links (connected))
  (define (connected-row each)
    (list (block-text (make-block (block-network (car each)) (block-length (car each))))
          "connected" "0" "-" (interface-text (cdr each)) "active"))
  (define (static-row route)
    (let ((link (and (route-hop route) (link-to (route-hop route) links))))
      (list (block-text (route-block route)) "static" (number->string (route-distance route))
            (hop-text route) (if link (interface-text (cdr link)) "-")
            (if (active? route links) "active" "next hop out of reach"))))
  (if (not (setting 'forwarding)) (say "forwarding is off: nothing is passed on"))
  (print-table '("Network" "Kind" "Distance" "Next hop" "Interface" "State")
               (append (map connected-row links) (map static-row (setting 'routes)))
               "there are no routes"))

(define (show-route-to text)
  (let* ((address (host-of text))
         (links (connected))
         (link (link-to address links))
         (route (best-route address links))
         (where (lambda (link) (interface-text (cdr link)))))
    (cond ((own-address? address) (say text " is the device itself"))
          ((and link (not (and route (> (block-length (route-block route))
                                        (block-length (car link))))))
           (say text " is in the network of " (where link)))
          ((not route) (say text " has no route"))
          ((not (route-hop route))
           (say text " is thrown away, by the route " (block-text (route-block route))))
          (else (say text " goes to " (hop-text route) " on "
                     (where (link-to (route-hop route) links)) ", by the route "
                     (block-text (route-block route)))))))

(define (show-lists)
  (print-table
   '("Access list" "Rules" "Used by")
   (map (lambda (each)
          (list (car each) (number->string (length (of (cdr each) 'rules)))
                (or-dash (joined (map interface-text (users-of-list (car each)))))))
        (by-name 'lists))
   "there are no access lists"))

(define (ports-cell rule)
  (let ((ports (rule-ports rule)))
    (cond ((not ports) "all")
          ((eq? ports 'established) "established")
          ((= (car ports) (cdr ports)) (number->string (car ports)))
          (else (text-of (list (car ports) " to " (cdr ports)))))))

(define (show-list name)
  (say "access list " (known 'lists "access list" name))
  (print-table
   '("Rule" "Action" "Protocol" "From" "To" "Ports or remark")
   (map (lambda (rule)
          (cons (number->string (rule-number rule))
                (if (eq? (rule-action rule) 'remark)
                    (list "remark" "" "" "" (rule-protocol rule))
                    (list (symbol->string (rule-action rule))
                          (symbol->string (rule-protocol rule))
                          (side-text (rule-from rule)) (side-text (rule-to rule))
                          (ports-cell rule)))))
        (of (entry 'lists name) 'rules))
   "it has no rules")
  (say "What no rule decides is denied."))

(define (show-verdict name protocol from to port)
  (let* ((name (known 'lists "access list" name))
         (rule (deciding-rule name protocol (host-of from) (host-of to)
                              (and port (port-of port)))))
    (if rule
        (say (if (eq? (rule-action rule) 'permit) "permitted" "denied") " by rule "
             (rule-number rule) ": " (rule-text rule))
        (say "denied, since no rule of " name " decides"))))

(define (show-pools)
  (print-table
   '("Pool" "Network" "From" "To" "Gateway" "Servers" "Lease")
   (map (lambda (each)
          (let* ((pool (cdr each))
                 (range (of pool 'range))
                 (shown (lambda (address) (or-dash (and address (address-text address))))))
            (list (car each) (or-dash (and (of pool 'network) (block-text (of pool 'network))))
                  (shown (and range (car range))) (shown (and range (cdr range)))
                  (shown (of pool 'gateway))
                  (or-dash (joined (map address-text (of pool 'servers))))
                  (count-text (of pool 'lease) "hour"))))
        (by-name 'pools))
   "there are no pools"))

(define (show-users)
  (print-table '("User" "Privilege")
               (map (lambda (each) (list (car each) (value-text (of (cdr each) 'privilege))))
                    (by-name 'users))
               "there are no users"))

(define (show-services)
  (print-table '("Service" "State")
               (map (lambda (name) (list name (if (member name (setting 'services)) "on" "off")))
                    '("http" "ssh" "telnet"))
               ""))

(define (zone-text)
  (let ((hours (second (setting 'zone))))
    (text-of (list (first (setting 'zone)) " (" (if (< hours 0) "-" "+") (abs hours)
                   " hours)"))))

(define (show-names)
  (print-facts
   `(("host name" . ,(setting 'hostname))
     ("domain" . ,(setting 'domain))
     ("looks names up" . ,(yes-or-no (setting 'lookup)))
     ("DNS servers" . ,(joined (map address-text (setting 'dns)))))))

(define (show-time-servers)
  (print-facts
   `(("time zone" . ,(zone-text))
     ("NTP servers" . ,(or (joined (map address-text (setting 'ntp))) "none")))))

(define (show-logging)
  (print-facts
   `(("level" . ,(value-text (setting 'log-level)))
     ("hosts" . ,(or (joined (map address-text (setting 'log-hosts))) "none")))))

(define (show-snmp)
  (print-facts `(("location" . ,(or-dash (setting 'location)))
                 ("contact" . ,(or-dash (setting 'contact)))))
  (print-table '("Community" "Access")
               (map (lambda (each) (list (car each) (cdr each))) (setting 'communities))
               "no community: nobody is answered"))

(define (two-digits number) (string-pad (number->string number) 2 #\0))

(define (weekday date)
  (let* ((month (second date))
         (year (if (< month 3) (1- (first date)) (first date)))
         (shift (list-ref '(0 3 2 5 0 3 5 1 4 6 2 4) (1- month))))
    (list-ref '("Sunday" "Monday" "Tuesday" "Wednesday" "Thursday" "Friday" "Saturday")
              (modulo (+ year (quotient year 4) (- (quotient year 100)) (quotient year 400)
                         shift (third date))
                      7))))

(define months '("January" "February" "March" "April" "May" "June" "July" "August" "September"
                 "October" "November" "December"))

(define (show-clock)
  (let ((date (first clock)))
    (say (string-join (map two-digits (second clock)) ":") " " (first (setting 'zone)) ", "
         (weekday date) " " (third date) " " (list-ref months (1- (second date))) " "
         (first date))))

(define (show-version)
  (say (setting 'hostname) ", a small router that exists in this program only")
  (print-facts
   `(("Ethernet ports" . ,(number->string ports))
     ("interfaces" . ,(number->string (length (setting 'interfaces))))
     ("forwarding" . ,(if (setting 'forwarding) "on" "off"))
     ("saved" . ,(if (saved?) "yes" "no, there are changes")))))

;;; The running configuration --------------------------------------------------------------------
;;;
;;; The commands that make the same settings on a new device. Default values are omitted and the
;;; order is fixed, so that equal settings give equal text.

;; A text as a quoted string of the command language. A backslash escapes the next character; an
;; unescaped "$" could start a variable reference.
(define (in-quotes text)
  (string-append
   "\""
   (string-concatenate
    (map (lambda (letter)
           (if (memv letter '(#\" #\\ #\$)) (string #\\ letter) (string letter)))
         (string->list text)))
   "\""))

(define (line . parts) (list (text-of parts)))
(define (line-if there? . parts) (if there? (apply line parts) '()))

;; The line for a value that may be #f.
(define (line-for word value value->text)
  (if value (line word " " (value->text value)) '()))

(define (lines-for word values value->text)
  (append-map (lambda (value) (line-for word value value->text)) values))

(define (by-name table)
  (sort (setting table) (lambda (a b) (string<? (car a) (car b)))))

(define (side-text block)
  (case (block-length block)
    ((0) "any")
    ((32) (address-text (block-address block)))
    (else (block-text block))))

(define (ports-text ports protocol)
  (cond ((eq? ports 'established) " established")
        ((pair? ports)
         (if (= (car ports) (cdr ports))
             (text-of (list " port: " (car ports)))
             (text-of (list " ports: " (car ports) ", " (cdr ports)))))
        ((memq protocol '(tcp udp)) " all")
        (else "")))

(define (rule-text rule)
  (if (eq? (rule-action rule) 'remark)
      (string-append "remark: " (in-quotes (rule-protocol rule)))
      (string-append (symbol->string (rule-action rule)) " "
                     (symbol->string (rule-protocol rule))
                     " from: " (side-text (rule-from rule)) " to: " (side-text (rule-to rule))
                     (ports-text (rule-ports rule) (rule-protocol rule)))))

(define (section-lines heading body)
  (append heading (map (lambda (text) (string-append "  " text)) body) '("exit")))

(define (list-lines each)
  (section-lines (line "access list: " (car each))
                 (map (lambda (rule) (text-of (list "at: " (rule-number rule) " "
                                                    (rule-text rule))))
                      (of (cdr each) 'rules))))

(define (pool-lines each)
  (let ((pool (cdr each)))
    (section-lines
     (line "dhcp pool: " (car each))
     (append
      (line-for "network:" (of pool 'network) block-text)
      (line-for "range:" (of pool 'range)
                (lambda (range)
                  (string-append (address-text (car range)) ", " (address-text (cdr range)))))
      (line-for "gateway:" (of pool 'gateway) address-text)
      (lines-for "server:" (of pool 'servers) address-text)
      (line-for "domain:" (of pool 'domain) identity)
      (line-if (not (= (of pool 'lease) 24)) "lease: " (of pool 'lease))))))

(define (interface-body name interface)
  (define fresh (fresh-interface (car name)))
  (define (changed? key) (not (equal? (of interface key) (of fresh key))))
  (append
   (line-for "description:" (of interface 'description) in-quotes)
   (line-for "ip address:" (of interface 'address) block-text)
   (lines-for "ip secondary:" (of interface 'secondary) block-text)
   (line-for "ip helper:" (of interface 'helper) address-text)
   (line-for "access in:" (of interface 'in) identity)
   (line-for "access out:" (of interface 'out) identity)
   (line-if (changed? 'mtu) "mtu: " (of interface 'mtu))
   (line-if (changed? 'speed) "speed: " (of interface 'speed))
   (line-if (changed? 'duplex) "duplex " (of interface 'duplex))
   (line-if (changed? 'up) (if (of interface 'up) "no shutdown" "shutdown"))))

;; An Ethernet port exists without being configured.
(define (interface-lines each)
  (let ((kind (caar each))
        (body (interface-body (car each) (cdr each))))
    (if (and (eq? kind 'ethernet) (null? body))
        '()
        (section-lines (line "interface " (symbol->string kind) ": " (cdar each)) body))))

(define (route-lines route)
  (if (route-hop route)
      (append-line (line "ip route: " (block-text (route-block route)))
                   (line-if (not (= (route-distance route) 1))
                            " distance: " (route-distance route))
                   (line " via: " (address-text (route-hop route))))
      (line "ip route: " (block-text (route-block route)) " discard")))

(define (append-line . parts) (list (string-concatenate (concatenate parts))))

(define (device-lines)
  (append
   (line "hostname: " (setting 'hostname))
   (line-for "domain:" (setting 'domain) identity)
   (line-for "banner:" (setting 'banner) in-quotes)
   (line-if (not (equal? (setting 'zone) '("UTC" 0)))
            "clock zone: " (first (setting 'zone)) ", " (second (setting 'zone)))
   (lines-for "service" (sort (setting 'services) string<?) identity)
   (line-if (not (setting 'lookup)) "no dns lookup")
   (lines-for "dns server:" (setting 'dns) address-text)
   (lines-for "ntp server:" (setting 'ntp) address-text)
   (line-if (not (= (setting 'log-level) 6)) "logging level: " (setting 'log-level))
   (lines-for "logging host:" (setting 'log-hosts) address-text)
   (line-for "snmp location:" (setting 'location) in-quotes)
   (line-for "snmp contact:" (setting 'contact) in-quotes)
   (append-map (lambda (each) (line "snmp community: " (in-quotes (car each)) " " (cdr each)))
               (setting 'communities))
   (append-map (lambda (each)
                 (line "user name: " (car each) " privilege: " (of (cdr each) 'privilege)
                       " digest: " (of (cdr each) 'digest)))
               (by-name 'users))))

(define (configuration)
  (append
   '("configure terminal")
   (device-lines)
   (append-map list-lines (by-name 'lists))
   (append-map interface-lines (interfaces))
   (append-map pool-lines (by-name 'pools))
   (line-if (not (setting 'forwarding)) "no ip forwarding")
   (append-map route-lines (setting 'routes))
   '("end")))

(define (print-configuration lines) (for-each say lines))

;; The lines that the settings of a value would print.
(define (configuration-of settings)
  (let ((now running))
    (dynamic-wind (lambda () (set! running settings))
                  configuration
                  (lambda () (set! running now)))))

(define (show-startup)
  (if startup (print-configuration (configuration-of startup)) (say "nothing was saved yet")))

;; Whether a reload would leave the settings unchanged.
(define (saved?)
  (equal? (configuration) (configuration-of (or startup fresh-settings))))

(define (save-configuration file)
  (let ((text (string-join (configuration) "\n" 'suffix)))
    (save-file file (string->bytevector text (port-encoding (current-output-port)) 'substitute)))
  (say "saved to " file))
