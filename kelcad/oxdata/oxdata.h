// OxData: typed values kept on one drawing object and in the drawing. A
// value is found by (application, group code, occurrence index) in the
// object's xdata or, with an empty application, in its own entity list;
// by (dictionary path, key, group code, occurrence index) in xrecords
// under the object's extension dictionary; and, through the static
// members, in xrecords under the drawing's named-object dictionary.
//
// The occurrence index counts from 0 the groups of that code only. Writing
// past the last one appends zero-valued groups up to the index. Reads are
// lenient: they answer the index when it exists, else the count of such
// groups less one with the last value copied out, else -1 with the value
// untouched, so callers compare the answer with the index they asked for.
// A dictionary path is a list of dictionary names separated by
// backslashes ("A\B"); empty names are skipped and an empty path is the
// root dictionary itself. Paths of 260 characters or more are refused.
#pragma once

#include <cstdint>

#include "kelcad/platform.h"

class OxData {
 public:
  OxData();
  OxData(AcDbObjectId id);
  OxData(ads_name ent);

  // Attaches the object when it can be opened for read (the id is cleared
  // first, and the status of the attempt kept either way).
  bool Attach(AcDbObjectId id);
  bool Attach(ads_name ent);
  // Opens and closes the attached object in that mode; true on eOk.
  bool IsOK(AcDb::OpenMode mode = AcDb::kForRead);
  // The platform's text of the last status of this object, and of the
  // last drawing-level operation.
  const wchar_t* GetLastErrorText() const;
  static const wchar_t* GetDWGLastErrorText();
  // The drawing of the drawing-level records (null: the working database).
  static AcDbDatabase* GetCurDWGPtr();

  // Xdata of app, or the object's entity list when app is empty. Each
  // value type uses its own group field and needs a group code of its
  // kind (string, 16-bit, 32-bit, real, point, entity name).
  bool SetxData(const wchar_t* app, short code, const wchar_t* value, int index = 0);
  bool SetxData(const wchar_t* app, short code, int value, int index = 0);
  bool SetxData(const wchar_t* app, short code, long value, int index = 0);
  bool SetxData(const wchar_t* app, short code, double value, int index = 0);
  bool SetxData(const wchar_t* app, short code, const double* point, int index = 0);
  bool SetxData(const wchar_t* app, short code, const std::int64_t* name, int index = 0);

  int GetxData(const wchar_t* app, short code, CString& value, int index = 0);
  int GetxData(const wchar_t* app, short code, int& value, int index = 0);
  int GetxData(const wchar_t* app, short code, long& value, int index = 0);
  int GetxData(const wchar_t* app, short code, double& value, int index = 0);
  int GetxData(const wchar_t* app, short code, double (&point)[3], int index = 0);
  int GetxData(const wchar_t* app, short code, std::int64_t (&name)[2], int index = 0);

  // Removes the group of that code at index (-1: every group of the code)
  // from app's xdata.
  bool DeleteXData(const wchar_t* app, short code, int index);
  // Removes the xdata of every application whose upper-cased name matches
  // the pattern (empty: "*"); their names, as stored, are added to removed.
  bool DeleteXData(const wchar_t* pattern, CStringArray& removed);
  bool DeleteXData();

  // The names of the applications with xdata on the object, in order;
  // their number, or -1 when the object cannot be opened.
  int GetAllAppName(CStringArray& names);
  // The entity list followed by the xdata of every application (no -3
  // group between them). The caller releases it.
  resbuf* GetAllResBuf();

  // Xrecords under the object's extension dictionary (made when missing).
  bool SetxRecord(const wchar_t* key, short code, const wchar_t* value, int index = 0, const wchar_t* path = L"");
  bool SetxRecord(const wchar_t* key, short code, int value, int index = 0, const wchar_t* path = L"");
  bool SetxRecord(const wchar_t* key, short code, long value, int index = 0, const wchar_t* path = L"");
  bool SetxRecord(const wchar_t* key, short code, double value, int index = 0, const wchar_t* path = L"");
  bool SetxRecord(const wchar_t* key, short code, const double* point, int index = 0, const wchar_t* path = L"");

  int GetxRecord(const wchar_t* key, short code, CString& value, int index = 0, const wchar_t* path = L"");
  int GetxRecord(const wchar_t* key, short code, int& value, int index = 0, const wchar_t* path = L"");
  int GetxRecord(const wchar_t* key, short code, long& value, int index = 0, const wchar_t* path = L"");
  int GetxRecord(const wchar_t* key, short code, double& value, int index = 0, const wchar_t* path = L"");
  int GetxRecord(const wchar_t* key, short code, double (&point)[3], int index = 0, const wchar_t* path = L"");

  // A copy of the record's whole chain (the caller releases it), or null.
  resbuf* GetxRecordResBuf(const wchar_t* key, const wchar_t* path = L"");
  bool DeletexRecord(const wchar_t* key, const wchar_t* path = L"");

  // Xrecords under the named-object dictionary of GetCurDWGPtr(), or of
  // the working database when that is null.
  static bool SetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, const wchar_t* value, int index = 0);
  static bool SetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, int value, int index = 0);
  static bool SetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, long value, int index = 0);
  static bool SetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, double value, int index = 0);
  static bool SetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, const double* point, int index = 0);

  static int GetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, CString& value, int index = 0);
  static int GetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, int& value, int index = 0);
  static int GetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, long& value, int index = 0);
  static int GetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, double& value, int index = 0);
  static int GetDWGxRecord(const wchar_t* path, const wchar_t* key, short code, double (&point)[3], int index = 0);

  static resbuf* GetDWGxRecordResBuf(const wchar_t* path, const wchar_t* key);
  static bool DeleteDWGxRecord(const wchar_t* path, const wchar_t* key);

  // The drawing of the drawing-level records, and the status of the last
  // drawing-level operation.
  static AcDbDatabase* m_pCurDWG;
  static Acad::ErrorStatus m_DWGErrorStatus;

 protected:
  // xData(app), or all of the object's xdata when app is empty.
  resbuf* GetXResBuf(const wchar_t* app);
  // The object's entity list.
  resbuf* GetResBuf();

  template <class T>
  bool SetDataTemplate(const wchar_t* app, short code, const T& value, int index);
  template <class T>
  int GetDataTemplate(const wchar_t* app, short code, T& value, int index);
  // Writes chain back: as app's xdata, or as the entity list.
  bool UpdateDataTemplate(const wchar_t* app, resbuf* chain);

  // The xrecord steps from a root dictionary; statuses are returned.
  template <class T>
  static Acad::ErrorStatus SetxRecordTemplate(AcDbObjectId root, const wchar_t* path, const wchar_t* key, short code,
                                              const T& value, int index);
  template <class T>
  static int GetxRecordTemplate(AcDbObjectId root, const wchar_t* path, const wchar_t* key, short code, T& value,
                                int index);
  // Stores chain in the record key of the dictionary the path leads to.
  static Acad::ErrorStatus UpdatexRecordTemplate(AcDbObjectId root, const wchar_t* path, const wchar_t* key,
                                                 const resbuf* chain);

  // The dictionary the path leads to from root, made level by level where
  // missing; null when a level cannot be opened or made.
  static AcDbObjectId SetMDirection(AcDbObjectId root, const wchar_t* path);
  // The dictionary the path leads to, never making one. A missing level
  // ends the walk in the deepest dictionary reached, so a key under a
  // partly missing path is looked up there. Null when a level cannot be
  // opened, the root is null or the path is refused.
  static AcDbObjectId GetMDirection(AcDbObjectId root, const wchar_t* path);

 private:
  // The object's extension dictionary (made first when create is set);
  // null with the status kept when there is none or the object is shut.
  AcDbObjectId ExtensionDictionary(bool create);
  template <class T>
  bool SetObjectRecord(const wchar_t* key, short code, const T& value, int index, const wchar_t* path);
  template <class T>
  int GetObjectRecord(const wchar_t* key, short code, T& value, int index, const wchar_t* path);
  template <class T>
  static bool SetDrawingRecord(const wchar_t* path, const wchar_t* key, short code, const T& value, int index);
  template <class T>
  static int GetDrawingRecord(const wchar_t* path, const wchar_t* key, short code, T& value, int index);

  AcDbObjectId m_ObjectId;
  Acad::ErrorStatus m_ErrorStatus = Acad::eOk;
};
