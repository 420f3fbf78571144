// Drawing files named at a prompt (INSERT, WBLOCK). The host keeps
// drawings as DXF: a ".dwg" name is read from the ".dxf" of the same name
// when there is no such ".dwg", and written as that ".dxf".
#pragma once

#include <string>
#include <vector>

namespace kelhost::editor {

// A name as typed, without the double quotes that may surround it.
std::wstring Unquoted(const std::wstring& name);
// Whether a name says where a file is: it has a directory or ends in
// ".dwg" or ".dxf".
bool NamesAFile(const std::wstring& name);
// The name without directory and extension (the block a drawing becomes).
std::wstring FileBaseName(const std::wstring& path);

// Where a drawing named at a prompt is read from. A name without an
// extension means name.dwg. A name with a directory is taken as it is
// (relative to the working directory). A bare name is looked for, in
// this order, in the current drawing's directory (DWGPREFIX), the working
// directory, then each directory of the ACAD environment variable
// (separated by ';'), as findfile searches. In each place a ".dwg" that
// is not there is looked for as the ".dxf" of the same name. Empty when
// not found; searched then receives the directories looked in.
std::wstring FindDrawingFile(const std::wstring& name, std::vector<std::wstring>* searched = nullptr);

// The file a drawing name writes: name.dwg for a name without extension,
// and for a ".dwg" the ".dxf" of the same name (what reading finds).
std::wstring DrawingFileToWrite(const std::wstring& name);

bool IsExistingFile(const std::wstring& path);

}  // namespace kelhost::editor
