;; kel_set1 without the working layer: LAYER Make creates PP-COM and makes
;; it current.
(princ (strcat "\nbefore: " (if (tblsearch "LAYER" "PP-COM") "PP-COM exists" "no PP-COM")))
(kel_set1)
(setq rec (tblsearch "LAYER" "PP-COM"))
(princ (strcat "\nafter: flags " (itoa (logand 7 (cdr (assoc 70 rec)))) ", colour " (itoa (cdr (assoc 62 rec)))))
(princ (strcat "\ncurrent layer: " (getvar "CLAYER")))
(princ)
