;; Every name of the function table is registered as an external function.
(setq names '(
  kel_findfile kel_delfile kel_entmakeline kel_help kel_ptpmdist kel_lst2str
  kel_ssredraw kel_ptbarea kel_str2lst kel_entmakepoint kel_selsingleent kel_isptinrgn
  kel_entmakenut kel_linepmint kel_mcs2wcs kel_getckddw kel_kzsjxz kel_entmakecircle
  kel_lineplineint kel_clearundo kel_waiting kel_entmaketext kel_set0 kel_set1
  kel_atomsort kel_sortpte kel_getscreenlbrt kel_isptinview kel_entmakearc kel_qq10xx
  kel_sv kel_rv kel_getplvertex kel_undom kel_undob kel_getarcvertex kel_modiline
  kel_getpickboxwidth kel_setentcolorindex kel_entistype kel_gettextrect
  kel_measurespline kel_breaktextbkline kel_changetextheight kel_getpointeq
  kel_setpointeq kel_setvectoreq kel_getvectoreq kel_getdoubleeq kel_setdoubleeq
  kel_ispointeq kel_ispoint2deq kel_isdoubleeq kel_getpmpt kel_getrnxpart
  kel_setgcinipath kel_writeini kel_readini kel_deliniitem kel_gettexthigh
  kel_settexthigh kel_setbzxsw kel_getbzxsw kel_getssrect zm2pt set3d getlbg kelhtmlhelp
  pan2v del_ln linecd if_lay if_lx appft pt_d_px mkins pxft mklinx sm get1pt get_dd
  getlay mk3dm getmid z_p beep kel_entmakepline kel_mktop kel_mkins kel_softinfo
  kel_getsoftpath kel_getsoftuserpath kel_getworkdir kel_fixlenstr kel_getdate
  kel_iszero kel_setuserini kel_setsysini kel_getuseriniitem kel_setuseriniitem
  kel_setsysiniitem kel_getsysiniitem kel_getinstalldir kel_getlocaldir kel_js_f_max
  kel_getgciniitem kel_setgciniitem kel_setgcini kel_gcinifilepath kel_sysinifilepath
  kel_userinifilepath kel_gettextwidthfactor kel_getlamarkpoint kel_delobjectxdata
  kel_gettextwidth kel_deletefiles kel_deletetree kel_blockinfo kel_getclosestpointto
  kel_getfirstderiv kel_dividecurve kel_measurecurve kel_entityname kel_intersectwith
  kel_getbentityrect kel_islinespx kel_mkmdir kel_restorecadmenu kel_getrightpointatdist
  kel_bpoly kel_str2strlst kel_enableeditorreactor kel_clearinvalidgroup
  kel_createaligneddim kel_createmaligneddim kel_creatembaligneddim kel_createrotateddim
  kel_createmrotateddim kel_creatembrotateddim kel_setentdimstyle kel_setdimenttxtstyle
  kel_setdimenttxthigh kel_setentdimtext kel_manydimenttoone kel_onedimenttomany
  kel_setentdimrnd kel_setentdimdec kel_setdimentproperty KEL_drag_key))
(setq total 0 missing 0)
(foreach name names
  (setq total (1+ total))
  (if (/= (type (eval name)) 'EXRXSUBR)
    (progn (setq missing (1+ missing)) (princ "\nnot registered: ") (princ name))))
(princ (strcat "\n" (itoa total) " names, " (itoa missing) " not registered"))
(princ "\nkel_helpx: ")
(princ (type kel_helpx))
(princ)
