;;; Writes a drawing as SVG: UTF-8, millimetres of paper, the same text for the same drawing.
;;;
;;; The size of the picture is that of the drawing and the margin. Each layer is an element, in the
;;; order of the layers. The walls of a layer are first, all outlines before all insides, so that
;;; walls join where they meet.

(use-modules (srfi srfi-1) (rnrs bytevectors))

(define svg-fonts
  (string-append "'Noto Sans CJK JP','Noto Sans JP','Hiragino Sans','Yu Gothic',Meiryo,"
                 "'IPAGothic',sans-serif"))

;;; Text -----------------------------------------------------------------------------------------

;; All text of the user passes through this procedure.
(define (xml text)
  (string-concatenate
   (map (lambda (char)
          (case char
            ((#\&) "&amp;")
            ((#\<) "&lt;")
            ((#\>) "&gt;")
            ((#\") "&quot;")
            (else (if (or (char<? char #\space) (char=? char #\delete)) " " (string char)))))
        (string->list text))))

;; At most three digits after the point, which is a micrometre of paper. Adding 0.0 turns a negative
;; zero into a positive one.
(define (svg-number number)
  (let ((text (number->string (+ 0.0 (/ (round (* 1000 number)) 1000)))))
    (if (string-suffix? ".0" text) (string-drop-right text 2) text)))

;; Concatenates strings and numbers.
(define (svg . parts)
  (string-concatenate (map (lambda (part) (if (string? part) part (svg-number part))) parts)))

;;; Flattening -----------------------------------------------------------------------------------

;; All plain shapes of one layer, including those in groups, in coordinates of the whole drawing.
(define (layer-shapes shapes layer)
  (let walk ((shapes shapes) (placement nowhere-else))
    (append-map
     (lambda (shape)
       (cond ((group? shape)
              (walk (group-shapes shape) (put-placement placement (group-placement shape))))
             ((string=? (look-layer (shape-look shape)) layer)
              (list (put-shape placement shape)))
             (else '())))
     shapes)))

;; The same with groups, each a list of its name and its content. Empty groups are omitted, and
;; walls, which are drawn separately.
(define (layer-tree shapes layer)
  (let walk ((shapes shapes) (placement nowhere-else))
    (filter-map
     (lambda (shape)
       (if (group? shape)
           (let ((content (walk (group-shapes shape)
                                (put-placement placement (group-placement shape)))))
             (and (pair? content) (cons (group-name shape) content)))
           (and (string=? (look-layer (shape-look shape)) layer)
                (not (eq? (shape-kind shape) 'wall))
                (put-shape placement shape))))
     shapes)))

;;; Extent ---------------------------------------------------------------------------------------

;; Full-width characters are as wide as they are high, others slightly more than half as wide.
(define (text-width lines height)
  (* 1.35 height
     (fold max 0
           (map (lambda (line)
                  (fold (lambda (char sum) (+ sum (if (char<? char #\x500) 0.58 1)))
                        0 (string->list line)))
                lines))))

;; The corners of the box around a text, in millimetres of paper, y upwards from its anchor.
(define (text-corners lines height align turn lift)
  (let* ((width (text-width lines height))
         (left (cond ((string=? align "left") 0)
                     ((string=? align "right") (- width))
                     (else (/ width -2))))
         (half (* 0.9 height (length lines))))
    (map (lambda (corner) (p-turn (readable turn) corner))
         (list (point left (- lift half)) (point (+ left width) (- lift half))
               (point left (+ lift half)) (point (+ left width) (+ lift half))))))

(define (square-corners reach)
  (list (point (- reach) (- reach)) (point reach reach)))

;; How far a shape extends around its points: a list of offsets, in millimetres of the building.
(define (reach shape scale)
  (let ((rest (shape-rest shape)))
    (case (shape-kind shape)
      ((wall) (square-corners (* 0.75 (second rest))))
      ((arc) (square-corners (first rest)))
      ((dot) (square-corners (* scale (first rest))))
      ((text) (map (lambda (corner) (p* scale corner)) (apply text-corners rest)))
      (else '((0 . 0))))))

(define (shape-corners shape scale)
  (append-map (lambda (p) (map (lambda (step) (p+ p step)) (reach shape scale)))
              (shape-points shape)))

;; Left, bottom, right and top of the shapes, of which there must be at least one.
(define (extent shapes scale)
  (let* ((corners (append-map (lambda (shape) (shape-corners shape scale)) shapes))
         (xs (map point-x corners))
         (ys (map point-y corners)))
    (list (reduce min 0 xs) (reduce min 0 ys) (reduce max 0 xs) (reduce max 0 ys))))

;;; Paint ----------------------------------------------------------------------------------------

;; Patterns are defined when they are first used. This alist maps the parameters of each to its
;; name.
(define pattern-names '())

(define (pattern-paint look)
  (let ((key (list (look-pattern look) (or (look-fill look) "none") (look-colour look))))
    (if (not (assoc key pattern-names))
        (set! pattern-names
              (acons key (string-append "pattern" (number->string (1+ (length pattern-names))))
                     pattern-names)))
    (string-append "url(#" (assoc-ref pattern-names key) ")")))

;; The size of a tile and the path drawn on it, in millimetres of paper.
(define (pattern-tile kind)
  (cond ((string=? kind "hatch") '(1.6 1.6 "M-0.4 0.4L0.4 -0.4M0 1.6L1.6 0M1.2 2L2 1.2"))
        ((string=? kind "boards") '(36 4.8 "M0 0H36M0 2.4H36M9 0V2.4M27 2.4V4.8"))
        ((string=? kind "tiles") '(4 4 "M0 0H4M0 0V4"))
        ((string=? kind "mats") '(1.2 1.2 "M0 0.3H1.2M0 0.9H1.2"))
        (else '(5 5 "M1 1h.1M3.4 .6h.1M2.2 2.8h.1M4.4 3.6h.1M.8 4.2h.1"))))

(define (pattern-definition entry)
  (let* ((key (car entry))
         (tile (pattern-tile (first key))))
    (svg "<pattern id=\"" (cdr entry) "\" width=\"" (first tile) "\" height=\"" (second tile)
         "\" patternUnits=\"userSpaceOnUse\"><rect width=\"" (first tile) "\" height=\""
         (second tile) "\" fill=\"" (second key) "\"/><path d=\"" (third tile) "\" stroke=\""
         (third key) "\" stroke-width=\"0.13\" stroke-linecap=\"round\" stroke-opacity=\"0.45\" "
         "fill=\"none\"/></pattern>\n")))

(define (inside-paint look)
  (if (string=? (look-pattern look) "plain")
      (or (look-fill look) "none")
      (pattern-paint look)))

(define (dash-attribute look)
  (let ((dash (assoc-ref dashes (look-dash look))))
    (if (null? dash)
        ""
        (svg " stroke-dasharray=\"" (string-join (map svg-number dash) " ") "\""))))

(define (paint look fill)
  (if (zero? (look-pen look))
      (svg " fill=\"" fill "\"")
      (svg " fill=\"" fill "\" stroke=\"" (look-colour look) "\" stroke-width=\"" (look-pen look)
           "\"" (dash-attribute look))))

;;; Elements -------------------------------------------------------------------------------------

(define (xy p) (svg (point-x p) " " (point-y p)))

(define (straight-path points closed?)
  (svg "M" (string-join (map xy points) "L") (if closed? "Z" "")))

;; Every corner is cut off at the radius, or at half of its shorter side, and rounded.
(define (rounded-path points radius)
  (define (toward p q)
    (let ((far (p-length (p- q p))))
      (if (zero? far) p (p+ p (p* (/ (min radius (/ far 2)) far) (p- q p))))))
  (define (corner before here after)
    (let ((r (min radius (/ (p-length (p- before here)) 2) (/ (p-length (p- after here)) 2))))
      (svg (xy (toward here before)) "A" r " " r " 0 0 "
           (if (> (p-dot (p-left (p- here before)) (p- after here)) 0) "1" "0") " "
           (xy (toward here after)))))
  (let ((before (cons (last points) (drop-right points 1)))
        (after (append (cdr points) (list (car points)))))
    (svg "M" (string-join (map corner before points after) "L") "Z")))

;; Angles are counter-clockwise in the drawing, where y points up; the y of the paper points down.
(define (arc-element centre radius from to attributes)
  (define (at angle)
    (let ((d (direction angle)))
      (point (+ (point-x centre) (* radius (point-x d)))
             (- (point-y centre) (* radius (point-y d))))))
  (if (>= (- to from) 360)
      (svg "<circle cx=\"" (point-x centre) "\" cy=\"" (point-y centre) "\" r=\"" radius "\""
           attributes "/>")
      (svg "<path d=\"M" (xy (at from)) "A" radius " " radius " 0 "
           (if (> (- to from) 180) "1" "0") " 0 " (xy (at to)) "\"" attributes "/>")))

;; Text is never upside down: its angle is normalised to more than -90 and at most 90.
(define (readable turn)
  (let ((angle (euclidean-remainder turn 180)))
    (if (> angle 90) (- angle 180) angle)))

;; The fill of a text is a halo around its letters, which keeps it legible on top of lines.
(define (halo-attributes look)
  (if (look-fill look)
      (svg " stroke=\"" (look-fill look) "\" stroke-width=\"0.9\" paint-order=\"stroke\"")
      ""))

(define (text-element anchor look lines height align turn lift)
  (let* ((angle (readable turn))
         (size (* 1.35 height)) ; of the font: capitals are about three quarters of it high
         (step (* 1.3 size))
         (top (+ (- (point-y anchor) lift (* 0.5 step (- (length lines) 1))) (* 0.36 size)))
         (line (lambda (text i)
                 (svg "<text x=\"" (point-x anchor) "\" y=\"" (+ top (* i step)) "\" font-size=\""
                      size "\" text-anchor=\""
                      (cond ((string=? align "left") "start")
                            ((string=? align "right") "end")
                            (else "middle"))
                      "\" fill=\"" (look-colour look) "\""
                      (halo-attributes look)
                      (if (zero? angle)
                          ""
                          (svg " transform=\"rotate(" (- angle) " " (xy anchor) ")\""))
                      ">" (xml text) "</text>"))))
    (string-join (map line lines (iota (length lines))) "\n")))

(define (shape-element shape on-paper scale)
  (let* ((look (shape-look shape))
         (points (map on-paper (shape-points shape)))
         (rest (shape-rest shape))
         (outline (paint look (inside-paint look))))
    (case (shape-kind shape)
      ((path)
       (svg "<path d=\""
            (if (> (second rest) 0)
                (rounded-path points (/ (second rest) scale))
                (straight-path points (first rest)))
            "\"" outline "/>"))
      ((arc) (arc-element (first points) (/ (first rest) scale) (second rest) (third rest) outline))
      ((dot) (arc-element (first points) (first rest) 0 360
                          (svg " fill=\"" (look-colour look) "\"")))
      ((text) (apply text-element (first points) look rest)))))

;; A wall as a wide stroke; its free ends are extended by `beyond`.
(define (wall-element shape on-paper scale beyond colour)
  (define (stretched points)
    (let ((start (first points)) (next (second points)))
      (cons (p+ start (p* beyond (p-unit (p- start next)))) (cdr points))))
  (let* ((rest (shape-rest shape))
         (points (map on-paper (shape-points shape)))
         (ends (if (first rest) points (reverse (stretched (reverse (stretched points)))))))
    (svg "<path d=\"" (straight-path ends (first rest)) "\" fill=\"none\" stroke=\"" colour
         "\" stroke-width=\"" (max 0 (+ (/ (second rest) scale) (* 2 beyond)))
         "\" stroke-miterlimit=\"8\"/>")))

(define (wall-elements walls on-paper scale)
  (define (half-pen wall) (/ (look-pen (shape-look wall)) 2))
  (append
   (map (lambda (wall)
          (wall-element wall on-paper scale (half-pen wall) (look-colour (shape-look wall))))
        walls)
   (filter-map (lambda (wall)
                 (let ((look (shape-look wall)))
                   (and (or (look-fill look) (not (string=? (look-pattern look) "plain")))
                        (wall-element wall on-paper scale (- (half-pen wall))
                                      (inside-paint look)))))
               walls)))

(define (tree-elements tree on-paper scale)
  (append-map (lambda (item)
                (if (pair? item)
                    (append (list (svg "<g><title>" (xml (car item)) "</title>"))
                            (tree-elements (cdr item) on-paper scale)
                            (list "</g>"))
                    (list (shape-element item on-paper scale))))
              tree))

(define (layer-element name shapes on-paper scale)
  (let ((walls (filter (lambda (shape) (eq? (shape-kind shape) 'wall))
                       (layer-shapes shapes name)))
        (tree (layer-tree shapes name)))
    (if (and (null? walls) (null? tree))
        ""
        (svg "<g data-layer=\"" (xml name) "\">\n"
             (string-join (append (wall-elements walls on-paper scale)
                                  (tree-elements tree on-paper scale))
                          "\n" 'suffix)
             "</g>\n"))))

;;; The document ---------------------------------------------------------------------------------

;; The SVG of at least one shape on these layers (names, the lowest first).
(define (drawing->svg title layers shapes scale margin)
  (set! pattern-names '())
  (let* ((all (append-map (lambda (layer) (layer-shapes shapes layer)) layers))
         (box (extent all scale))
         (across (+ (/ (- (third box) (first box)) scale) (* 2 (point-x margin))))
         (down (+ (/ (- (fourth box) (second box)) scale) (* 2 (point-y margin))))
         (on-paper (lambda (p)
                     (point (+ (point-x margin) (/ (- (point-x p) (first box)) scale))
                            (+ (point-y margin) (/ (- (fourth box) (point-y p)) scale)))))
         (content (string-concatenate
                   (map (lambda (layer) (layer-element layer shapes on-paper scale)) layers))))
    (svg "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" across "mm\" height=\"" down
         "mm\" viewBox=\"0 0 " across " " down "\" font-family=\"" svg-fonts
         "\" stroke-linejoin=\"miter\">\n"
         "<title>" (xml (or title "Drawing")) "</title>\n"
         "<defs>\n" (string-concatenate (map pattern-definition (reverse pattern-names)))
         "</defs>\n"
         "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n"
         content
         "</svg>\n")))

(define (write-svg file text)
  (save-file file (string->utf8 text)))
