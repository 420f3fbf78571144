;; Dialogs answered from the input stream: a list box filled by the
;; program (new list, appended, an item changed) and picked by index, an
;; image tile drawn into, attributes read back; the colour dialogs; the
;; file dialog, which asks again for a file that is not there.
(defun show (label value) (princ (strcat "\n" label ": ")) (prin1 value))
(setq f (open "pick.dcl" "w"))
(foreach line
  '("pick : dialog { label = \"Pick\";"
    "  : list_box { key = \"items\"; label = \"Items\"; list = \"one\\ntwo\"; width = 20; }"
    "  : popup_list { key = \"grade\"; }"
    "  : image { key = \"swatch\"; width = 10; height = 2; color = 1; }"
    "  ok_cancel; }")
  (write-line line f))
(close f)
(new_dialog "pick" (load_dialog "pick"))
(show "initial" (get_tile "items"))
(show "start_list" (list (start_list "items" 2) (add_list "three") (end_list)))
(show "change" (list (start_list "items" 1 0) (add_list "ONE") (end_list)))
(show "new list" (list (start_list "grade") (add_list "C30") (add_list "C40") (end_list)))
(show "not a list" (start_list "swatch"))
(show "image" (list (start_image "swatch") (fill_image 0 0 (dimx_tile "swatch") (dimy_tile "swatch") 5)
                    (vector_image 0 0 79 31 7) (slide_image 0 0 10 10 "kel.sld") (end_image)))
(show "get_attr" (list (get_attr "items" "label") (get_attr "items" "width") (get_attr "items" "nosuch")))
(action_tile "accept" "(setq picked (list (get_tile \"items\") (get_tile \"grade\"))) (done_dialog 1)")
(show "status" (start_dialog))
(show "picked" picked)
(show "colordlg" (list (acad_colordlg 3) (acad_colordlg 3) (acad_colordlg 256 nil) (acad_colordlg 1)))
(show "truecolordlg" (list (acad_truecolordlg '(62 . 5)) (acad_truecolordlg '(420 . 16711680)) (acad_truecolordlg '(62 . 1))))
(setq f (open "beam.txt" "w")) (close f)
(show "getfiled" (list (getfiled "Open" "" "txt" 0) (getfiled "Save" "out" "txt" 1) (getfiled "Open" "" "txt" 0)))
(princ)
