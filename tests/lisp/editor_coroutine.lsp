;; A command left waiting by (command ...) takes the next call's answers;
;; getpoint reads the user's answers in between, and PAUSE hands one
;; prompt to the user.
(command "_.line" "0,0")
(command "10,0")
(princ (getvar "CMDNAMES"))
(setq p (getpoint "\nNext: "))
(command p "")
(princ (strcat "\nlines: " (itoa (sslength (ssget "X")))))
(command "line" '(0 0) pause "")
(setvar "CMDECHO" 0)
(command-s "line" "5,5" "6,6" "")
(princ (strcat "\nlines: " (itoa (sslength (ssget "X")))))
(princ (vl-catch-all-error-message (vl-catch-all-apply 'command-s '("line" "5,5"))))
(princ "\ndone")
(princ)
