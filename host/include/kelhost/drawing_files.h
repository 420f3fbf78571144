// Opening and saving drawings as DXF files, with a message that names the
// file and the line when it cannot be done (for the console and tests).
#pragma once

#include <string>

class AcDbDatabase;

namespace kelhost {

// Reads the drawing into db (its contents replaced only on success). A
// ".dwg" name falls back to the ".dxf" of the same name.
bool ReadDrawingFile(AcDbDatabase* db, const std::wstring& path, std::wstring& error);
// Writes db as DXF 2013 through a temporary file and a rename.
bool WriteDrawingFile(AcDbDatabase* db, const std::wstring& path, std::wstring& error);

}  // namespace kelhost
