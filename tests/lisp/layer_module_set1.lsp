;; The module's working-layer steps (kel_set1) through the host's LAYER:
;; PP-COM is made when it is missing; when it is off, frozen and locked it
;; is turned on, thawed and unlocked, then made current. Command echo is
;; off meanwhile, so LAYER shows nothing.
(defun show (label value) (princ (strcat "\n" label ": ")) (prin1 value))
(defun pp () (tblsearch "LAYER" "PP-COM"))
(kel_set1)
(show "missing, then" (list (pp) (getvar "CLAYER")))
(command-s "LAYER" "S" "0" "OFF" "PP-COM" "F" "PP-COM" "LO" "PP-COM" "")
(show "off, frozen and locked" (list (pp) (getvar "CLAYER")))
(kel_set1)
(show "then" (list (pp) (getvar "CLAYER") (getvar "CMDECHO") (getvar "BLIPMODE")))
(princ)
