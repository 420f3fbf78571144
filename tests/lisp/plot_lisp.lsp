;; -PLOT from AutoLISP: a command call answers every prompt; a plot that
;; cannot be made fails the command with its reason.
(entmake '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 5.0)))
(command "-PLOT" "N" "" "" "PublishToWeb PNG.pc3" "lisp.png" "N" "Y")
(princ (if (findfile "lisp.png") "\nlisp.png written" "\nlisp.png missing"))
(command "-PLOT" "Y" "Model" "PublishToWeb SVG.pc3" "A4" "M" "L" "N" "V" "NOSUCH" "F" "0,0" "N" "Y" "" "lisp.svg" "N" "Y")
(princ (if (findfile "lisp.svg") "\nlisp.svg written" "\nlisp.svg missing"))
(command "-PLOT" "Y" "Layout1" "DWG To PDF.pc3" "" "M" "L" "N" "L" "1:1" "0,0" "N" "Y" "N" "N" "N" "lisp.pdf" "N" "Y")
(princ (if (findfile "lisp.pdf") "\nlisp.pdf written" "\nlisp.pdf missing"))
(princ)
