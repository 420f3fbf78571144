;; A dialog answered from the input stream: values typed into an edit box,
;; a toggle ticked, a radio button picked, a button pressed, the actions
;; seeing $key, $value and $reason, then OK; a second showing cancelled by
;; Escape; a nested dialog ended by term_dialog; a program that reads the
;; tiles in its OK action.
(setq f (open "beam.dcl" "w"))
(foreach line
  '("// beam settings"
    "beam : dialog {"
    "  label = \"Beam\";"
    "  : edit_box { key = \"span\"; label = \"Span:\"; value = \"6000\"; edit_limit = 8; }"
    "  : toggle { key = \"haunch\"; label = \"Haunch\"; }"
    "  : boxed_radio_row { key = \"grade\"; label = \"Grade\";"
    "    : radio_button { key = \"C30\"; label = \"C30\"; value = \"1\"; }"
    "    : radio_button { key = \"C40\"; label = \"C40\"; }"
    "  }"
    "  : button { key = \"more\"; label = \"More...\"; }"
    "  ok_cancel;"
    "}"
    "more : dialog { label = \"More\"; : button { key = \"quit\"; label = \"Quit all\"; } ok_only; }")
  (write-line line f))
(close f)
(setq id (load_dialog "beam"))
(princ (strcat "\nloaded: " (if (> id 0) "yes" "no")))
(defun show-event () (princ (strcat "\n" $key " = " $value " (" (itoa $reason) ")")))
(defun beam ()
  (new_dialog "beam" id)
  (foreach key '("span" "haunch" "grade") (action_tile key "(show-event)"))
  (action_tile "more" "(new_dialog \"more\" id) (action_tile \"quit\" \"(term_dialog)\") (princ (strcat \"\\nmore: \" (itoa (start_dialog))))")
  (action_tile "accept" "(setq result (mapcar 'get_tile '(\"span\" \"haunch\" \"grade\"))) (done_dialog 1)")
  (setq result nil)
  (princ (strcat "\nstatus: " (itoa (start_dialog))))
  (princ "\nresult: ")
  (prin1 result))
(beam)
(beam)
(beam)
(unload_dialog id)
(princ "\nunknown id: ")
(prin1 (new_dialog "beam" id))
(princ)
