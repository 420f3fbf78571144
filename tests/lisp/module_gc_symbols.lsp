;; Project values of the "GC" section published at start-up as GC:: symbols,
;; typed by the part after the comma; entries of other shapes publish nothing.
(defun show (name) (princ (strcat "\n" name ": ")) (prin1 (eval (read name))) (princ " ") (princ (type (eval (read name)))))
(show "GC::Scale")
(show "GC::Q")
(show "GC::R")
(show "GC::Title")
(show "GC::Ratio")
(show "GC::P")
(show "GC::Single")
(princ)
