;; Screen functions headless: grread's events from the input stream (a
;; typed line comes key by key, a point is a pick, Enter is 13), grdraw
;; and grvecs drawn and taken away by redraw, grtext on the status line.
(defun show (label value) (princ (strcat "\n" label ": ")) (prin1 value))
(show "keys" (list (grread) (grread) (grread T 4 0)))
(show "pick" (grread))
(show "enter" (grread))
(show "grdraw" (grdraw '(0 0) '(10 10) 1 1))
(show "grvecs" (grvecs '(1 (0 0) (1 0) -2 (0 0) (0 1)) '((1 0 0 5) (0 1 0 5) (0 0 1 0) (0 0 0 1))))
(show "grvecs odd" (vl-catch-all-error-message (vl-catch-all-apply 'grvecs '((1 (0 0))))))
(show "grtext" (list (grtext -1 "Working") (grtext 3 "box") (grtext)))
(show "redraw" (list (redraw) (redraw (entmakex '((0 . "POINT") (10 0.0 0.0 0.0))) 3)))
(show "cancel" (vl-catch-all-error-message (vl-catch-all-apply 'grread nil)))
(princ)
