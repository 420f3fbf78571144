;; Builds the family template data/template/kelstd.dxf from the console's
;; default drawing:
;;   kelcad tools/template/kelstd.lsp --save data/template/kelstd.dxf
;; The file is checked in; ctest "template.kelstd" builds it again and
;; compares, so edit this script, never the drawing.

(defun kt-ltype (name text pattern)
  (entmake (append
    (list '(0 . "LTYPE") '(100 . "AcDbSymbolTableRecord") '(100 . "AcDbLinetypeTableRecord")
          (cons 2 name) '(70 . 0) (cons 3 text) '(72 . 65)
          (cons 73 (length pattern))
          (cons 40 (apply '+ (mapcar 'abs pattern))))
    (mapcar '(lambda (d) (cons 49 d)) pattern))))

(defun kt-style (name font bigfont width)
  (entmake (list '(0 . "STYLE") '(100 . "AcDbSymbolTableRecord") '(100 . "AcDbTextStyleTableRecord")
                 (cons 2 name) '(70 . 0) '(40 . 0.0) (cons 41 width) '(50 . 0.0) '(71 . 0)
                 '(42 . 3.5) (cons 3 font) (cons 4 bigfont))))

(defun kt-layer (name color ltype)
  (entmake (list '(0 . "LAYER") '(100 . "AcDbSymbolTableRecord") '(100 . "AcDbLayerTableRecord")
                 (cons 2 name) '(70 . 0) (cons 62 color) (cons 6 ltype))))

(defun kt-dimstyle (name style scale)
  (entmake (list '(0 . "DIMSTYLE") '(100 . "AcDbSymbolTableRecord") '(100 . "AcDbDimStyleTableRecord")
                 (cons 2 name) '(70 . 0)
                 (cons 40 scale)            ; DIMSCALE
                 '(41 . 2.5)                ; DIMASZ
                 '(42 . 0.8)                ; DIMEXO
                 '(44 . 1.25)               ; DIMEXE
                 '(140 . 3.5)               ; DIMTXT
                 '(147 . 0.625)             ; DIMGAP
                 '(77 . 1)                  ; DIMTAD: above the line
                 '(271 . 0)                 ; DIMDEC
                 (cons 340 (tblobjname "STYLE" style)))))

(defun kt-block (name base ents)
  (entmake (list '(0 . "BLOCK") (cons 2 name) '(70 . 0) (cons 10 base)))
  (foreach e ents (entmake e))
  (entmake '((0 . "ENDBLK"))))

(defun kt-line (layer p q) (list '(0 . "LINE") (cons 8 layer) (cons 10 p) (cons 11 q)))
(defun kt-text (layer p h s style)
  (list '(0 . "TEXT") (cons 8 layer) (cons 10 p) (cons 40 h) (cons 1 s) (cons 7 style)))
(defun kt-attdef (layer p h tag prompt value style)
  (list '(0 . "ATTDEF") (cons 8 layer) (cons 10 p) (cons 40 h) (cons 1 value) (cons 3 prompt)
        (cons 2 tag) '(70 . 0) (cons 7 style)))

;; Linetypes (ISO proportions, in drawing units at LTSCALE 1).
(kt-ltype "CENTER" "Center ____ _ ____ _ ____" '(31.75 -6.35 6.35 -6.35))
(kt-ltype "DASHED" "Dashed __ __ __ __ __" '(12.7 -6.35))
(kt-ltype "HIDDEN" "Hidden _ _ _ _ _ _ _" '(6.35 -3.175))
(kt-ltype "PHANTOM" "Phantom _____ _ _ _____" '(31.75 -6.35 6.35 -6.35 6.35 -6.35))
(kt-ltype "DOT" "Dot . . . . . . . ." '(0.0 -6.35))
(kt-ltype "DASHDOT" "Dash dot __ . __ . __" '(12.7 -6.35 0.0 -6.35))

;; Text styles: Chinese drawing text (gbenor + gbcbig), titles, dimensions.
(kt-style "KEL-HZ" "gbenor.shx" "gbcbig.shx" 0.7)
(kt-style "KEL-TITLE" "gbenor.shx" "gbcbig.shx" 0.8)
(kt-style "KEL-DIM" "gbeitc.shx" "gbcbig.shx" 0.7)
(kt-style "KEL-FS" "simsun.ttf" "" 0.8)

;; Layers: the frame (PP-COM), the title block and its texts, and the
;; usual annotation layers.
(kt-layer "PP-COM" 7 "Continuous")
(kt-layer "U-ANNO-TTLB" 7 "Continuous")
(kt-layer "U-ANNO-TEXT" 3 "Continuous")
(kt-layer "U-ANNO-DIMS" 3 "Continuous")
(kt-layer "U-ANNO-SYMB" 4 "Continuous")
(kt-layer "U-ANNO-NOTE" 2 "Continuous")
(kt-layer "U-ANNO-REVS" 6 "Continuous")
(kt-layer "U-ANNO-AXIS" 1 "CENTER")
(kt-layer "U-ANNO-HIDD" 8 "HIDDEN")
(kt-layer "DEFPOINTS" 7 "Continuous")

;; Dimension styles at the family's usual scales.
(kt-dimstyle "KEL-DIM" "KEL-DIM" 1.0)
(kt-dimstyle "KEL-DIM50" "KEL-DIM" 50.0)
(kt-dimstyle "KEL-DIM100" "KEL-DIM" 100.0)

;; Blocks: the general title block (sztq_0, 180 x 56), the countersign
;; block (szhql), the centring mark and an elevation mark.
(kt-block "sztq_0" '(180.0 0.0 0.0)
  (list (kt-line "U-ANNO-TTLB" '(0.0 0.0) '(180.0 0.0))
        (kt-line "U-ANNO-TTLB" '(180.0 0.0) '(180.0 56.0))
        (kt-line "U-ANNO-TTLB" '(180.0 56.0) '(0.0 56.0))
        (kt-line "U-ANNO-TTLB" '(0.0 56.0) '(0.0 0.0))
        (kt-line "U-ANNO-TTLB" '(0.0 40.0) '(180.0 40.0))
        (kt-line "U-ANNO-TTLB" '(0.0 24.0) '(180.0 24.0))
        (kt-line "U-ANNO-TTLB" '(100.0 0.0) '(100.0 40.0))
        (kt-text "U-ANNO-TEXT" '(4.0 45.0) 5.0 "工程名称" "KEL-TITLE")
        (kt-attdef "U-ANNO-TEXT" '(40.0 45.0) 5.0 "PROJECT" "工程名称" "" "KEL-TITLE")
        (kt-attdef "U-ANNO-TEXT" '(4.0 30.0) 5.0 "TITLE" "图名" "" "KEL-TITLE")
        (kt-attdef "U-ANNO-TEXT" '(104.0 30.0) 3.5 "DRAWNO" "图号" "" "KEL-HZ")
        (kt-attdef "U-ANNO-TEXT" '(104.0 14.0) 3.5 "SCALE" "比例" "1:100" "KEL-HZ")
        (kt-attdef "U-ANNO-TEXT" '(104.0 4.0) 3.5 "DATE" "日期" "" "KEL-HZ")))
(kt-block "szhql" '(0.0 0.0 0.0)
  (list (kt-line "U-ANNO-TTLB" '(0.0 0.0) '(100.0 0.0))
        (kt-line "U-ANNO-TTLB" '(100.0 0.0) '(100.0 20.0))
        (kt-line "U-ANNO-TTLB" '(100.0 20.0) '(0.0 20.0))
        (kt-line "U-ANNO-TTLB" '(0.0 20.0) '(0.0 0.0))
        (kt-line "U-ANNO-TTLB" '(0.0 10.0) '(100.0 10.0))
        (kt-line "U-ANNO-TTLB" '(25.0 0.0) '(25.0 20.0))
        (kt-line "U-ANNO-TTLB" '(50.0 0.0) '(50.0 20.0))
        (kt-line "U-ANNO-TTLB" '(75.0 0.0) '(75.0 20.0))
        (kt-text "U-ANNO-TEXT" '(3.0 13.0) 3.5 "专业" "KEL-HZ")
        (kt-text "U-ANNO-TEXT" '(28.0 13.0) 3.5 "姓名" "KEL-HZ")
        (kt-text "U-ANNO-TEXT" '(53.0 13.0) 3.5 "签字" "KEL-HZ")
        (kt-text "U-ANNO-TEXT" '(78.0 13.0) 3.5 "日期" "KEL-HZ")))
(kt-block "KEL-DZBZ" '(0.0 0.0 0.0)
  (list (kt-line "PP-COM" '(0.0 0.0) '(0.0 10.0))))
(kt-block "KEL-BG" '(0.0 0.0 0.0)
  (list (kt-line "U-ANNO-SYMB" '(-3.0 3.0) '(0.0 0.0))
        (kt-line "U-ANNO-SYMB" '(0.0 0.0) '(3.0 3.0))
        (kt-line "U-ANNO-SYMB" '(-3.0 3.0) '(15.0 3.0))
        (kt-attdef "U-ANNO-TEXT" '(0.0 4.0) 3.0 "ELEV" "标高" "±0.000" "KEL-DIM")))
(princ)
