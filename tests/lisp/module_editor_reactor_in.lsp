;; A command named IN reacts: the watched list is searched as plain text.
;; args: --arx @fixture@
(setvar "CMDECHO" 0)
(setvar "OSMODE" 35)
(command "IN")
(princ (strcat "\nswitched off, after IN: " (itoa (getvar "OSMODE"))))
(kel_enableeditorreactor T)
(command "IN")
(princ (strcat "\nswitched on, after IN: " (itoa (getvar "OSMODE")) ", published: " (itoa kel_pub_osmode_value)))
(princ)
