;; An AutoLISP program runs the fixture application's jig command: the
;; user's answers come from the input file, and Escape cancels the drag.
;; args: --arx @fixtures/fixture_module.arx
(command "FIXJIG")
(princ "\nback in AutoLISP, last entity: ")
(princ (entlast))
(princ)
