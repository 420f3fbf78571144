;; exit: 2
;; args: --plot bad_paper.pdf --plot-paper B7
(princ "ran")
