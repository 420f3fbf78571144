;; DCL files with errors are not loaded (the error, with the file and line,
;; goes to an alert); a dialog the file does not define, or one the user
;; could not leave, is not shown; the tile functions without a dialog.
(defun dcl (name lines / f)
  (setq f (open name "w"))
  (foreach line lines (write-line line f))
  (close f))
(dcl "broken.dcl" '("broken : dialog {" "  : button { key = \"go\" }" "  ok_cancel;" "}"))
(dcl "unknown.dcl" '("unknown : dialog {" "  ok_cancl;" "}"))
(dcl "trap.dcl" '("trap : dialog {" "  : button { key = \"go\"; }" "}"))
(princ "\nbroken: ") (prin1 (load_dialog "broken"))
(princ "\nundefined tile: ") (prin1 (load_dialog "unknown.dcl"))
(princ "\nno file: ") (prin1 (load_dialog "nothere"))
(setq id (load_dialog "trap"))
(princ "\nno way out: ") (prin1 (new_dialog "trap" id))
(princ "\nnot defined: ") (prin1 (new_dialog "other" id))
(princ "\nno dialog: ")
(prin1 (list (set_tile "go" "1") (get_tile "go") (action_tile "go" "(princ)") (mode_tile "go" 1) (start_dialog)))
(princ)
