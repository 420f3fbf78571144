;; The library listing printed by kel_help, byte for byte; it sets no value.
(kel_help)
