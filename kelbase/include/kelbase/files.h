// File-system helpers of the family (paths in the family's Windows form).
#pragma once

#include "kelcad/platform.h"

namespace KEL {
// True when the file or directory exists (GetFileAttributesW; the path is
// mapped to the native file system, components matched in any case). A
// null or empty path does not exist.
bool IsExist(const wchar_t* path);

// Creates the directory and every missing level above it. True when it
// exists as a directory afterwards (also when it already did); false when
// a level cannot be made or a file stands in the way.
bool MkMDir(const wchar_t* dir);

// The functions below that can fail say why in problem (when given): a
// line naming the path and the reason, for the caller to show.

// Deletes the files the pattern names: a directory path and a last
// component with '*' and '?', matched as FindFirstFileW matches names.
// Directories (and links to directories) that match are left alone; a
// symbolic link is removed, never what it leads to. With toRecycleBin the
// files go to the user's trash instead. True when every matching file is
// gone, also when nothing matched.
bool DeleteFiles(const wchar_t* pattern, bool toRecycleBin, CString* problem = nullptr);

// Deletes the directory with everything below it, or moves it to the
// user's trash. True also when it did not exist. Links inside the tree are
// removed as links and never followed; when dir itself is a link, only the
// link goes. The file-system root, the user's home directory and any
// directory that holds the home directory are refused.
bool DeleteTree(const wchar_t* dir, bool toRecycleBin, CString* problem = nullptr);

// Moves a file, link or directory to the user's trash as the Linux
// desktops keep it (the freedesktop.org trash): the item goes to
// Trash/files under a name unique there, and Trash/info/<name>.trashinfo
// records its original place (Path=, URL-encoded) and the time
// (DeletionDate=, local time). The trash is $XDG_DATA_HOME/Trash (default
// ~/.local/share/Trash) when it is on the item's file system, else the
// trash at the top of that file system ($topdir/.Trash/<uid> when an
// administrator made $topdir/.Trash, else $topdir/.Trash-<uid>).
bool MoveToRecycleBin(const wchar_t* path, CString* problem = nullptr);
}  // namespace KEL
