;; U between a watched command's start and its end: the reactor forgets the
;; saved snap mode, so the end of the command does not put it back.
;; args: --arx @fixture@
(setvar "CMDECHO" 0)
(setvar "OSMODE" 35)
(kel_enableeditorreactor)
(setq fix_in_then "U")
(command "IN")
(princ (strcat "\nafter IN with U inside: " (itoa (getvar "OSMODE")) ", published: " (itoa kel_pub_osmode_value)))
(princ)
