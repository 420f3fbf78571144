;; The drawing README's preview shows: a plate with holes, its centre
;; lines, a chain of dimensions, a title block with a Chinese title and a
;; block with attributes. Made and plotted with:
;;   kelcad docs/images/plot_example.lsp --plot docs/images/plot_example.png \
;;          --plot-paper 240x150 --plot-margin 4 --plot-dpi 100
(entmake '((0 . "LTYPE") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLinetypeTableRecord") (2 . "CENTER")
           (70 . 0) (3 . "____ _ ____ _") (72 . 65) (73 . 4) (40 . 50.0)
           (49 . 32.0) (74 . 0) (49 . -6.0) (74 . 0) (49 . 6.0) (74 . 0) (49 . -6.0) (74 . 0)))
(foreach l '(("OUTLINE" 7 50) ("AXES" 1 18) ("DIMS" 3 18) ("TITLE" 5 35))
  (entmake (list '(0 . "LAYER") '(100 . "AcDbSymbolTableRecord") '(100 . "AcDbLayerTableRecord")
                 (cons 2 (car l)) '(70 . 0) (cons 62 (cadr l)) '(6 . "Continuous") (cons 370 (caddr l)))))
(setvar "LTSCALE" 0.5)
;; The plate: a polyline with rounded corners, and three holes.
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "OUTLINE") (100 . "AcDbPolyline") (90 . 8) (70 . 1)
           (10 10.0 0.0) (10 170.0 0.0) (42 . 0.414213562) (10 180.0 10.0) (10 180.0 70.0) (42 . 0.414213562)
           (10 170.0 80.0) (10 10.0 80.0) (42 . 0.414213562) (10 0.0 70.0) (10 0.0 10.0) (42 . 0.414213562)))
(foreach x '(40.0 90.0 140.0)
  (entmake (list '(0 . "CIRCLE") '(8 . "OUTLINE") (list 10 x 40.0 0.0) '(40 . 12.0)))
  (entmake (list '(0 . "LINE") '(8 . "AXES") '(6 . "CENTER") (list 10 x 22.0 0.0) (list 11 x 58.0 0.0))))
(entmake '((0 . "LINE") (8 . "AXES") (6 . "CENTER") (10 -8.0 40.0 0.0) (11 188.0 40.0 0.0)))
;; Dimensions: the holes' pitch and the plate's width.
(foreach p '((0.0 40.0) (40.0 90.0) (90.0 140.0) (140.0 180.0))
  (entmake (list '(0 . "DIMENSION") '(100 . "AcDbEntity") '(8 . "DIMS") '(100 . "AcDbDimension")
                 (list 10 (cadr p) 92.0 0.0) '(70 . 32) '(100 . "AcDbAlignedDimension")
                 (list 13 (car p) 80.0 0.0) (list 14 (cadr p) 80.0 0.0) '(50 . 0.0) '(100 . "AcDbRotatedDimension"))))
;; A title block with its attributes.
(entmake '((0 . "BLOCK") (2 . "TITLE") (70 . 2) (10 0.0 0.0 0.0)))
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbPolyline") (90 . 4) (70 . 1)
           (10 0.0 0.0) (10 120.0 0.0) (10 120.0 24.0) (10 0.0 24.0)))
(entmake '((0 . "LINE") (10 0.0 12.0 0.0) (11 120.0 12.0 0.0)))
(entmake '((0 . "ATTDEF") (10 4.0 15.0 0.0) (40 . 6.0) (1 . "") (3 . "Title") (2 . "TITLE") (70 . 0)))
(entmake '((0 . "ATTDEF") (10 4.0 3.5 0.0) (40 . 4.5) (1 . "") (3 . "Drawing number") (2 . "NUMBER") (70 . 0)))
(entmake '((0 . "ENDBLK")))
(entmake '((0 . "INSERT") (8 . "TITLE") (66 . 1) (2 . "TITLE") (10 60.0 -40.0 0.0)))
(entmake '((0 . "ATTRIB") (8 . "TITLE") (10 64.0 -25.0 0.0) (40 . 6.0) (1 . "安装板 Mounting plate") (2 . "TITLE") (70 . 0)))
(entmake '((0 . "ATTRIB") (8 . "TITLE") (10 64.0 -36.5 0.0) (40 . 4.5) (1 . "KEL-0016  1:1") (2 . "NUMBER") (70 . 0)))
(entmake '((0 . "SEQEND")))
(princ)
