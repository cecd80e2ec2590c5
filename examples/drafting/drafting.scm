;;; A drafting language: words for lines, rectangles, circles, arcs, walls, doors and labels, on
;;; layers, in groups, saved as SVG.
;;;
;;;     clui drafting.scm house.cmd        draws the house and writes house.svg
;;;     clui drafting.scm                  draws what you type; `help` names the words
;;;
;;; This file is also meant to be read: it shows how a command language is made. It has five parts:
;;; words, what the words do, syntax, words that work anywhere, and predefined aliases and
;;; variables. The drawing itself is in model.scm and figures.scm, the picture in svg.scm and
;;; files.scm.

(load "model.scm")
(load "figures.scm")
(load "files.scm")
(load "svg.scm")

(define parser (clui-parser-new 0)) ; the first parser that a script makes gets the text
(terminal-mode 'word)               ; each word is drawn when it is typed

;;; 1. Words -------------------------------------------------------------------------------------
;;;
;;; The name of a word with arguments ends in ":". The echo and the log write a word and its first
;;; argument without a blank between them; without the ":" the two would read as one word.
;;;
;;; Coordinates are declared as two numbers and not as one point, for three reasons: a number may
;;; have a fraction, it may come from a variable (at: ${x}[2],${y}[0]), and it is in the unit that
;;; `unit:` sets. A point consists of whole numbers; that is right for `origin:` and `margin:`,
;;; which are whole millimetres.

(define a-string 1)
(define a-number 2)
(define a-whole 3)
(define a-point 4)

;; Declares a word with its help text. What follows is its arguments, or its shortest accepted form.
;; An argument is a list of its type, its name, a text, and for a number the range if it has one. A
;; terminal shows all this. For a word that already exists clui-token returns 0, which no syntax can
;; contain.
(define (word name text . more)
  (let ((id (apply clui-token parser name
                   (map (lambda (each) (if (pair? each) (first each) each)) more)))
        (arguments (filter pair? more)))
    (if (zero? id) (error "this word cannot be added:" name))
    (word-help parser id text)
    (for-each (lambda (argument k) (apply argument-help parser id k (cdr argument)))
              arguments (iota (length arguments) 1))
    id))

;; Another name for the same word: it has the same id, so every syntax that accepts one accepts
;; both. The id is given before the name; a number after the name is the type of an argument.
(define (also id name . more)
  (if (zero? (apply clui-token parser id name more))
      (error "this word cannot be added:" name)))

(define an-x (list a-number "X" "to the right, in units"))
(define a-y (list a-number "Y" "upwards, in units"))
(define a-dx (list a-number "DX" "to the right, in units"))
(define a-dy (list a-number "DY" "upwards, in units"))

;; Words that start a shape with a position, and words that continue from there.
(define point: (word "point:" "a dot" an-x a-y))
(define line: (word "line:" "a line between two places" an-x a-y))
(define polyline: (word "polyline:" "a line through several places, until end or close" an-x a-y))
(define rect: (word "rect:" "a rectangle between two corners" an-x a-y))
(define circle: (word "circle:" "a circle around a place" an-x a-y))
(define arc: (word "arc:" "a part of a circle around a place" an-x a-y))
(define wall: (word "wall:" "a wall through several places, until end or close" an-x a-y))
(define door: (word "door:" "a door between two places of a wall" an-x a-y))
(define window: (word "window:" "a window between two places of a wall" an-x a-y))
(define stairs: (word "stairs:" "stairs that fill a rectangle" an-x a-y))
(define dimension: (word "dimension:" "the distances between places, until off:" an-x a-y))
(define to: (word "to:" "the next place" an-x a-y))
(define by: (word "by:" "the next place, relative to the previous one" a-dx a-dy))
(define at: (word "at:" "where it is drawn" an-x a-y))
(define radius: (word "radius:" "of the circle" (list a-number "RADIUS" "in units, more than 0")))
(define angles:
  (word "angles:" "where an arc begins and ends"
        (list a-number "BEGIN" "degrees, counter-clockwise from the right")
        (list a-number "END" "degrees, at most 360 more")))
(define steps: (word "steps:" "of the stairs" (list a-whole "COUNT" "of steps" 2 100)))
(define off: (word "off:" "draws the dimension" (list a-number "DISTANCE" "of its line, in units")))

;; A text after the arguments is the shortest accepted form.
(define end-word (word "end" "ends the line or wall"))
(define close-word (word "close" "ends it where it began" "cl"))
(define left-word (word "left" "hinged, opens to the left" "le"))
(define right-word (word "right" "hinged, opens to the right" "ri"))
(define sliding-word (word "sliding" "a sliding door" "sl"))
(define open-word (word "open" "an opening without a door" "op"))

;; Arguments beyond the declared ones are read as strings. That is how a word gets optional
;; arguments: `text: "one line", "another"`, `place: chair, 90`. They can have help, too.
(define text: (word "text:" "lines of text" (list a-string "LINE" "the first line")))
(argument-help parser text: 2 "LINE" "one more line, if wanted")
(define place: (word "place:" "a copy of a group" (list a-string "GROUP" "one that was finished")))
(argument-help parser place: 2 "DEGREES" "turns the copy, if wanted" -360 360)

(define undo-word (word "undo" "removes the last shape" "un"))
(define done-word (word "done" "ends the group" "do"))
(define title: (word "title:" "names the drawing" (list a-string "TITLE" "of the SVG file")))
(define scale:
  (word "scale:" "sets the scale" (list a-number "N" "the scale is 1 to N" 0.1 100000)))
(define margin:
  (word "margin:" "sets the margin" (list a-point "X,Y" "left and right, above and below, in mm")))
(define save: (word "save:" "writes the drawing" (list a-string "FILE" "the SVG file")))
(define record: (word "record:" "records what is typed" (list a-string "FILE" "for play:")))
(define stop-recording-word (word "stop-recording" "ends the recording"))
(define play: (word "play:" "draws a recording again" (list a-string "FILE" "written by record:")))
(define alias:
  (word "alias:" "another name for words"
        (list a-string "NAME" "of the alias") (list a-string "WORDS" "what it is replaced by")))
(define unalias: (word "unalias:" "removes an alias" (list a-string "NAME" "of the alias")))

;; Settings and other words that work anywhere.
(define group:
  (word "group:" "begins a group, until done" (list a-string "NAME" "for place:") an-x a-y))
(define layer: (word "layer:" "draws on another layer" (list a-string "NAME" "made if it is new")))
(define colour:
  (word "colour:" "of lines on this layer"
        (list a-string "COLOUR" "a name, or such as \"#c49a6c\"")))
(define pen: (word "pen:" "the width of lines on this layer" (list a-number "WIDTH" "in mm" 0 20)))
(define dash: (word "dash:" "the kind of lines on this layer" (list a-string "KIND" "of line")))
(define fill:
  (word "fill:" "the colour inside shapes on this layer" (list a-string "COLOUR" "or none")))
(define pattern:
  (word "pattern:" "the pattern inside shapes on this layer" (list a-string "KIND" "of pattern")))
(define unit: (word "unit:" "what lengths mean" (list a-number "LENGTH" "in mm" 0.001 1e6)))
(define origin:
  (word "origin:" "the place 0,0 from now on" (list a-point "X,Y" "in mm, from the first one")))
(define turn:
  (word "turn:" "turns what is drawn from now on" (list a-number "DEGREES" "to the left" -360 360)))
(define thickness:
  (word "thickness:" "of walls" (list a-number "WIDTH" "in units, more than 0")))
(define round:
  (word "round:" "of the corners of rectangles" (list a-number "RADIUS" "in units" 0 1e6)))
(define letters: (word "letters:" "the height of texts" (list a-number "HEIGHT" "in mm" 0.5 200)))
(define align:
  (word "align:" "the side of a text at its place" (list a-string "SIDE" "left, middle or right")))
(define where-word (word "where" "shows the settings" "wh"))
(define cancel-word (word "cancel" "drops the unfinished command" "can"))
(define help-word (word "help" "lists the words and their arguments" "he"))

;; What a string can be, for a terminal that completes it. A procedure is called for each question,
;; since layers and groups are made while drawing.
(define sides '("left" "middle" "right"))

(define (names-of table) (delete-duplicates (sort (map car table) string<?)))

(for-each
 (lambda (row) (argument-values parser (first row) 1 (second row)))
 `((,place: ,(lambda (typed) (names-of library)))
   (,layer: ,(lambda (typed) (names-of layers)))
   (,colour: ,(map car palette))
   (,fill: ,(cons "none" (map car palette)))
   (,dash: ,(map car dashes))
   (,pattern: ,patterns)
   (,align: ,sides)
   (,save: files)
   (,record: files)
   (,play: files)))

(also colour: "color:" a-string)
(also wall: "壁:" a-number a-number)
(also door: "戸:" a-number a-number)
(also window: "窓:" a-number a-number)
(also text: "文字:" a-string)

;;; 2. What the words do -------------------------------------------------------------------------
;;;
;;; The action of a word is a template: its $ forms are replaced, and the resulting text is run. $0
;;; is the first token of the command, $$ the last one, $-1 the one before it; [0] is a token's
;;; first argument; $p is the parser.
;;;
;;; A template may insert numbers, but must not insert strings: `"(label! \"$$[0]\")"` would run
;;; whatever a user types after a quote. Strings are passed as values: (token-argument $p n k)
;;; returns argument k of token n, where -1 is the last token. So the user's text is never read as a
;;; script.

;; All arguments of the first word of the command.
(define (first-arguments parser) (cddr (first (command-words parser))))

(define (draw-path! closed?)
  (draw! (make-shape 'path (look-now) (take-path!) (list closed? 0))))

(define (draw-rectangle!)
  (let ((ends (take-path!)))
    (draw! (make-shape 'path (look-now) (rectangle (first ends) (second ends))
                       (list #t (settings-round settings))))))

(define (draw-wall! closed?)
  (let ((points (without-repeats (take-path!))))
    (if (null? (cdr points)) (refuse "a wall needs two different places"))
    (draw! (make-shape 'wall (look-now) points (list closed? (settings-thickness settings))))))

(define (draw-dot!)
  (draw! (make-shape 'dot (look-now) (take-path!) '(0.6))))

(define (draw-arc! radius from to)
  (let ((size (size-of "a radius" radius))
        (last-angle (if (> to from) to (+ 360 to))))
    (if (not (<= 0 (- last-angle from) 360)) (refuse "an arc turns by 360 degrees at the most"))
    (draw! (make-shape 'arc (look-now) (take-path!)
                       (list size (+ from (turn-now)) (+ last-angle (turn-now)))))))

(define (draw-text! lines x y)
  (draw! (make-shape 'text (look-now) (list (typed-point x y))
                     (list lines (settings-letters settings) (settings-align settings)
                           (turn-now) 0))))

;; `place: chair` or `place: chair, 90`: the rotation is not a declared argument, so it is a string.
;; It is converted to a number without being evaluated, and only when it is a plain number.
(define (turn-of text)
  (let ((turn (and (< (string-length text) 20)
                   (string-every (string->char-set "+-.0123456789") text)
                   (string->number text))))
    (if turn (within "a turn" -360 turn 360) (refuse "\"" text "\" is not a number of degrees"))))

(define (draw-group! arguments x y)
  (let ((turn (if (null? (cdr arguments)) 0 (turn-of (second arguments)))))
    (place-group! (first arguments) turn x y)))

(define (save-drawing! file)
  (let ((all (whole-drawing)))
    (if (null? all) (refuse "nothing has been drawn yet"))
    (write-svg file (drawing->svg sheet-title (map car (reverse layers)) all
                                  sheet-scale sheet-margin))
    (say "saved " file ", " (count-shapes all) " shapes")))

(define (say . parts)
  (for-each display parts)
  (newline))

(define (make-alias! parser name text)
  (if (not (clui-set-alias parser name text))
      (refuse "\"" name "\" is already a word or an alias")))

(define (drop-alias! parser name)
  (if (not (clui-unset-alias parser name))
      (refuse "\"" name "\" is not an alias")))

;; A recording contains the words in order, with values instead of variables and texts instead of
;; aliases, so it draws the same again. It also contains `stop-recording`, which does nothing when
;; it is played.
(define (record! parser file)
  (if (not (clui-start-logging parser file))
      (refuse "cannot record to " file
              "; a recording may be in progress, or the file is being played")))

(define (stop-recording! parser)
  (clui-shut-logging parser))

;; While a command runs, its command line is complete and accepts no further word, so it is reset
;; before the file is played. The rest of the typed line runs before that.
(define (play! parser file)
  (clui-reset parser)
  (if (not (clui-playback-from-file parser file))
      (refuse "cannot play " file "; it may be missing, being recorded to or being played")))

;;; 3. Syntax ------------------------------------------------------------------------------------
;;;
;;; A command ends at the first word after which it is complete, so no command here has optional
;;; words at its end: the last word of a shape says what kind it is. A repeated part does not end by
;;; itself; a word such as `end` or `close` must follow it.
;;;
;;; Each point is added to the path when it is typed, with the unit and the origin of that moment.
;;; The last word of a command makes a shape of the path.

(define begin-path "(start-path! $$[0] $$[1])")

;; One more point, absolute or relative to the previous one. `finish` is run after it.
(define (one-place finish)
  (clui-oneof to: (string-append "(begin (path-to! $$[0] $$[1]) " finish ")")
              by: (string-append "(begin (path-by! $$[0] $$[1]) " finish ")")))

;; Any number of points. A fragment can be used only once, so each syntax makes its own.
(define (more-places)
  (clui-anyof to: "(path-to! $$[0] $$[1])"
              by: "(path-by! $$[0] $$[1])"))

(define shape-syntax
  (clui-oneof
   (clui-syntax point: "(begin (start-path! $$[0] $$[1]) (draw-dot!))")
   (clui-syntax line: begin-path (one-place "(draw-path! #f)"))
   (clui-syntax rect: begin-path (one-place "(draw-rectangle!)"))
   (clui-syntax polyline: begin-path (more-places)
                (clui-oneof end-word "(draw-path! #f)" close-word "(draw-path! #t)"))
   (clui-syntax circle: begin-path radius: "(draw-arc! $$[0] 0 360)")
   (clui-syntax arc: begin-path radius: angles: "(draw-arc! $-1[0] $$[0] $$[1])")
   (clui-syntax wall: begin-path (more-places)
                (clui-oneof end-word "(draw-wall! #f)" close-word "(draw-wall! #t)"))
   (clui-syntax door: begin-path (one-place "")
                (clui-oneof left-word "(draw-door! 'left)" right-word "(draw-door! 'right)"
                            sliding-word "(draw-door! 'sliding)" open-word "(draw-door! 'open)"))
   (clui-syntax window: begin-path (one-place "(draw-window!)"))
   (clui-syntax stairs: begin-path to: "(path-to! $$[0] $$[1])" steps: "(draw-stairs! $$[0])")
   (clui-syntax dimension: begin-path (more-places) off: "(draw-dimension! (length-of $$[0]))")
   (clui-syntax text: at: "(draw-text! (first-arguments $p) $$[0] $$[1])")
   (clui-syntax place: at: "(draw-group! (first-arguments $p) $$[0] $$[1])")))

;; `save:` has a priority of its own. It may start a command anywhere except in a group that was
;; opened in the middle of another command, where every word accepts interruptions up to 127 only.
(define sheet-syntax
  (clui-oneof
   undo-word "(undo!)"
   done-word "(finish-group! $p)"
   title: "(set! sheet-title (token-argument $p -1 0))"
   scale: "(set! sheet-scale (within \"a scale\" 0.1 $$[0] 100000))"
   margin: "(set! sheet-margin (point $$[0]))" ; a point writes two numbers, side by side
   record: "(record! $p (token-argument $p -1 0))"
   stop-recording-word "(stop-recording! $p)"
   play: "(play! $p (token-argument $p -1 0))"
   alias: "(make-alias! $p (token-argument $p -1 0) (token-argument $p -1 1))"
   unalias: "(drop-alias! $p (token-argument $p -1 0))"
   (clui-syntax (clui-priority 200 127) save: "(save-drawing! (token-argument $p -1 0))")))

(clui-set-syntax parser (clui-oneof shape-syntax sheet-syntax))

;;; 4. Words that work anywhere ------------------------------------------------------------------
;;;
;;; An indefinite word is accepted anywhere in a command line and stays in it, where $0, $1 and so
;;; on would count it. So each of these words first removes itself with clui-delete-last. The
;;; arguments of that procedure are evaluated before, while the word is still in the line. Such
;;; words must be declared after the parser has its syntax.

(define (aside parser procedure . values)
  (clui-delete-last parser)
  (apply procedure values))

(define (anywhere id command)
  (clui-indefinite-syntax parser id command))

(define (change-setting! change value) (set! settings (change settings value)))

(define (move-origin! x y)
  (change-setting! set-settings-placement (make-placement (point x y) (turn-now))))

(define (turn-to! angle)
  (change-setting! set-settings-placement
                   (make-placement (placement-origin (settings-placement settings))
                                   (within "a turn" -360 angle 360))))

(define (fill-of text) (and (not (string-ci=? text "none")) (colour-of text)))

(anywhere layer: "(aside $p choose-layer! (token-argument $p -1 0))")
(anywhere colour: "(aside $p change-colour! (token-argument $p -1 0))")
(anywhere pen: "(aside $p change-pen! $$[0])")
(anywhere dash: "(aside $p change-dash! (token-argument $p -1 0))")
(anywhere fill: "(aside $p change-fill! (token-argument $p -1 0))")
(anywhere pattern: "(aside $p change-pattern! (token-argument $p -1 0))")

(define (change-colour! name) (change-look! set-look-colour (colour-of name)))
(define (change-pen! width) (change-look! set-look-pen (within "a pen" 0 width 20)))
(define (change-dash! name) (change-look! set-look-dash (choice-of "dash" name (map car dashes))))
(define (change-fill! name) (change-look! set-look-fill (fill-of name)))
(define (change-pattern! name) (change-look! set-look-pattern (choice-of "pattern" name patterns)))

(anywhere unit: "(aside $p change-unit! $$[0])")
(anywhere origin: "(aside $p move-origin! $$[0])")
(anywhere turn: "(aside $p turn-to! $$[0])")
(anywhere thickness: "(aside $p change-thickness! $$[0])")
(anywhere round: "(aside $p change-round! $$[0])")
(anywhere letters: "(aside $p change-letters! $$[0])")
(anywhere align: "(aside $p change-align! (token-argument $p -1 0))")

(define (change-unit! size) (change-setting! set-settings-unit (within "a unit" 0.001 size 1e6)))
(define (change-thickness! size)
  (change-setting! set-settings-thickness (size-of "a thickness" size)))
(define (change-round! size)
  (change-setting! set-settings-round (length-of (within "a rounding" 0 size 1e6))))
(define (change-letters! height)
  (change-setting! set-settings-letters (within "the height of letters" 0.5 height 200)))
(define (change-align! name)
  (change-setting! set-settings-align (choice-of "alignment" name sides)))

;; A group pushes a frame: the words that follow start new commands, even when a command below is
;; unfinished. `done` pops the frame, and the command below continues. Both frames use the same
;; syntax, so `done` is an ordinary command.
(define (open-group! parser name x y)
  (enter-group! name x y)
  (clui-push parser))

(define (finish-group! parser)
  (if (not group-now) (refuse "no group is open"))
  (leave-group!)
  (clui-pop parser))

(anywhere group: "(aside $p open-group! $p (token-argument $p -1 0) $$[1] $$[2])")

;; Discards the unfinished command; what follows `cancel` starts a new one.
(define (cancel! parser)
  (take-path!)
  (clui-reset parser))

(anywhere cancel-word "(aside $p cancel! $p)")

(define (tell-where)
  (let ((origin (placement-origin (settings-placement settings))))
    (say "layer " (settings-layer settings)
         ", unit " (settings-unit settings) " mm"
         ", origin " (point-x origin) "," (point-y origin)
         ", turned " (turn-now)
         (if group-now (string-append ", group " (string-join (group-names) " > ")) "")
         (if (null? path) "" (string-append ", path at " (place-text (car path))))
         ", " (count-shapes (whole-drawing)) " shapes")))

(define (place-text p)
  (string-append (number->string (point-x p)) "," (number->string (point-y p))))

(anywhere where-word "(aside $p tell-where)")
(anywhere help-word "(aside $p display help-text)")

(define help-text "\
Shapes      point: X,Y                        line: X,Y to: X,Y
            rect: X,Y to: X,Y                 circle: X,Y radius: R
            polyline: X,Y to: X,Y ... end     arc: X,Y radius: R angles: A,B
            (or close, for a closed one)      text: \"...\" at: X,Y
            by: DX,DY is a relative position in place of to:
Building    wall: X,Y to: X,Y ... end         window: X,Y to: X,Y
            (or close)                        door: X,Y to: X,Y left (right, sliding, open)
            stairs: X,Y to: X,Y steps: N      dimension: X,Y to: X,Y ... off: D
Groups      group: NAME, X,Y ... done         place: NAME at: X,Y (place: NAME, 90 turns it)
Recording   record: FILE   stop-recording   play: FILE
Sheet       title: \"...\"   scale: N   margin: X,Y   undo   save: FILE
Anywhere    layer: NAME   colour: C   pen: MM   dash: KIND   fill: C   pattern: KIND
            unit: MM   origin: X,Y   turn: DEGREES   thickness: D   round: D
            letters: MM   align: SIDE   where   cancel   help
Shorthand   alias: NAME, \"words\"   unalias: NAME   ${name}=value   ${name}[0]=value
")

;;; 5. Predefined aliases and variables ----------------------------------------------------------
;;;
;;; An alias is replaced by its text, which may be incomplete: after `dim` the two numbers are read
;;; from the typed text. A list makes an array variable. ${module} is half a mat, the unit of length
;;; of houses in Japan, and ${pens} contains the usual widths of pens: `pen: ${pens}[2]`.

(clui-set-alias parser "dim" "dimension:")
(clui-set-alias parser "box" "rect:")
(clui-set-variable parser "module" 910.0)
(clui-set-variable parser "pens" '(0.13 0.25 0.35 0.5 0.7))
