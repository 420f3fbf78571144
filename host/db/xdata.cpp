#include "db/xdata.h"

#include <string>
#include <vector>

#include "ads/rbkind.h"
#include "arx/acutads.h"
#include "arx/dbsymtb.h"
#include "arx/dbdatabase.h"
#include "db/stub.h"
#include "dxf/access.h"
#include "kelhost/text.h"

namespace kelhost::db {
namespace {

std::wstring AppOf(const resbuf* rb) { return rb->resval.rstring ? rb->resval.rstring : L""; }

// Copies nodes [from, to) onto tail.
bool CopyRun(const resbuf* from, const resbuf* to, resbuf**& tail) {
  for (const resbuf* rb = from; rb != to; rb = rb->rbnext) {
    resbuf* copy = rb::CopyNode(rb);
    if (!copy) return false;
    *tail = copy;
    tail = &copy->rbnext;
  }
  return true;
}

// The node after an application's last group.
const resbuf* EndOfApp(const resbuf* app) {
  const resbuf* rb = app->rbnext;
  while (rb && rb->restype != 1001) rb = rb->rbnext;
  return rb;
}

const resbuf* FindApp(const resbuf* xdata, const std::wstring& name) {
  for (const resbuf* rb = xdata; rb; rb = rb->rbnext)
    if (rb->restype == 1001 && EqualNoCase(AppOf(rb), name)) return rb;
  return nullptr;
}

}  // namespace

Acad::ErrorStatus CheckXData(AcDbDatabase* db, const resbuf* xdata) {
  if (!xdata) return Acad::eOk;
  if (xdata->restype != 1001) return Acad::eInvalidResBuf;
  const AcDbObjectId appTable = db ? db->regAppTableId() : AcDbObjectId::kNull;
  int depth = 0;
  for (const resbuf* rb = xdata; rb; rb = rb->rbnext) {
    const int code = rb->restype;
    if (code == 1001) {
      if (depth != 0) return Acad::eInvalidResBuf;
      auto* table = PeekAs<AcDbRegAppTable>(appTable);
      if (!table || !table->has(AppOf(rb).c_str())) return Acad::eRegappIdNotFound;
    } else if (code == 1002) {
      std::wstring brace = AppOf(rb);
      if (brace == L"{") ++depth;
      else if (brace == L"}" && depth > 0) --depth;
      else return Acad::eInvalidResBuf;
    } else if (code < 1000 || code > 1071 || (code > 1005 && code < 1010) || (code > 1013 && code < 1040) ||
               (code > 1042 && code < 1070)) {
      return Acad::eInvalidResBuf;
    }
    const resbuf* next = rb->rbnext;
    if ((!next || next->restype == 1001) && depth != 0) return Acad::eInvalidResBuf;
  }
  return XDataSize(xdata) > kXDataLimit ? Acad::eXdataSizeExceeded : Acad::eOk;
}

long XDataSize(const resbuf* xdata) {
  long size = 0;
  for (const resbuf* rb = xdata; rb; rb = rb->rbnext) {
    size += 2;
    const int code = rb->restype;
    if (code == 1004) {
      size += 1 + (rb->resval.rbinary.clen > 0 ? rb->resval.rbinary.clen : 0);
    } else if (code == 1005 || code == 1003 || code == 1001) {
      size += 8;
    } else if (code == 1000 || code == 1002) {
      std::wstring text = AppOf(rb);
      long units = 0;
      for (wchar_t ch : text) units += static_cast<unsigned long>(ch) > 0xFFFF ? 2 : 1;
      size += 2 + 2 * units;
    } else if (code >= 1010 && code <= 1013) {
      size += 24;
    } else if (code >= 1040 && code <= 1042) {
      size += 8;
    } else if (code == 1070) {
      size += 2;
    } else if (code == 1071) {
      size += 4;
    }
  }
  return size;
}

resbuf* MergeXData(const resbuf* current, const resbuf* update) {
  resbuf* head = nullptr;
  resbuf** tail = &head;
  bool ok = true;
  // Existing applications, replaced where the update names them.
  for (const resbuf* app = current; app && ok; app = EndOfApp(app)) {
    const resbuf* repl = FindApp(update, AppOf(app));
    if (!repl) {
      ok = CopyRun(app, EndOfApp(app), tail);
    } else if (repl->rbnext && repl->rbnext->restype != 1001) {
      ok = CopyRun(repl, EndOfApp(repl), tail);
    }
  }
  // Applications new to the object (the first mention of each).
  for (const resbuf* app = update; app && ok; app = EndOfApp(app)) {
    if (FindApp(current, AppOf(app)) || FindApp(update, AppOf(app)) != app) continue;
    if (app->rbnext && app->rbnext->restype != 1001) ok = CopyRun(app, EndOfApp(app), tail);
  }
  if (!ok) {
    acutRelRb(head);
    return nullptr;
  }
  return head;
}

resbuf* SelectXData(const resbuf* xdata, const wchar_t* pattern) {
  resbuf* head = nullptr;
  resbuf** tail = &head;
  std::wstring upperPattern = ToUpper(pattern ? pattern : L"");
  for (const resbuf* app = xdata; app; app = EndOfApp(app)) {
    std::wstring name = ToUpper(AppOf(app));
    if (acutWcMatch(name.c_str(), upperPattern.c_str()) != RTNORM) continue;
    if (!CopyRun(app, EndOfApp(app), tail)) {
      acutRelRb(head);
      return nullptr;
    }
  }
  return head;
}

}  // namespace kelhost::db

resbuf* AcDbObject::xData(const ACHAR* regappName) const {
  if (!mXData) return nullptr;
  const resbuf* from = mXData;
  const resbuf* to = nullptr;
  if (regappName && *regappName) {
    from = kelhost::db::FindApp(mXData, regappName);
    if (!from) return nullptr;
    to = kelhost::db::EndOfApp(from);
  }
  resbuf* head = nullptr;
  resbuf** tail = &head;
  if (!kelhost::db::CopyRun(from, to, tail)) {
    acutRelRb(head);
    return nullptr;
  }
  return head;
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* xdata) {
  if (!writable()) return Acad::eNotOpenForWrite;
  Acad::ErrorStatus es = kelhost::db::CheckXData(database(), xdata);
  if (es != Acad::eOk) return es;
  resbuf* merged = kelhost::db::MergeXData(mXData, xdata);
  if (!merged && xdata) {
    // Either everything was removed or memory ran out: tell them apart.
    bool anyData = false;
    for (const resbuf* app = mXData; app; app = app->rbnext)
      if (app->restype == 1001 && !kelhost::db::FindApp(xdata, app->resval.rstring ? app->resval.rstring : L""))
        anyData = true;
    for (const resbuf* rb = xdata; rb; rb = rb->rbnext)
      if (rb->restype != 1001) anyData = true;
    if (anyData) return Acad::eOutOfMemory;
  }
  if (kelhost::db::XDataSize(merged) > kelhost::db::kXDataLimit) {
    acutRelRb(merged);
    return Acad::eXdataSizeExceeded;
  }
  acutRelRb(mXData);
  mXData = merged;
  return Acad::eOk;
}
