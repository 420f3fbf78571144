;; The legacy "sm" shows the dialog sm of the file whose handle a program
;; keeps in dcl_id; the dialog takes its answer from the input stream. A
;; file without that dialog, and no handle at all, are refused.
(setq f (open "sm.dcl" "w"))
(foreach line
  '("sm : dialog { label = \"SM\";"
    "  : edit_box { key = \"count\"; label = \"Count:\"; value = \"1\"; }"
    "  ok_cancel;"
    "}"
    "other : dialog { label = \"Other\"; ok_only; }")
  (write-line line f))
(close f)
(setq dcl_id (load_dialog "sm.dcl"))
(sm)
(princ "\nshown once")
(sm)
(princ "\nshown twice")
(princ (strcat "\nnext answer: " (getstring "\nAnswer: ")))
(setq f (open "nosm.dcl" "w"))
(write-line "other : dialog { label = \"Other\"; ok_only; }" f)
(close f)
(setq dcl_id (load_dialog "nosm.dcl"))
(sm)
(setq dcl_id nil)
(sm)
(princ)
