; The drawing commands called from AutoLISP: CMDECHO 0 hides their
; prompts; a command cancelled part way leaves nothing half-made (PLINE
; keeps the segments it drew, as the platform does); a failed ARC draws
; nothing; ".text" with "m" as the module's drawing helpers call it.
(setvar "cmdecho" 0)
(command "pline" "0,0" "10,0" "10,10")
(command)
(princ (list (cdr (assoc 0 (entget (entlast)))) (cdr (assoc 90 (entget (entlast))))))
(setq n (sslength (ssget "X")))
(command "arc" "0,0" "5,5")
(command)
(princ (= n (sslength (ssget "X"))))
(command "arc" "0,0" "5,0" "10,0")
(princ (= n (sslength (ssget "X"))))
(princ (command-s ".text" "m" '(20.0 20.0 0.0) 3.0 0 "Hello there"))
(setq e (entget (entlast)))
(princ (mapcar '(lambda (g) (cdr (assoc g e))) '(0 1 11 40 72 73)))
(setvar "cmdecho" 1)
(command "circle" "0,0" 5)
(princ (cdr (assoc 40 (entget (entlast)))))
(princ)
