;; The saved system-variable set from AutoLISP: the snapshot taken at
;; start-up, the drafting state and the way back (all but the colour,
;; which is saved as an integer that the text variable CECOLOR refuses);
;; every save replaces the snapshot; kel_clearundo takes a snapshot too and
;; answers the number of undo marks.
(defun show (label value) (princ (strcat "\n" label ": ")) (princ value))
(setq names '("ANGDIR" "ANGBASE" "BLIPMODE" "CECOLOR" "CELTYPE" "CLAYER" "CMDECHO" "EDGEMODE"
              "ELEVATION" "FILLETRAD" "PLINEWID" "SNAPANG" "THICKNESS" "TEXTSTYLE"))
(defun state () (mapcar 'getvar names))
(setvar "THICKNESS" 9.0)
(kel_rv)
(show "THICKNESS as the module found it at start-up" (getvar "THICKNESS"))
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "WALLS")
           (70 . 0) (62 . 1) (6 . "Continuous")))
(mapcar 'setvar
        '("ANGDIR" "ANGBASE" "BLIPMODE" "CECOLOR" "CELTYPE" "CLAYER" "EDGEMODE" "ELEVATION" "FILLETRAD"
          "PLINEWID" "SNAPANG" "THICKNESS")
        '(1 0.5 1 "1" "Continuous" "WALLS" 1 2.0 3.0 0.25 0.75 4.0))
(show "variables" names)
(show "user's state" (state))
(show "kel_set0 gives" (kel_set0))
(show "drafting state" (state))
(kel_rv)
(show "after kel_rv" (state))
(setvar "THICKNESS" 5.0)
(kel_sv)
(setvar "THICKNESS" 6.0)
(kel_rv)
(show "THICKNESS back to the last snapshot" (getvar "THICKNESS"))
(show "kel_clearundo" (kel_clearundo))
(show "after kel_clearundo" (state))
(kel_rv)
(show "and back" (state))
(princ)
