// Programmable dialog boxes (DCL) for applications: the C calls behind
// AutoLISP's load_dialog, new_dialog, start_dialog and the tile functions.
// The headless host shows no window: start_dialog takes the user's
// answer from the input stream (see the reference page of
// ads_start_dialog). Every call returns RTNORM, or RTERROR for a bad
// handle, an unknown key or a call out of order.
#pragma once

#include "adsdef.h"

typedef void* ads_hdlg;   // a dialog made by ads_new_dialog
typedef void* ads_htile;  // one of its tiles, as callbacks receive it

// What a callback learns about the event: the dialog and tile, the tile's
// value (valid during the call), its client data, why it was called
// (CBR_*) and, for image buttons, where.
struct ads_callback_packet {
  ads_hdlg dialog;
  ads_htile tile;
  ACHAR* value;
  void* client_data;
  int reason;
  long x, y;
};
typedef void (*CLIENTFUNC)(ads_callback_packet* cpkt);
#define NULLCB ((CLIENTFUNC)0)

// Callback reasons.
#define CBR_SELECT 1        // the tile was chosen (pressed, set, Enter)
#define CBR_LOST_FOCUS 2    // an edit box was left
#define CBR_DRAG 3          // a slider is being dragged
#define CBR_DOUBLE_CLICK 4  // a list box or image button was double-clicked

// start_dialog's status: the status given to done_dialog, by default
// DLGOK for the OK button and DLGCANCEL for Cancel; DLGALLDONE when
// term_dialog ended every dialog.
#define DLGCANCEL 0
#define DLGOK 1
#define DLGALLDONE -1
#define DLGSTATUS 2  // the first status an application may define

// mode_tile's modes.
#define MODE_ENABLE 0
#define MODE_DISABLE 1
#define MODE_SETFOCUS 2
#define MODE_SETSEL 3
#define MODE_FLIP 4

// Loads a .dcl file (".dcl" added when the name has no extension; looked
// for on the support path): RTNORM and *dcl_id (positive); RTERROR and a
// negative *dcl_id when it cannot be read or has errors (reported in an
// alert giving its file and line).
int ads_load_dialog(const ACHAR* dclfile, int* dcl_id);
int ads_unload_dialog(int dcl_id);
// Makes the dialog dlgname of a loaded file; def_callback (or NULLCB)
// runs for tiles that have no action of their own. RTNORM with *hdlg;
// RTERROR with *hdlg null when the file does not define such a dialog.
int ads_new_dialog(const ACHAR* dlgname, int dcl_id, CLIENTFUNC def_callback, ads_hdlg* hdlg);
int ads_new_positioned_dialog(const ACHAR* dlgname, int dcl_id, CLIENTFUNC def_callback, int x, int y,
                              ads_hdlg* hdlg);
// Shows the dialog until an action ends it; *status receives the status.
// The handle is no longer valid afterwards.
int ads_start_dialog(ads_hdlg hdlg, int* status);
int ads_done_dialog(ads_hdlg hdlg, int status);
int ads_done_positioned_dialog(ads_hdlg hdlg, int status, int* x_result, int* y_result);
// Ends every dialog as if each were cancelled (start_dialog: DLGALLDONE).
int ads_term_dialog();

int ads_action_tile(ads_hdlg hdlg, const ACHAR* key, CLIENTFUNC tilefunc);
int ads_set_tile(ads_hdlg hdlg, const ACHAR* key, const ACHAR* value);
// Copies the tile's value into value (at most maxlen characters with the
// terminating null).
int ads_get_tile(ads_hdlg hdlg, const ACHAR* key, ACHAR* value, int maxlen);
int ads_mode_tile(ads_hdlg hdlg, const ACHAR* key, short mode);
int ads_client_data_tile(ads_hdlg hdlg, const ACHAR* key, void* clientdata);
// An attribute of a tile as its DCL defines it.
int ads_get_attr_string(ads_htile tilehandle, const ACHAR* attr, ACHAR* value, int len);
