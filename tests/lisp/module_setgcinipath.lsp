;; Naming the project field file: a wrong argument prints the usage and
;; gives nil; an existing file is taken, as often as it is named (its
;; entries join the field map only once).
(princ "\nno argument: ")
(princ (kel_setgcinipath))
(princ "\nnot a string: ")
(princ (kel_setgcinipath 12))
(princ "\nfirst time: ")
(princ (kel_setgcinipath "Is\\SetGetDa.dat"))
(princ "\nsecond time: ")
(princ (kel_setgcinipath "Is\\SetGetDa.dat"))
(princ)
