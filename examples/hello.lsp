;;; A first look at KELCAD from AutoLISP: the library's own listing, the
;;; tolerances it publishes, and a few of its functions at work.

(kel_help)

(princ "\n\nTolerances published at start-up:")
(princ (strcat "\n  %PointEQ%  = " (rtos %PointEQ% 2 8)))
(princ (strcat "\n  %DoubleEQ% = " (rtos %DoubleEQ% 2 8)))

(princ "\n\nComparing points with the family's point tolerance:")
(princ "\n  (kel_ispointeq '(0 0 0) '(0 0 0.0000001)) => ")
(prin1 (kel_ispointeq '(0.0 0.0 0.0) '(0.0 0.0 0.0000001)))
(princ "\n  (kel_ispoint2deq '(1 2 0) '(1 2 50))      => ")
(prin1 (kel_ispoint2deq '(1.0 2.0 0.0) '(1.0 2.0 50.0)))
(princ "\n  (kel_isdoubleeq 1 1.0)                    => ")
(prin1 (kel_isdoubleeq 1 1.0))
(princ "\n")
(princ)
