// AcDbDatabase::readDwgFile and saveAs over the DXF reader and writer. A
// drawing is read into a database of its own first, so that a bad file
// leaves the target as it was; on success the target takes over the new
// contents.
#include "kelhost/drawing_files.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "arx/dbdatabase.h"
#include "db/database_state.h"
#include "dxf/dxf_file.h"
#include "dxf/file_structure.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"

namespace kelhost {
namespace {

bool ReadBytes(const std::string& native, std::string& bytes) {
  std::ifstream in(native, std::ios::binary);
  if (!in) return false;
  // A regular file is read in one piece into a string of its size: a
  // large drawing is not copied twice.
  std::error_code ec;
  const auto size = std::filesystem::is_regular_file(native, ec) ? std::filesystem::file_size(native, ec) : 0;
  if (!ec && size > 0) {
    bytes.resize(size);
    in.read(bytes.data(), static_cast<std::streamsize>(size));
    bytes.resize(static_cast<size_t>(in.gcount()));
    return !in.bad();
  }
  std::ostringstream s;
  s << in.rdbuf();
  bytes = s.str();
  return !in.bad();
}

// The file to read for a drawing name: a ".dwg" (or a ".dwt" template)
// that does not exist is looked for as the ".dxf" of the same name.
std::string DrawingPath(const std::wstring& path) {
  std::string native = NativePath(path);
  std::ifstream probe(native, std::ios::binary);
  if (probe || path.size() <= 4) return native;
  const std::wstring extension = path.substr(path.size() - 4);
  if (EqualNoCase(extension, L".dwg") || EqualNoCase(extension, L".dwt"))
    native = NativePath(path.substr(0, path.size() - 4) + L".dxf");
  return native;
}

}  // namespace

bool ReadDrawingFile(AcDbDatabase* db, const std::wstring& path, std::wstring& error) {
  error.clear();
  if (!db) return error = L"no database", false;
  std::string bytes;
  if (!ReadBytes(DrawingPath(path), bytes)) return error = path + L": cannot read the file", false;
  auto fresh = std::make_unique<AcDbDatabase>(false, true);
  std::wstring why;
  if (!dxf::ReadDxf(bytes, fresh.get(), why)) return error = path + L": " + why, false;
  // The objects now belong to db; its old contents go with fresh.
  for (auto& stub : fresh->state().stubs) stub->db = db;
  for (auto& stub : db->state().stubs) stub->db = fresh.get();
  std::swap(db->state(), fresh->state());
  db->state().fileName = path;
  return true;
}

bool WriteDrawingFile(AcDbDatabase* db, const std::wstring& path, std::wstring& error) {
  error.clear();
  if (!db) return error = L"no database", false;
  dxf::CompleteForFile(db);
  std::string text;
  std::wstring why;
  if (!dxf::WriteDxf(db, text, why)) return error = path + L": " + why, false;
  if (!WriteFileAtomically(NativePath(path), text))
    return error = path + L": cannot write the file: " + WriteErrorText(errno), false;
  return true;
}

}  // namespace kelhost

Acad::ErrorStatus AcDbDatabase::readDwgFile(const ACHAR* fileName, int, bool, const wchar_t*) {
  if (!fileName || !*fileName) return Acad::eInvalidInput;
  std::ifstream probe(kelhost::DrawingPath(fileName), std::ios::binary);
  if (!probe) return Acad::eFileNotFound;
  std::wstring error;
  return kelhost::ReadDrawingFile(this, fileName, error) ? Acad::eOk : Acad::eBadDwgHeader;
}

Acad::ErrorStatus AcDbDatabase::saveAs(const ACHAR* fileName) {
  if (!fileName || !*fileName) return Acad::eInvalidInput;
  std::wstring error;
  if (!kelhost::WriteDrawingFile(this, fileName, error)) return Acad::eFileAccessErr;
  state().fileName = fileName;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::getFilename(const ACHAR*& pOutput) const {
  pOutput = state().fileName.c_str();
  return Acad::eOk;
}
