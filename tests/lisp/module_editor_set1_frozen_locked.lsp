;; kel_set1 with the working layer PP-COM frozen, locked (flags 5) and off:
;; it is turned on, thawed and unlocked in one LAYER command, and made
;; current; command echo and blips end on.
(entmake (list '(0 . "LAYER") '(100 . "AcDbSymbolTableRecord") '(100 . "AcDbLayerTableRecord")
               '(2 . "PP-COM") '(70 . 5) '(62 . -3) '(6 . "Continuous")))
(kel_set1)
(setq rec (tblsearch "LAYER" "PP-COM"))
(princ (strcat "\nflags: " (itoa (logand 7 (cdr (assoc 70 rec)))) ", colour: " (itoa (cdr (assoc 62 rec)))))
(princ (strcat "\ncurrent layer: " (getvar "CLAYER")))
(princ (strcat "\nCMDECHO " (itoa (getvar "CMDECHO")) ", BLIPMODE " (itoa (getvar "BLIPMODE"))))
(princ)
