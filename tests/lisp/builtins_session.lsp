;; The session: version, command names, layouts, the blackboard and the
;; document namespace, loading into every document, the call stack, the
;; registry stand-in, and what a session without a screen answers for
;; windows, menus, help and other programs.
(defun show (label value) (princ (strcat "\n" label ": ")) (prin1 value))
(show "ver" (ver))
(show "getcname" (list (getcname "line") (getcname "_LAYER") (getcname "nosuch") (getcname "_")))
(show "layoutlist" (layoutlist))
(show "bb" (list (vl-bb-set 'kel-shared '(1 2)) (vl-bb-ref 'kel-shared) (boundp 'kel-shared)))
(show "bb cleared" (list (vl-bb-set 'kel-shared nil) (vl-bb-ref 'kel-shared)))
(show "doc" (list (vl-doc-set 'kel-doc 5) kel-doc (vl-doc-ref 'kel-doc) (vl-propagate 'kel-doc)))
(setq f (open "part.lsp" "w")) (write-line "(setq kel-loaded \"yes\")" f) (close f)
(show "load-all" (list (vl-load-all "part.lsp") kel-loaded))
(show "load-all missing" (vl-catch-all-error-message (vl-catch-all-apply 'vl-load-all '("nosuch.lsp"))))
(defun inner () (vl-bt))
(defun outer () (inner))
(outer)
(setq key "HKEY_CURRENT_USER\\Software\\Kel\\Beam")
(show "registry write" (list (vl-registry-write key "Span" 6000) (vl-registry-write key "Grade" "C30") (vl-registry-write key)))
(show "registry read" (list (vl-registry-read key "Span") (vl-registry-read key "Grade") (vl-registry-read key "Nope") (vl-registry-read key)))
(vl-registry-write (strcat key "\\Haunch") "On" 1)
(show "subkeys" (vl-registry-descendents key))
(show "values" (vl-registry-descendents key T))
(show "delete key with subkeys" (vl-registry-delete key))
(show "delete" (list (vl-registry-delete key "Grade") (vl-registry-read key "Grade") (vl-registry-delete (strcat key "\\Haunch"))))
(show "no hive" (vl-registry-read "Software\\Kel"))
(show "headless" (list (gc) (textscr) (startapp "notepad" "a.txt") (help) (menucmd "P1=*") (menugroup "ACAD")))
(show "diesel" (mapcar '(lambda (e) (menucmd (strcat "M=" e)))
                       '("$(+,1,2,3.5)" "$(if,$(=,$(getvar,lunits),2),decimal,other)" "$(substr,KELCAD,2,3)-$(upper,abc)"
                         "$(edtime,2457023.5,DDDD D MONTH YYYY HH:MM)" "$(index,1,\"a,b,c\")" "$(nth,2,x,y,z)"
                         "$(/,1,0)" "$(nosuch,1)" "$(+,1" "plain")))
(princ)
