;;; The drawing: shapes, layers, groups, and the settings under which shapes are made.
;;;
;;; Coordinates are in millimetres of the building, y upwards. Widths of pens, heights of letters
;;; and sizes of dots are in millimetres of the paper, so that the scale can be chosen last. Nothing
;;; here depends on words, parsers or SVG.

(use-modules (srfi srfi-1) (srfi srfi-9) (srfi srfi-9 gnu))

;; Raises an error with a message for the user. The program prints it with the typed line.
(define (refuse . parts)
  (let ((text (string-concatenate
               (map (lambda (part) (if (string? part) part (object->string part))) parts))))
    (scm-error 'misc-error #f "~A" (list text) #f)))

;;; Points and placements ------------------------------------------------------------------------

(define point cons)
(define point-x car)
(define point-y cdr)

(define (p+ a b) (point (+ (point-x a) (point-x b)) (+ (point-y a) (point-y b))))
(define (p- a b) (point (- (point-x a) (point-x b)) (- (point-y a) (point-y b))))
(define (p* k a) (point (* k (point-x a)) (* k (point-y a))))
(define (p-dot a b) (+ (* (point-x a) (point-x b)) (* (point-y a) (point-y b))))
(define (p-length a) (sqrt (p-dot a a)))
(define (p-unit a) (p* (/ 1 (p-length a)) a))
(define (p-left a) (point (- (point-y a)) (point-x a)))
(define (p-same? a b) (and (= (point-x a) (point-x b)) (= (point-y a) (point-y b))))
(define (p-middle a b) (p* 1/2 (p+ a b)))

(define pi (* 4 (atan 1)))
(define (degrees angle) (/ (* 180 angle) pi))
(define (p-angle a) (degrees (atan (point-y a) (point-x a))))

;; Quarter turns are exact, so that the corners of a rotated rectangle have no rounding errors.
(define (direction turn)
  (let ((angle (euclidean-remainder turn 360)))
    (cond ((= angle 0) '(1 . 0))
          ((= angle 90) '(0 . 1))
          ((= angle 180) '(-1 . 0))
          ((= angle 270) '(0 . -1))
          (else (point (cos (/ (* angle pi) 180)) (sin (/ (* angle pi) 180)))))))

(define (p-turn turn a)
  (let ((d (direction turn)))
    (p+ (p* (point-x a) d) (p* (point-y a) (p-left d)))))

;; The placement of a group in the enclosing one: its origin and its rotation, counter-clockwise.
(define-record-type <placement> (make-placement origin turn) placement?
  (origin placement-origin)
  (turn placement-turn))

(define nowhere-else (make-placement '(0 . 0) 0))

(define (put-point placement a)
  (p+ (placement-origin placement) (p-turn (placement-turn placement) a)))

(define (put-placement outer inner)
  (make-placement (put-point outer (placement-origin inner))
                  (+ (placement-turn outer) (placement-turn inner))))

;;; Shapes ---------------------------------------------------------------------------------------

;; The current look is copied into a shape when it is drawn.
(define-immutable-record-type <look> (make-look layer colour pen dash fill pattern) look?
  (layer look-layer)
  (colour look-colour set-look-colour)
  (pen look-pen set-look-pen)              ; millimetres of paper
  (dash look-dash set-look-dash)           ; a key of `dashes`
  (fill look-fill set-look-fill)           ; a colour, or #f for none
  (pattern look-pattern set-look-pattern)) ; a key of `patterns`

;; kind      points         rest
;; path      the corners    closed?, radius of the corners
;; wall      the centreline closed?, thickness
;; arc       the centre     radius, first angle, last angle (a circle when these are 360 apart)
;; dot       the centre     radius in millimetres of paper
;; text      the anchor     lines, height of the letters, align, turn, lift off the anchor
;; Height and lift of a text are in millimetres of paper.
(define-record-type <shape> (make-shape kind look points rest) shape?
  (kind shape-kind)
  (look shape-look)
  (points shape-points)
  (rest shape-rest))

(define-record-type <group> (make-group name placement shapes) group?
  (name group-name)
  (placement group-placement)
  (shapes group-shapes)) ; in the order of drawing, placed within the group

(define (turn-rest kind turn rest)
  (case kind
    ((arc) (list (first rest) (+ turn (second rest)) (+ turn (third rest))))
    ((text) (list (first rest) (second rest) (third rest) (+ turn (fourth rest)) (fifth rest)))
    (else rest)))

(define (put-shape placement shape)
  (make-shape (shape-kind shape) (shape-look shape)
              (map (lambda (a) (put-point placement a)) (shape-points shape))
              (turn-rest (shape-kind shape) (placement-turn placement) (shape-rest shape))))

;;; Colours, dashes, patterns --------------------------------------------------------------------

;; A palette of short names; other colours are written "#rrggbb" or "#rgb". Nothing else is
;; accepted, because the text becomes an attribute of the picture.
(define palette
  '(("ink" . "#22252a") ("charcoal" . "#3d3f45") ("grey" . "#8b9097") ("silver" . "#c9ced4")
    ("mist" . "#eef0f2") ("paper" . "#ffffff") ("black" . "#000000") ("white" . "#ffffff")
    ("red" . "#b5382e") ("brick" . "#a65a49") ("orange" . "#d9822b") ("wood" . "#c49a6c")
    ("oak" . "#f4e8d6") ("sand" . "#f1ead9") ("straw" . "#e9e7c3") ("moss" . "#6b8e4e")
    ("leaf" . "#a9c48b") ("grass" . "#dfe9cf") ("water" . "#d6e9f0") ("sea" . "#2f6f8f")
    ("blue" . "#2b5d9b") ("linen" . "#faf6ee")))

(define (hex-colour? text)
  (and (memv (string-length text) '(4 7))
       (char=? (string-ref text 0) #\#)
       (string-every char-set:hex-digit text 1)))

(define (colour-of text)
  (cond ((assoc-ref palette (string-downcase text)))
        ((hex-colour? text) (string-downcase text))
        (else (refuse "no colour \"" text "\"; there are "
                      (string-join (map car palette) " ")
                      ", or a value such as \"#c49a6c\" in quotes"))))

(define dashes '(("solid") ("dashed" 2 1) ("dotted" 0.3 0.9) ("axis" 7 1.2 0.6 1.2)))
(define patterns '("plain" "hatch" "boards" "tiles" "mats" "gravel"))

(define (choice-of what text known)
  (let ((name (string-downcase text)))
    (if (member name known)
        name
        (refuse "no " what " \"" text "\"; there are " (string-join known " ")))))

;;; Settings -------------------------------------------------------------------------------------

;; The current settings. Entering a group saves a copy, leaving it restores the copy.
(define-immutable-record-type <settings>
  (make-settings layer unit placement thickness round letters align) settings?
  (layer settings-layer set-settings-layer)             ; a name
  (unit settings-unit set-settings-unit)                ; millimetres of building per number typed
  (placement settings-placement set-settings-placement) ; the position of 0,0 and the rotation
  (thickness settings-thickness set-settings-thickness) ; of walls, millimetres of building
  (round settings-round set-settings-round)             ; corners of rectangles, likewise
  (letters settings-letters set-settings-letters)       ; height, millimetres of paper
  (align settings-align set-settings-align))            ; "left", "middle" or "right"

(define first-settings (make-settings "0" 1 nowhere-else 100 0 2.5 "middle"))
(define (first-look layer) (make-look layer "#22252a" 0.25 "solid" #f "plain"))

;;; The drawing ----------------------------------------------------------------------------------

(define settings first-settings)
(define layers '())        ; (name . look), the layer made last first
(define shapes '())        ; of the group one is in, the shape drawn last first
(define path '())          ; corners of the shape under way, the last first
(define group-now #f)      ; (name . placement) of the group one is in, #f outside of all
(define outside '())       ; what the groups around this one have saved, the innermost first
(define library '())       ; (name . shapes) of every group that was finished
(define sheet-title #f)
(define sheet-scale 100)
(define sheet-margin '(10 . 10))

(define (within what least number most)
  (if (<= least number most)
      number
      (refuse what " is from " least " to " most ", and not " number)))

;; A typed length, converted to millimetres of the building. The limit of a million metres keeps all
;; results of calculations finite.
(define (length-of number)
  (let ((length (* number (settings-unit settings))))
    (if (< (abs length) 1e9) length (refuse number " is too far away"))))

(define (size-of what number)
  (if (> number 0) (length-of number) (refuse what " must be more than 0, and not " number)))

;; Layers. A layer is created when it is first named, above the existing ones.

(define (choose-layer! name)
  (if (string-null? name) (refuse "a layer needs a name"))
  (if (not (assoc name layers))
      (set! layers (acons name (first-look name) layers)))
  (set! settings (set-settings-layer settings name)))

(define (look-now) (assoc-ref layers (settings-layer settings)))

(define (change-look! change value)
  (set-cdr! (assoc (settings-layer settings) layers) (change (look-now) value)))

(choose-layer! "0")

;; Points. Typed numbers are converted to a point of the group at once, with the current unit,
;; origin and rotation.

(define (typed-point x y)
  (put-point (settings-placement settings) (point (length-of x) (length-of y))))

(define (typed-step x y)
  (p-turn (placement-turn (settings-placement settings)) (point (length-of x) (length-of y))))

(define (start-path! x y) (set! path (list (typed-point x y))))
(define (path-to! x y) (set! path (cons (typed-point x y) path)))
(define (path-by! x y) (set! path (cons (p+ (car path) (typed-step x y)) path)))

;; Returns the corners in the order of typing and ends the path.
(define (take-path!)
  (let ((corners (reverse path)))
    (set! path '())
    corners))

;; Shapes.

;; The corners without consecutive duplicates.
(define (without-repeats corners)
  (reverse (fold (lambda (corner kept)
                   (if (and (pair? kept) (p-same? corner (car kept))) kept (cons corner kept)))
                 '() corners)))

(define (draw! shape) (set! shapes (cons shape shapes)))

(define (draw-together! name parts) (draw! (make-group name nowhere-else parts)))

(define (undo!)
  (if (null? shapes)
      (refuse (if group-now "there is nothing to undo in this group" "there is nothing to undo")))
  (set! shapes (cdr shapes)))

(define (turn-now) (placement-turn (settings-placement settings)))

;; The corners of the rectangle with these opposite corners, along the current axes.
(define (rectangle a b)
  (let* ((across (direction (turn-now)))
         (step (p* (p-dot (p- b a) across) across)))
    (list a (p+ a step) b (p- b step))))

;; Groups.

(define (enter-group! name x y)
  (if (string-null? name) (refuse "a group needs a name"))
  (set! outside (cons (list group-now settings shapes path) outside))
  (set! group-now (cons name (make-placement (typed-point x y) (turn-now))))
  (set! settings (set-settings-placement settings nowhere-else))
  (set! shapes '())
  (set! path '()))

(define (leave-group!)
  (let ((group (make-group (car group-now) (cdr group-now) (reverse shapes)))
        (saved (car outside)))
    (set! library (acons (group-name group) (group-shapes group) library))
    (set! outside (cdr outside))
    (set! group-now (first saved))
    (set! settings (second saved))
    (set! shapes (cons group (third saved)))
    (set! path (fourth saved))))

(define (place-group! name turn x y)
  (let ((content (assoc-ref library name)))
    (if (not content) (refuse "no group \"" name "\" has been finished yet"))
    (draw! (make-group name (make-placement (typed-point x y) (+ turn (turn-now))) content))))

;; The open groups, the outermost first.
(define (group-names)
  (map car (reverse (filter identity (cons group-now (map first outside))))))

(define (count-shapes some)
  (fold (lambda (shape sum)
          (+ sum (if (group? shape) (count-shapes (group-shapes shape)) 1)))
        0 some))

;; All that was drawn, in order. Groups that are still open are treated as closed.
(define (whole-drawing)
  (let loop ((here (reverse shapes)) (group group-now) (around outside))
    (if (not group)
        here
        (let ((saved (car around)))
          (loop (reverse (cons (make-group (car group) (cdr group) here) (third saved)))
                (first saved)
                (cdr around))))))
