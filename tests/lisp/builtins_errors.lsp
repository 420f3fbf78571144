;; Wrong arguments to the platform's functions give its AutoLISP errors,
;; which programs catch like any other.
(defun try (form)
  (princ "\n")
  (prin1 form)
  (princ " -> ")
  (princ (vl-catch-all-error-message (vl-catch-all-apply 'eval (list form)))))
(foreach form
  '((alert) (alert 1) (vl-string-elt "abc") (vl-string-elt "abc" 1 2) (vl-string-translate "a" "b" 3)
    (vl-sort-i '(1 2)) (vl-sort-i 5 '<) (cvunit "1" "inch" "cm") (cvunit 1 "inch") (angtof 45)
    (atoms-family 2) (acad_strlsort "abc") (vl-file-size) (vl-file-copy "a") (vl-filename-base nil)
    (vl-directory-files "." "*" "x") (vl-mkdir 'dir) (getcname 1) (ver 1) (startapp) (getfiled "a" "b" "c")
    (vl-registry-read) (vl-registry-write 1) (vl-bb-ref "x") (vl-doc-set 'a) (vl-load-all 3) (osnap '(0 0))
    (osnap "0,0" "_end") (grdraw '(0 0) '(1 1)) (grdraw '(0 0) "x" 1) (grtext 1) (redraw "x")
    (getpropertyvalue "x" "Layer") (getpropertyvalue nil "Layer") (dumpallproperties)
    (acad_colordlg "red") (acad_truecolordlg 5) (start_list) (add_list 1) (fill_image 0 0 1 1)
    (get_attr "a") (nentselp 1) (ssnamex nil) (layoutlist 1) (xstrcase))
  (try form))
(princ)
