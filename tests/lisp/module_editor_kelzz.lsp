;; KELZZ zooms to the drawing's extents with a margin of 3% of their
;; diagonal: the view is centred on the extents and at least the margin's
;; height tall.
(setvar "CMDECHO" 0)
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 100.0 50.0 0.0)))
(command "KELZZ")
(princ "\nVIEWCTR: ")
(princ (getvar "VIEWCTR"))
(princ (strcat "\nVIEWSIZE at least 53: " (if (>= (getvar "VIEWSIZE") 52.999999) "yes" "no")))
(princ (strcat "\nCMDECHO: " (itoa (getvar "CMDECHO"))))
(princ)
