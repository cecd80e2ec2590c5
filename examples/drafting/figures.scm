;;; Doors, windows, stairs and dimensions, made of the plain shapes of model.scm. Each figure is
;;; added to the drawing as one group, so that one `undo` removes it.

(define (path-shape look closed? . points) (make-shape 'path look points (list closed? 0)))
(define (thin look) (set-look-fill (set-look-pen look 0.13) #f))
(define (filled look colour) (set-look-pattern (set-look-fill look colour) "plain"))

;; An opening in a wall runs from a to b along the middle of the wall. A point in it is given by two
;; numbers: the distance along the line from a to b, and the distance to the left of it.
(define (opening-place a b)
  (let* ((along (p-unit (p- b a)))
         (aside (p-left along)))
    (lambda (far left) (p+ a (p+ (p* far along) (p* left aside))))))

;; The wall is painted over, slightly wider than it is, and gets two new ends.
(define (opening-parts look a b thickness)
  (let* ((at (opening-place a b))
         (width (p-length (p- b a)))
         (half (/ thickness 2))
         (over (+ half 12))
         (blank (filled (set-look-pen look 0) (or (look-fill look) "#ffffff"))))
    (list (path-shape blank #t (at 0 over) (at width over) (at width (- over)) (at 0 (- over)))
          (path-shape (filled look #f) #f (at 0 half) (at 0 (- half)))
          (path-shape (filled look #f) #f (at width half) (at width (- half))))))

(define (opening-ends)
  (let ((corners (take-path!)))
    (if (p-same? (first corners) (second corners))
        (refuse "an opening needs two different ends"))
    corners))

;; A leaf that is open at right angles, and the arc along which it swings.
(define (swing-parts look a b thickness side)
  (let* ((at (opening-place a b))
         (width (p-length (p- b a)))
         (face (* side (/ thickness 2)))
         (leaf (min 40 (/ width 10)))
         (from (p-angle (p- b a)))
         (to (+ from (* side 90))))
    (list (path-shape (filled look "#ffffff") #t
                      (at 0 face) (at 0 (+ face (* side width)))
                      (at leaf (+ face (* side width))) (at leaf face))
          (make-shape 'arc (thin look) (list (at 0 face))
                      (list width (min from to) (max from to))))))

;; Two panels that pass each other in the middle.
(define (sliding-parts look a b thickness)
  (let* ((at (opening-place a b))
         (width (p-length (p- b a)))
         (past (+ (/ width 2) 40))
         (gap (/ thickness 8))
         (depth (/ thickness 5))
         (panel (lambda (from to near far)
                  (path-shape (filled look "#ffffff") #t
                              (at from near) (at to near) (at to far) (at from far)))))
    (list (panel 0 past gap (+ gap depth))
          (panel (- width past) width (- gap) (- (+ gap depth))))))

(define (draw-door! kind)
  (let* ((ends (opening-ends))
         (thickness (settings-thickness settings))
         (look (look-now))
         (leaves (case kind
                   ((left) (swing-parts look (first ends) (second ends) thickness 1))
                   ((right) (swing-parts look (first ends) (second ends) thickness -1))
                   ((sliding) (sliding-parts look (first ends) (second ends) thickness))
                   (else '()))))
    (draw-together! "door"
                    (append (opening-parts look (first ends) (second ends) thickness) leaves))))

(define (draw-window!)
  (let* ((ends (opening-ends))
         (a (first ends))
         (b (second ends))
         (at (opening-place a b))
         (width (p-length (p- b a)))
         (thickness (settings-thickness settings))
         (half (/ thickness 2))
         (look (look-now))
         (sill (lambda (side)
                 (path-shape (thin look) #f (at 0 (* side half)) (at width (* side half))))))
    (draw-together! "window"
                    (append (opening-parts look a b thickness)
                            (list (sill 1) (sill -1))
                            (sliding-parts look a b thickness)))))

;; Stairs between two opposite corners. They climb along the longer side, away from the first.
(define (draw-stairs! steps)
  (if (not (<= 2 steps 100)) (refuse "stairs have 2 to 100 steps, and not " steps))
  (let* ((ends (take-path!))
         (box (rectangle (first ends) (second ends)))
         (one (p- (second box) (first box)))
         (other (p- (fourth box) (first box)))
         (longer? (>= (p-length one) (p-length other)))
         (up (if longer? one other))
         (across (if longer? other one))
         (at (lambda (far side) (p+ (first box) (p+ (p* far up) (p* side across)))))
         (look (look-now))
         (tread (lambda (i) (path-shape (thin look) #f (at (/ i steps) 0) (at (/ i steps) 1))))
         (last-step (- 1 (/ 0.6 steps))))
    (if (zero? (p-length across)) (refuse "stairs need two opposite corners"))
    (let* ((tip (at last-step 0.5))
           (back (p* -130 (p-unit up)))
           (wing (p* 55 (p-unit across))))
      (draw-together!
       "stairs"
       (append
        (list (apply path-shape look #t box))
        (map tread (iota (- steps 1) 1))
        (list (make-shape 'dot (filled look (look-colour look)) (list (at (/ 0.5 steps) 0.5))
                          '(0.5))
              (path-shape (thin look) #f (at (/ 0.5 steps) 0.5) tip)
              (path-shape (filled (thin look) (look-colour look)) #t
                          tip (p+ (p+ tip back) wing) (p- (p+ tip back) wing))))))))

;; 12740 is written as 12,740.
(define (with-commas number)
  (let loop ((digits (number->string number)) (tail ""))
    (let ((n (string-length digits)))
      (if (<= n 3)
          (string-append digits tail)
          (loop (string-take digits (- n 3))
                (string-append "," (string-take-right digits 3) tail))))))

;; A chain of dimensions: the line runs parallel to that from the first point to the last, on its
;; left when `off` is positive, and each section is labelled in millimetres.
(define (draw-dimension! off)
  (let* ((points (take-path!))
         (start (first points))
         (way (p- (last points) start)))
    (if (zero? (p-length way)) (refuse "a dimension needs two different ends"))
    (let* ((along (p-unit way))
           (aside (p-left along))
           (shadow (lambda (p)
                     (p+ start (p+ (p* (p-dot (p- p start) along) along) (p* off aside)))))
           (feet (map shadow points))
           (look (look-now))
           (solid (filled look (look-colour look)))
           (witness (lambda (p foot)
                      (path-shape (thin look) #f (p+ foot (p* 0.35 (p- p foot))) foot)))
           (stretch (lambda (a b)
                      (let ((size (inexact->exact (round (p-length (p- b a))))))
                        (make-shape 'text look (list (p-middle a b))
                                    (list (list (with-commas size)) 2 "middle"
                                          (p-angle along) 2.2))))))
      (draw-together!
       "dimension"
       (append (list (path-shape (thin look) #f (first feet) (last feet)))
               (map witness points feet)
               (map (lambda (foot) (make-shape 'dot solid (list foot) '(0.45))) feet)
               (map stretch feet (cdr feet)))))))
