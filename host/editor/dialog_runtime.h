// Headless dialogs: DCL files loaded by id, dialogs made from their
// definitions, and start_dialog's loop, which takes the user's answer
// from the input stream (user_input.h) instead of a window:
//
//   KEY=VALUE   the user sets the tile KEY to VALUE (types into an edit
//               box, ticks a toggle with 1 or clears it with 0, picks a
//               radio button with 1 or names it as the value of its
//               radio row or column, selects list items "0 2", moves a
//               slider); the tile's action runs ($reason 2 for an edit
//               box, which the user leaves; 1 otherwise)
//   KEY         the user presses the tile KEY: a button runs its action,
//               a toggle flips, a radio button is picked
//   (empty)     Enter: the default button (is_default, else "accept")
//   ^C          Escape: the cancel button (is_cancel, else "cancel")
//
// One answer per line; lines are read until an action ends the dialog
// (done_dialog, OK and Cancel by default). When the input ends the
// dialog is cancelled, and ended with status 0 if its cancel action does
// not end it. An answer naming no tile, a disabled tile, or a value a
// tile cannot take is reported on standard error and skipped. Nothing is
// shown on the command line, as a dialog shows nothing there.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "arx/adsdlg.h"
#include "editor/dcl_tiles.h"

namespace kelhost::editor::dcl {

// What runs when the user works a tile: AutoLISP text, or an
// application's C function.
struct Action {
  std::wstring expression;
  CLIENTFUNC function = nullptr;
  bool empty() const { return expression.empty() && !function; }
};

// What a program drew into an image tile: fill_image (a rectangle),
// vector_image (a line) or slide_image (a slide in a rectangle).
struct ImageOp {
  enum Kind { kFill, kVector, kSlide } kind;
  int x1, y1, x2, y2;  // fill and slide: corner and size; vector: the ends
  int color;           // ACI, or -2 .. -18 for the dialog's own colours
  std::wstring slide;
};

class Dialog {
 public:
  struct TileState {
    const Tile* tile = nullptr;
    std::wstring key, type, value;
    int cluster = -1;  // a radio button's radio row or column
    bool enabled = true;
    Action action;
    void* clientData = nullptr;  // ads_client_data_tile
    std::wstring data;           // client_data_tile ($data)
    std::vector<std::wstring> items;  // a list box's or popup list's lines
    std::vector<ImageOp> image;       // an image tile's drawing
    bool isList() const { return type == L"list_box" || type == L"popup_list"; }
    bool isImage() const { return type == L"image" || type == L"image_button"; }
  };

  Dialog(std::wstring name, std::unique_ptr<Tile> root, Action defaultAction, int x, int y);

  const std::wstring& name() const { return mName; }
  int find(const std::wstring& key) const;  // -1 when no tile has the key
  TileState& tile(int index) { return mTiles[static_cast<size_t>(index)]; }
  int tileCount() const { return static_cast<int>(mTiles.size()); }

  // What programs do (set_tile, mode_tile, ...): no action runs.
  bool setValue(const std::wstring& key, const std::wstring& value);
  bool mode(const std::wstring& key, int mode);

  void finish(int status);
  bool finished() const { return mFinished; }
  int status() const { return mStatus; }
  bool started() const { return mStarted; }
  void setStarted() { mStarted = true; }
  int x() const { return mX; }
  int y() const { return mY; }

  // What the user does (start_dialog's answers).
  void pressDefault();
  void pressCancel();
  // False, with the reason, for an answer the dialog cannot take.
  bool answer(const std::wstring& line, std::wstring& why);

 private:
  void collect(const Tile& t, int cluster);
  void select(int index, const std::wstring& value);
  void press(int index);
  void act(int index, int reason);
  const Action* actionOf(int index) const;

  std::wstring mName;
  std::unique_ptr<Tile> mRoot;
  std::vector<TileState> mTiles;
  Action mDefault;
  int mX, mY;
  bool mFinished = false, mStarted = false;
  int mStatus = DLGCANCEL;
};

// Loaded files: a positive id, or -1 (the errors alerted).
int LoadDialogFile(const std::wstring& name);
bool UnloadDialogFile(int id);
// A new dialog of a loaded file, now the current one; null when the file
// does not define it as a dialog (alerted when it is defined wrongly).
Dialog* NewDialog(const std::wstring& name, int fileId, Action defaultAction, int x = -1, int y = -1);
// The dialog AutoLISP's tile functions work on: the newest not finished.
Dialog* CurrentDialog();
bool IsLiveDialog(const void* dialog);
// Shows the dialog until it is finished and returns its status; the
// dialog is gone afterwards (with any made during it and never started).
int StartDialog(Dialog* dialog);
// Ends every dialog with DLGALLDONE.
void TerminateDialogs();

}  // namespace kelhost::editor::dcl
