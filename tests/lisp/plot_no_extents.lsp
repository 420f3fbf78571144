;; exit: 2
;; args: --plot no_extents.pdf
(princ "ran")
