// Drawing files: reading ASCII DXF (R12 to 2018) into a database and
// writing a database as DXF 2013 (AC1027, UTF-8).
#pragma once

#include <string>

class AcDbDatabase;

namespace kelhost::dxf {

// Reads the file's bytes into db, which must be empty (made without the
// default drawing). False with a message naming the line when the file is
// malformed; db is then to be discarded.
bool ReadDxf(const std::string& bytes, AcDbDatabase* db, std::wstring& error);

// The drawing as DXF 2013 text. False with a message when it cannot be.
bool WriteDxf(AcDbDatabase* db, std::string& out, std::wstring& error);

}  // namespace kelhost::dxf
