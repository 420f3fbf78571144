;; exit: 1
;; An AutoLISP error abandons the script after *error* has seen it, and the
;; console ends with a failure status.
(princ "before")
(defun *error* (msg) (princ (strcat "\ncaught: " msg)))
(setq n (/ 1 0))
(princ "\nnever printed")
