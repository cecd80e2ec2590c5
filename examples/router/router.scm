;;; The configuration line of a small router: interfaces, addresses, routes, access lists, pools,
;;; users, and `show` in many forms. The router itself is simulated.
;;;
;;;     clui router.scm office.cmd        sets up the router of a small office and shows it
;;;     clui router.scm                   reads what you type; `help` lists the commands, and `?`
;;;                                       the words that can come next
;;;
;;; This file shows how to make a language with modes, questions and abbreviations from tables. It
;;; has six parts: words, commands, modes and their syntax, questions, words that work anywhere, and
;;; the prompt of a terminal. The settings and their checks are in device.scm, printing is in
;;; show.scm, saving in files.scm.

(load "device.scm")
(load "files.scm")
(load "show.scm")

(define parser (clui-parser-new 0)) ; the first parser that a script makes gets the text

;;; 1. Words -------------------------------------------------------------------------------------
;;;
;;; A word with a value ends in ":", and so do its short forms: `address:`, `addr:`. A word without
;;; one has no ":". Two words may differ only in that: `ip address: 10.0.0.1/24` sets what `no ip
;;; address` removes, and `show ip route` lists all routes where `show ip route: 10.0.0.9` shows
;;; that of one address.

(define a-text 1)
(define a-whole 3)

(define words (make-hash-table)) ; name -> id
(define forms (make-hash-table)) ; each text of a word -> the word's name

;; Checks that each form belongs to one word only. The dictionary does not always report a conflict:
;; the short form of a longer word can hide the full name of a shorter one.
(define (claim! form name)
  (let ((owner (hash-ref forms form)))
    (if owner (error "two words have the same text:" form owner name))
    (hash-set! forms form name)))

(define (check-id id name)
  (if (zero? id) (error "this word cannot be added:" name) id))

;; The proper prefixes of a text with at least `shortest` letters.
(define (beginnings text shortest)
  (map (lambda (n) (substring text 0 n)) (iota (- (string-length text) shortest) shortest)))

;; Adds a word with its help text, which a terminal, `?` and `help` show.
(define (add-word! name id text)
  (claim! name name)
  (hash-set! words name (check-id id name))
  (word-help parser id text))

;; Declares a word, its shortest form and its help text.
(define (word name shortest text)
  (for-each (lambda (form) (claim! form name)) (beginnings name (string-length shortest)))
  (add-word! name (clui-token parser name shortest) text))

;; Another name for the same word: it has the same id, so every syntax that accepts one accepts
;; both.
(define (also name other)
  (claim! other name)
  (check-id (clui-token parser (id-of name) other) other))

;; Declares a word with values. Such a word cannot have an abbreviation, so each short form is
;; another name. A value: its type, its name, a text, and for a number the range if it has one.
(define (value-word name shortest text . values)
  (let* ((types (map first values))
         (id (apply clui-token parser name types))
         (stem (string-drop-right name 1)))
    (add-word! name id text)
    (for-each (lambda (value k) (apply argument-help parser id k (cdr value)))
              values (iota (length values) 1))
    (for-each (lambda (beginning)
                (let ((form (string-append beginning ":")))
                  (claim! form name)
                  (check-id (apply clui-token parser id form types) form)))
              (beginnings stem (1- (string-length shortest))))))

(define (id-of name) (or (hash-ref words name) (error "no such word:" name)))
(define (explanation-of name) (word-help parser (id-of name)))

;; The names of a word's values: "FIRST, LAST".
(define (value-of name)
  (define (value-name k) (argument-help parser (id-of name) k))
  (string-join (map value-name (take-while value-name (iota 2 1))) ", "))

(for-each
 (lambda (row) (apply word row))
 '(("access" "ac" "access lists, which permit or deny packets")
   ("address" "addr" "the address of the interface")
   ("all" "all" "all ports")
   ("auto" "au" "negotiated with the other side")
   ("banner" "ba" "the text printed at the start")
   ("cancel" "can" "drops the unfinished command")
   ("clock" "clo" "date and time")
   ("configure" "conf" "changes the settings")
   ("contact" "con" "whom to ask about the device")
   ("copy" "cop" "copies one configuration over another")
   ("deny" "den" "rejects a packet")
   ("description" "desc" "what the interface is for")
   ("dhcp" "dh" "pools of addresses for clients")
   ("discard" "disc" "drops the packets")
   ("dns" "dn" "names of machines")
   ("domain" "dom" "the domain of this device")
   ("duplex" "dup" "whether both sides may send at once")
   ("end" "en" "back to the outermost mode")
   ("erase" "era" "erases a configuration")
   ("established" "est" "packets of established connections only")
   ("exit" "ex" "back by one mode")
   ("forwarding" "forw" "forwarding packets between interfaces")
   ("full" "fu" "both sides at once")
   ("gateway" "gate" "the default gateway of the clients")
   ("half" "ha" "one side at a time")
   ("help" "he" "lists the commands of this mode")
   ("helper" "helper" "the server to which DHCP requests are forwarded")
   ("hostname" "ho" "the name of this device")
   ("http" "ht" "the web page of the device")
   ("icmp" "ic" "ICMP, ping and the like")
   ("in" "in" "packets that come in")
   ("interface" "int" "the interfaces")
   ("ip" "ip" "addresses and routes, or: all protocols")
   ("lease" "lea" "how long a client may use an address")
   ("level" "lev" "how much is logged")
   ("lists" "lis" "all access lists")
   ("location" "loc" "where the device is")
   ("logging" "log" "log messages and the hosts that receive them")
   ("lookup" "look" "whether names are looked up by DNS")
   ("mtu" "mt" "the size of the largest packet")
   ("no" "no" "removes a setting, or answers a question")
   ("ntp" "nt" "time servers")
   ("out" "ou" "packets that go out")
   ("permit" "pe" "accepts a packet")
   ("range" "ran" "the addresses for clients")
   ("read" "rea" "read access")
   ("reload" "rel" "restarts the device")
   ("renumber" "ren" "numbers the rules 10, 20, 30 and so on")
   ("route" "ro" "routes to other networks")
   ("running" "ru" "the present configuration")
   ("secondary" "sec" "further addresses of the interface")
   ("service" "ser" "what the device offers: http, ssh, telnet")
   ("show" "sh" "shows settings and state")
   ("shutdown" "shut" "disables the interface")
   ("snmp" "sn" "access for network management")
   ("speed" "sp" "megabits per second")
   ("ssh" "ss" "the secure shell")
   ("startup" "st" "the configuration after a reload")
   ("tcp" "tc" "TCP, connections")
   ("telnet" "tel" "the shell without encryption")
   ("terminal" "t" "from this terminal")
   ("test" "tes" "tests a packet against a list")
   ("udp" "ud" "UDP, single packets")
   ("user" "u" "who may use the device")
   ("version" "ve" "what this device is")
   ("write" "w" "saves the settings, or: write access")
   ("yes" "y" "answers a question")
   ("zone" "zo" "the time zone")))

;; The singular and the plural: `interface ethernet: 0`, `show interfaces`.
(also "interface" "interfaces")
(also "service" "services")
(also "user" "users")

(for-each
 (lambda (row) (apply value-word row))
 `(("address:" "addr:" "the address and its network: 10.0.0.1/24"
    (,a-text "ADDRESS/LENGTH" "such as 10.0.0.1/24, or 10.0.0.1, 255.255.255.0"))
   ("at:" "at:" "the number of the rule that follows"
    (,a-whole "NUMBER" "of the rule" 1 100000))
   ("banner:" "ban:" "the text printed at the start" (,a-text "TEXT" "1 to 200 letters"))
   ("community:" "com:" "the community name" (,a-text "TEXT" "1 to 200 letters"))
   ("contact:" "con:" "whom to ask about the device" (,a-text "TEXT" "1 to 200 letters"))
   ("date:" "dat:" "the date" (,a-text "YYYY-MM-DD" "such as 2025-03-31"))
   ("description:" "desc:" "what the interface is for" (,a-text "TEXT" "1 to 200 letters"))
   ("digest:" "dig:" "a secret, as `show running` writes it"
    (,a-text "DIGITS" "16 digits from 0 to f"))
   ("distance:" "dist:" "the distance; the smallest is used"
    (,a-whole "NUMBER" "of the route" 1 255))
   ("domain:" "dom:" "the name of the domain"
    (,a-text "NAME" "letters, digits, and the signs - _ ."))
   ("ethernet:" "eth:" "an Ethernet port, 0 to 3" (,a-whole "NUMBER" "of the port" 0 3))
   ("file:" "fil:" "a file" (,a-text "NAME" "the file that is written"))
   ("from:" "fr:" "the source: 10.0.0.0/8, 10.0.0.1 or any"
    (,a-text "NETWORK" "a network, a machine, or any"))
   ("gateway:" "gate:" "the default gateway of the clients"
    (,a-text "ADDRESS" "in the network of the pool"))
   ("helper:" "hel:" "the server to which DHCP requests are forwarded"
    (,a-text "ADDRESS" "of a machine"))
   ("host:" "ho:" "a host that receives log messages" (,a-text "ADDRESS" "of a machine"))
   ("hostname:" "hostn:" "the name of this device"
    (,a-text "NAME" "letters, digits, and the signs - _ ."))
   ("in:" "in:" "an access list for packets that come in"
    (,a-text "LIST" "the name of an access list"))
   ("lease:" "lea:" "how long a client may use an address"
    (,a-whole "HOURS" "a year at most" 1 8760))
   ("level:" "lev:" "how much is logged, 0 to 7" (,a-whole "NUMBER" "7 logs everything" 0 7))
   ("list:" "lis:" "an access list" (,a-text "NAME" "letters, digits, and the signs - _ ."))
   ("location:" "loc:" "where the device is" (,a-text "TEXT" "1 to 200 letters"))
   ("loopback:" "loo:" "an address of the device itself, 0 to 99"
    (,a-whole "NUMBER" "of the loopback" 0 99))
   ("mtu:" "mt:" "the size of the largest packet" (,a-whole "BYTES" "of a packet" 68 9216))
   ("name:" "na:" "a user" (,a-text "NAME" "letters, digits, and the signs - _ ."))
   ("network:" "net:" "the network: 10.0.0.0/24"
    (,a-text "NETWORK/LENGTH" "such as 10.0.0.0/24"))
   ("out:" "ou:" "an access list for packets that go out"
    (,a-text "LIST" "the name of an access list"))
   ("pool:" "po:" "a pool of addresses" (,a-text "NAME" "letters, digits, and the signs - _ ."))
   ("port:" "port:" "one port" (,a-whole "NUMBER" "of TCP or UDP" 0 65535))
   ("ports:" "ports:" "all ports between two"
    (,a-whole "FIRST" "the lowest port" 0 65535) (,a-whole "LAST" "the highest port" 0 65535))
   ("privilege:" "priv:" "how much the user may, 0 to 15"
    (,a-whole "NUMBER" "15 permits everything" 0 15))
   ("range:" "ran:" "the addresses for clients"
    (,a-text "FIRST" "the lowest address") (,a-text "LAST" "the highest address"))
   ("remark:" "rem:" "a note among the rules" (,a-text "TEXT" "1 to 200 letters"))
   ("route:" "ro:" "a network, or in `show` an address in it"
    (,a-text "NETWORK/LENGTH" "such as 10.0.0.0/8"))
   ("secondary:" "sec:" "a further address of the interface"
    (,a-text "ADDRESS/LENGTH" "such as 10.0.1.1/24"))
   ("secret:" "secr:" "the password of the user" (,a-text "TEXT" "6 letters or more"))
   ("server:" "ser:" "the address of a server" (,a-text "ADDRESS" "of a machine"))
   ("speed:" "sp:" "megabits per second: 10, 100, 1000" (,a-whole "NUMBER" "10, 100 or 1000"))
   ("time:" "ti:" "the time of day" (,a-text "HH:MM:SS" "such as 08:30:00"))
   ("to:" "to:" "the destination: 10.0.0.0/8, 10.0.0.1 or any"
    (,a-text "NETWORK" "a network, a machine, or any"))
   ("via:" "vi:" "the next router"
    (,a-text "ADDRESS" "of a machine in a network of this router"))
   ("vlan:" "vl:" "a virtual network, 1 to 4094"
    (,a-whole "NUMBER" "of the virtual network" 1 4094))
   ("zone:" "zo:" "the time zone, hours ahead of UTC"
    (,a-text "NAME" "such as JST") (,a-whole "HOURS" "ahead of UTC" -12 14))))

;; A one-character word is recognised without blanks around it: `show ?`, and `sh?` as well.
(define question-mark (clui-token parser #\?))
(add-word! "?" question-mark "lists the words that can come next")

;; What a value can be, for a terminal that completes it. Names change while the router is
;; configured, so they are given by procedures.
(define (names-in table)
  (lambda (typed) (sort (map car (setting table)) string<?)))

(define (interface-numbers kind)
  (lambda (typed)
    (filter-map (lambda (each) (and (eq? (caar each) kind) (number->string (cdar each))))
                (interfaces))))

(for-each
 (lambda (row) (argument-values parser (id-of (first row)) 1 (second row)))
 `(("community:" ,(names-in 'communities))
   ("ethernet:" ,(interface-numbers 'ethernet))
   ("file:" files)
   ("from:" ("any"))
   ("in:" ,(names-in 'lists))
   ("list:" ,(names-in 'lists))
   ("loopback:" ,(interface-numbers 'loopback))
   ("name:" ,(names-in 'users))
   ("out:" ,(names-in 'lists))
   ("pool:" ,(names-in 'pools))
   ("speed:" ("10" "100" "1000"))
   ("to:" ("any"))
   ("vlan:" ,(interface-numbers 'vlan))))

;;; 2. Commands ----------------------------------------------------------------------------------
;;;
;;; A command ends at the first word after which it is complete; ends of lines have no meaning. So
;;; each command ends with a word of its own, or with a value, and no command is a prefix of another
;;; one. Optional parts are not at the end (`distance:`), or there are two commands.
;;;
;;; The code of a command is a template, but typed text and numbers are never inserted into it: they
;;; are passed as values. n is the index of a word in the command; -1 is the last one.

;; The values of word n. More values than the word declares are refused, since they would be ignored
;; silently.
(define (args n most)
  (let* ((words (command-words parser))
         (values (cddr (list-ref words (if (negative? n) (+ n (length words)) n)))))
    (if (> (length values) most)
        (refuse "there is a value too many: " (value-text (list-ref values most))))
    values))

(define (arg n) (first (args n 1)))

;; A block may have its mask as a second value: `address: 10.0.0.1, 255.255.255.0`.
(define (block n) (args n 2))

;; A command: its words, its code, and a line for `help` (#f: not listed there).
(define (command text code help) (list (string-split text #\space) code help))

;; Code for words that are the start of other commands.
(define (step text code) (list (string-split text #\space) code 'step))

(define row-words first)
(define row-code second)
(define row-help third)
(define (step? row) (eq? (row-help row) 'step))

(define show-commands
  (list
   (command "show access list:" "(show-list (arg -1))" "one access list")
   (command "show access lists" "(show-lists)" "all access lists")
   (command "show banner" "(say (or (setting 'banner) \"there is no banner\"))" "the banner")
   (command "show clock" "(show-clock)" "date and time")
   (command "show dhcp" "(show-pools)" "the pools of addresses")
   (command "show dns" "(show-names)" "names and the servers for them")
   (command "show ethernet:" "(show-interface 'ethernet (arg -1))" "one Ethernet port")
   (command "show interface" "(show-interfaces)" "all interfaces")
   (command "show ip interface" "(show-ip-interfaces)" "all addresses of interfaces")
   (command "show ip route" "(show-routes)" "all routes")
   (command "show ip route:" "(show-route-to (arg -1))" "the way to one address")
   (command "show logging" "(show-logging)" "what is logged, and where")
   (command "show loopback:" "(show-interface 'loopback (arg -1))" "one loopback")
   (command "show ntp" "(show-time-servers)" "the time zone and the servers")
   (command "show running" "(print-configuration (configuration))" "the settings, as commands")
   (command "show service" "(show-services)" "what the device offers")
   (command "show snmp" "(show-snmp)" "who may ask this device")
   (command "show startup" "(show-startup)" "what was saved, as commands")
   (command "show user" "(show-users)" "who may use the device")
   (command "show version" "(show-version)" "what this device is")
   (command "show vlan:" "(show-interface 'vlan (arg -1))" "one virtual network")))

(define (verdict-command protocol port?)
  (command (string-append "test list: " protocol " from: to:" (if port? " port:" ""))
           (string-append "(show-verdict (arg 1) '" protocol
                          (if port? " (arg -3) (arg -2) (arg -1))" " (arg -2) (arg -1) #f)"))
           "what a list says about a packet"))

(define exec-commands
  (list
   (command "clock date: time:" "(set-clock! (arg -2) (arg -1))" "sets the clock")
   (command "configure terminal" "(enter! 'config)" "changes the settings")
   (command "copy running file:" "(save-configuration (arg -1))" "writes the settings to a file")
   (command "copy running startup" "(save!)" "saves the settings for the next start")
   (command "copy startup running" "(restore!)" "restores the saved settings")
   (command "erase startup" "(ask-to-erase!)" "erases the saved settings; asks")
   (command "exit" "(refuse \"this is the outermost mode; the end of the input ends the session\")"
            #f)
   (command "reload" "(ask-to-reload!)" "restarts the device; asks")
   (verdict-command "icmp" #f)
   (verdict-command "tcp" #t)
   (verdict-command "udp" #t)
   (command "write" "(save!)" "the same as copy running startup")))

(define answers
  (list
   (command "yes" "(answer! #t)" #f)
   (command "no" "(answer! #f)" #f)))

;; In modes that change settings, `no` also starts commands. Its code then answers an open question;
;; the frame of the `no` is popped with the question.
(define leaving
  (list
   (command "end" "(enter! 'exec)" "back to the outermost mode")
   (command "exit" "(leave!)" "back by one mode")
   (command "yes" "(answer! #t)" #f)
   (step "no" "(if question (answer! #f))")))

;; These open a section of the settings. They are also available inside the sections.
(define openers
  (list
   (command "access list:" "(open-list! (arg -1))" "begins or changes an access list")
   (command "dhcp pool:" "(open-pool! (arg -1))" "begins or changes a pool")
   (command "interface ethernet:" "(open-interface! 'ethernet (arg -1))"
            "changes an Ethernet port")
   (command "interface loopback:" "(open-interface! 'loopback (arg -1))"
            "begins or changes a loopback")
   (command "interface vlan:" "(open-interface! 'vlan (arg -1))"
            "begins or changes a virtual network")))

(define config-commands
  (list
   (command "banner:" "(set-to! 'banner (note-of (arg -1)))" "greets with a text")
   (command "clock zone:" "(set-zone! (args -1 2))" "sets the time zone")
   (command "dns lookup" "(set-to! 'lookup #t)" "asks for the addresses of names")
   (command "dns server:" "(include! 'dns (host-of (arg -1)))" "adds a server for names")
   (command "domain:" "(set-to! 'domain (name-of \"a domain\" (arg -1)))" "names the domain")
   (command "hostname:" "(rename! (name-of \"a device\" (arg -1)))"
            "names the device")
   (command "ip forwarding" "(set-to! 'forwarding #t)" "passes packets on")
   (command "ip route: discard" "(add-route! (block -2) #f 1)" "throws packets away")
   (command "ip route: distance: via:"
            "(add-route! (block -3) (host-of (arg -1)) (arg -2))" "the same, less preferred")
   (command "ip route: via:" "(add-route! (block -2) (host-of (arg -1)) 1)"
            "sends packets for a network on")
   (command "logging host:" "(include! 'log-hosts (host-of (arg -1)))" "logs to a machine")
   (command "logging level:" "(set-to! 'log-level (within \"a level\" 0 (arg -1) 7))"
            "sets how much is logged")
   (command "ntp server:" "(include! 'ntp (host-of (arg -1)))" "adds a server for the time")
   (command "service http" "(include! 'services \"http\")" "offers the web page")
   (command "service ssh" "(include! 'services \"ssh\")" "offers the secure shell")
   (command "service telnet" "(include! 'services \"telnet\")" "offers telnet")
   (command "snmp community: read" "(set-community! (arg -2) \"read\")" "gives read access")
   (command "snmp community: write" "(set-community! (arg -2) \"write\")" "gives write access")
   (command "snmp contact:" "(set-to! 'contact (note-of (arg -1)))" "sets whom to ask")
   (command "snmp location:" "(set-to! 'location (note-of (arg -1)))" "sets where the device is")
   (command "user name: privilege: digest:"
            "(set-user! (arg 1) (arg 2) (check-digest (arg 3)))" "the same, from a listing")
   (command "user name: privilege: secret:"
            "(set-user! (arg 1) (arg 2) (digest-of (arg 1) (secret-of (arg 3))))"
            "adds a user")
   (step "user name: privilege:" "(ask-about-privilege! (arg 1) (arg 2))")

   (command "no access list:" "(ask-to-drop-list! (arg -1))" "drops a list; asks if it is used")
   (command "no banner" "(set-to! 'banner #f)" "removes the banner")
   (command "no clock zone" "(set-to! 'zone '(\"UTC\" 0))" "back to UTC")
   (command "no dhcp pool:" "(drop-named! 'pools \"pool\" (arg -1))" "drops a pool")
   (command "no dns lookup" "(set-to! 'lookup #f)" "does not look names up")
   (command "no dns server:" "(exclude! 'dns (host-of (arg -1)) (arg -1))" "drops a server")
   (command "no domain" "(set-to! 'domain #f)" "removes the domain")
   (command "no hostname" "(rename! \"router\")" "is called router again")
   (command "no interface loopback:" "(drop-interface! 'loopback (arg -1))" "drops a loopback")
   (command "no interface vlan:" "(drop-interface! 'vlan (arg -1))" "drops a virtual network")
   (command "no ip forwarding" "(set-to! 'forwarding #f)" "forwards nothing")
   (command "no ip route:" "(drop-routes! (block -1))" "drops the routes to a network")
   (command "no logging host:" "(exclude! 'log-hosts (host-of (arg -1)) (arg -1))"
            "stops logging to that host")
   (command "no logging level" "(set-to! 'log-level 6)" "restores the default level")
   (command "no ntp server:" "(exclude! 'ntp (host-of (arg -1)) (arg -1))" "drops a server")
   (command "no service http" "(exclude! 'services \"http\" \"http\")" "stops offering it")
   (command "no service ssh" "(exclude! 'services \"ssh\" \"ssh\")" "stops offering it")
   (command "no service telnet" "(exclude! 'services \"telnet\" \"telnet\")"
            "stops offering it")
   (command "no snmp community:" "(drop-community! (arg -1))" "removes a community")
   (command "no snmp contact" "(set-to! 'contact #f)" "removes the contact")
   (command "no snmp location" "(set-to! 'location #f)" "removes the location")
   (command "no user name:" "(drop-named! 'users \"user\" (arg -1))" "drops a user")))

(define interface-commands
  (list
   (command "access in:" "(attach-list! 'in (arg -1))" "a list for incoming packets")
   (command "access out:" "(attach-list! 'out (arg -1))" "a list for outgoing packets")
   (command "description:" "(set-here! 'description (note-of (arg -1)))" "sets the description")
   (command "duplex auto" "(set-duplex! \"auto\")" "negotiates with the other side")
   (command "duplex full" "(set-duplex! \"full\")" "both sides at once")
   (command "duplex half" "(set-duplex! \"half\")" "one side at a time")
   (command "ip address:" "(set-address! (block -1))" "sets the address")
   (command "ip helper:" "(set-here! 'helper (host-of (arg -1)))" "forwards DHCP requests")
   (command "ip secondary:" "(add-secondary! (block -1))" "adds an address")
   (command "mtu:" "(set-here! 'mtu (within \"an MTU\" 68 (arg -1) 9216))"
            "sets the largest packet")
   (command "shutdown" "(set-here! 'up #f)" "disables the interface")
   (command "speed auto" "(set-speed! \"auto\")" "negotiates with the other side")
   (command "speed:" "(set-speed! (arg -1))" "sets the speed")

   (command "no access in" "(set-here! 'in #f)" "accepts all incoming packets")
   (command "no access out" "(set-here! 'out #f)" "accepts all outgoing packets")
   (command "no description" "(set-here! 'description #f)" "removes the description")
   (command "no ip address" "(clear-address!)" "removes the address")
   (command "no ip helper" "(set-here! 'helper #f)" "forwards no requests")
   (command "no ip secondary:" "(drop-secondary! (block -1))" "drops a further address")
   (command "no mtu" "(set-here! 'mtu 1500)" "back to 1500")
   (command "no shutdown" "(set-here! 'up #t)" "enables the interface")))

;; What can follow a protocol: the words, the code for the ports, and the index of `to:` from the
;; end.
(define port-endings
  '((" all" "#f" -2 "all ports")
    (" port:" "(port-range (list (arg -1) (arg -1)))" -2 "one port")
    (" ports:" "(port-range (args -1 2))" -2 "some ports")))
(define tcp-endings
  (append port-endings '((" established" "'established" -2 "established connections only"))))
(define no-ending '(("" "#f" -1 "")))

(define (rule-command front number action protocol ending)
  (let ((to (third ending)))
    (command
     (string-append front action " " protocol " from: to:" (first ending))
     (text-of (list "(add-rule! " number " '" action " '" protocol
                    " (side-of (block " (1- to) ")) (side-of (block " to ")) " (second ending)
                    ")"))
     (and (string-null? front)
          (string-append (if (string=? action "permit") "accepts " "rejects ")
                         (if (string=? protocol "ip") "everything" (string-upcase protocol))
                         (if (string-null? (fourth ending)) "" ", ")
                         (fourth ending))))))

(define (rule-commands front number)
  (append-map
   (lambda (action)
     (append-map
      (lambda (protocol endings)
        (map (lambda (ending) (rule-command front number action protocol ending)) endings))
      '("tcp" "udp" "icmp" "ip")
      (list tcp-endings port-endings no-ending no-ending)))
   '("permit" "deny")))

(define list-commands
  (append
   (rule-commands "" "#f")
   (rule-commands "at: " "(arg 0)")
   (list
    (command "at: remark:" "(add-rule! (arg 0) 'remark (note-of (arg -1)) #f #f #f)"
             "at: NUMBER before a rule sets its number")
    (command "remark:" "(add-rule! #f 'remark (note-of (arg -1)) #f #f #f)" "adds a note")
    (command "renumber" "(renumber!)" "numbers the rules by tens")
    (command "no at:" "(drop-rule! (arg -1))" "drops a rule"))))

(define pool-commands
  (list
   (command "domain:" "(set-here! 'domain (name-of \"a domain\" (arg -1)))"
            "the domain of the clients")
   (command "gateway:" "(set-here! 'gateway (in-pool (host-of (arg -1))))"
            "the default gateway of the clients")
   (command "lease:" "(set-here! 'lease (within \"a lease\" 1 (arg -1) 8760))"
            "how long a client may use an address")
   (command "network:" "(set-pool-network! (block -1))" "the network; set it first")
   (command "range:" "(set-pool-range! (args -1 2))" "the addresses for clients")
   (command "server:" "(add-pool-server! (arg -1))" "a name server for the hosts")

   (command "no domain" "(set-here! 'domain #f)" "removes the domain")
   (command "no gateway" "(set-here! 'gateway #f)" "removes the gateway")
   (command "no lease" "(set-here! 'lease 24)" "back to a day")
   (command "no range" "(set-here! 'range #f)" "removes the range")
   (command "no server:" "(drop-pool-server! (arg -1))" "removes a server")))

(define (set-zone! values)
  (set-to! 'zone (list (name-of "a time zone" (first values))
                       (within "a time zone" -12 (second values) 14))))

(define (set-community! text access)
  (let ((others (alist-delete (note-of text) (setting 'communities))))
    (check-room others)
    (set-to! 'communities (append others (list (cons text access))))))

(define (drop-community! text)
  (if (not (assoc text (setting 'communities))) (refuse "there is no community " (quoted text)))
  (set-to! 'communities (alist-delete text (setting 'communities))))

(define (drop-named! table what name) (drop-entry! table (known table what name)))

(define (drop-pool-server! text)
  (let ((address (host-of text)))
    (if (not (member address (of (this) 'servers))) (refuse text " is not there"))
    (set-here! 'servers (delete address (of (this) 'servers)))))

(define (open-interface! kind number)
  (open-section! 'interfaces (interface-name kind number) (fresh-interface kind))
  (enter! 'interface))

(define (open-list! name)
  (open-section! 'lists (name-of "an access list" name) '((rules . ())))
  (enter! 'list))

(define (open-pool! name)
  (open-section! 'pools (name-of "a pool" name) fresh-pool)
  (enter! 'pool))

(define (save!)
  (set! startup running)
  (say "saved"))

(define (restore!)
  (if (not startup) (refuse "nothing was saved yet"))
  (set! running startup)
  (show-prompt!))

;;; 3. Modes and their syntax --------------------------------------------------------------------
;;;
;;; A mode is a syntax of its own, set when the mode begins. The alternative would be one syntax for
;;; all modes, and code that refuses commands of other modes; but completion, `?` and the message
;;; about an unexpected word use the syntax, and would offer words that are then refused.
;;;
;;; Setting a syntax discards the unfinished command and all frames, which does no harm here, since
;;; a mode changes only at the end of a command. It also removes the words that work anywhere, so
;;; they are declared again each time.

(define modes
  `((exec . ,(append exec-commands show-commands answers))
    (config . ,(append openers config-commands show-commands leaving))
    (interface . ,(append interface-commands openers show-commands leaving))
    (list . ,(append list-commands openers show-commands leaving))
    (pool . ,(append pool-commands openers show-commands leaving))))

(define mode #f)

(define (enter! new-mode)
  (if (memq new-mode '(exec config)) (set! section #f))
  (when (not (eq? new-mode mode))
    (set! mode new-mode)
    (clui-set-syntax parser (syntax-of (assq-ref modes mode) #t))
    (declare-words-for-anywhere!))
  (show-prompt!))

(define (leave!) (enter! (if (eq? mode 'config) 'exec 'config)))

;; Commands that start with the same words share their nodes. If two nodes accepted the same word,
;; removing a later word (as each word that works anywhere does) would continue from one of them
;; only. So a syntax is a tree with one node for each word that can follow. A fragment can be used
;; only once, so this procedure makes new ones each time.
(define (syntax-of rows first?)
  (let ((choices (map (lambda (group) (choice-of (car group) (cdr group) first?))
                      (by-first-word rows))))
    (if (null? (cdr choices)) (car choices) (apply clui-oneof choices))))

(define (choice-of name rows first?)
  (let* ((here (find (lambda (row) (null? (cdr (row-words row)))) rows))
         (rest (map (lambda (row) (cons (cdr (row-words row)) (cdr row)))
                    (delete here rows eq?)))
         (parts (append (if first? (list (priority-of name)) '())
                        (list (id-of name))
                        (if here (list (row-code here)) '())
                        (if (null? rest) '() (list (syntax-of rest #f))))))
    (if (and here (not (step? here)) (pair? rest))
        (error "a command is over before its last word:" name rest))
    (apply clui-syntax parts)))

;; ((word . rows)...), the words in the order of their first occurrence.
(define (by-first-word rows)
  (fold-right
   (lambda (name groups)
     (acons name (filter (lambda (row) (string=? name (car (row-words row)))) rows) groups))
   '()
   (delete-duplicates (map (lambda (row) (car (row-words row))) rows))))

;;; 4. Questions ---------------------------------------------------------------------------------
;;;
;;; A question pushes a frame: what is typed next is a new command, and the one that asked waits
;;; below, unfinished or complete. Priorities ensure that only an answer can come in between: each
;;; command can be interrupted only by commands of a priority up to 10, which are the two answers.
;;; Anything else is refused, and the question stays open.

(define (priority-of name)
  (if (member name '("yes" "no")) (clui-priority 10 10) (clui-priority 127 10)))

(define question #f) ; (procedure of the answer . whether an unfinished command waits)

(define (ask! text unfinished? then)
  (say text " (yes or no)")
  (set! question (cons then unfinished?))
  (clui-push parser))

;; The frame of a finished command is reset here, because the question left it as it was. After a
;; `no`, an unfinished one is discarded as well.
(define (answer! yes?)
  (if (not question) (refuse "there is no question to answer"))
  (let ((then (car question))
        (goes-on? (and (cdr question) yes?)))
    (set! question #f)
    (clui-pop parser)
    (if (not goes-on?) (clui-reset parser))
    (if yes? (then) (say "nothing was changed"))))

(define (ask-to-reload!)
  (ask! (if (saved?) "Reload?" "There are changes that were not saved. Reload all the same?")
        #f reload!))

(define (reload!)
  (set! running (or startup fresh-settings))
  (show-prompt!)
  (say "reloaded")
  (if (setting 'banner) (say (setting 'banner))))

(define (ask-to-erase!)
  (if (not startup) (refuse "nothing was saved yet"))
  (ask! "Forget what was saved?" #f (lambda () (set! startup #f))))

(define (ask-to-drop-list! name)
  (let ((used-by (users-of-list (known 'lists "access list" name))))
    (if (null? used-by)
        (drop-list! name)
        (ask! (text-of (list "It is used by " (joined (map interface-text used-by))
                             ". Remove it there, too?"))
              #f (lambda () (drop-list! name))))))

;; This question interrupts a command, which continues after `yes`.
(define (ask-about-privilege! name privilege)
  (let ((user (entry 'users name)))
    (if (and user (not (= privilege (of user 'privilege))))
        (ask! (text-of (list name " has the privilege " (of user 'privilege)
                             ". Change it to " privilege "?"))
              #t (lambda () #t)))))

;;; 5. Words that work anywhere ------------------------------------------------------------------
;;;
;;; Such a word stays in the command line and would shift the indices of the others, so each first
;;; removes itself.

(define (aside procedure)
  (clui-delete-last parser)
  (procedure))

(define (declare-words-for-anywhere!)
  (clui-indefinite-syntax parser question-mark "(aside list-words)")
  (clui-indefinite-syntax parser (id-of "help") "(aside list-commands-of-mode)")
  (clui-indefinite-syntax parser (id-of "cancel") "(aside cancel!)"))

(define (cancel!)
  (if question (answer! #f) (clui-reset parser)))

(define (prompt)
  (string-append
   (setting 'hostname)
   (cond (section (string-append "(" (section-text) ")"))
         ((eq? mode 'config) "(config)")
         (else ""))
   "#"))

(define (section-text)
  (case (car section)
    ((interfaces) (interface-text (cdr section)))
    ((lists) (string-append "list " (cdr section)))
    (else (string-append "pool " (cdr section)))))

(define (explained name)
  (string-append name (if (string-null? (value-of name)) "" " ") (value-of name)))

(define (print-lines lines)
  (let ((width (apply max (map (lambda (each) (width-of (car each))) lines))))
    (for-each (lambda (each) (say "  " (padded (car each) (+ width gap)) (cdr each))) lines)))

;; The answers are always words of the syntax, but are offered only when there is a question.
(define (list-words)
  (let ((hidden (if (eq? mode 'exec) '("yes" "no") '("yes")))
        (possible (delete-duplicates (clui-find-possible-token parser ""))))
    (say (prompt))
    (print-lines (map (lambda (name) (cons (explained name) (explanation-of name)))
                      (if question '("no" "yes")
                          (sort (lset-difference string=? possible hidden) string<?))))))

(define (list-commands-of-mode)
  (say (prompt))
  (print-lines
   (append
    (filter-map (lambda (row)
                  (and (string? (row-help row))
                       (cons (string-join (map explained (row-words row)) " ") (row-help row))))
                (assq-ref modes mode))
    '(("?" . "lists the words that can come next, also within a command")
      ("cancel" . "drops an unfinished command")
      ("help" . "this list")))))

;;; 6. In a terminal -----------------------------------------------------------------------------
;;;
;;; The prompt shows the mode. Control-C answers a question with `no`.

(define (show-prompt!) (terminal-prompt (string-append (prompt) " ") "... "))

(define (rename! name)
  (set-to! 'hostname name)
  (show-prompt!))

(set! terminal-interrupt
      (lambda (parser)
        (if question (answer! #f) (terminal-give-up parser))))

(enter! 'exec)
