;; SCRIPT called from AutoLISP: the script starts once the program has
;; returned to the Command: prompt, and FILEDIA brings up no dialog.
(setvar "FILEDIA" 1)
(command "SCRIPT" "install/steps")
(princ "\nthe program goes on first, last entity: ")
(princ (entlast))
(princ)
