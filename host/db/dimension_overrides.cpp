#include "db/dimension_overrides.h"

#include <cwchar>
#include <functional>
#include <memory>

#include "ads/rbkind.h"
#include "arx/acutads.h"
#include "arx/dbdatabase.h"

namespace kelhost::db {
namespace {

struct ChainDeleter {
  void operator()(resbuf* rb) const { acutRelRb(rb); }
};
using Chain = std::unique_ptr<resbuf, ChainDeleter>;

bool IsText(const resbuf* rb, int code, const wchar_t* text) {
  return rb && rb->restype == code && rb->resval.rstring && std::wcscmp(rb->resval.rstring, text) == 0;
}

// The value node of code in the DSTYLE list of an "ACAD" chain; null when
// the variable has no value of the dimension's own.
const resbuf* ValueOf(const resbuf* acad, int code) {
  for (const resbuf* rb = acad; rb; rb = rb->rbnext) {
    if (!IsText(rb, 1000, L"DSTYLE") || !IsText(rb->rbnext, 1002, L"{")) continue;
    for (const resbuf* v = rb->rbnext->rbnext; v && v->rbnext && !IsText(v, 1002, L"}"); v = v->rbnext->rbnext)
      if (v->restype == 1070 && v->resval.rint == code) return v->rbnext;
    return nullptr;
  }
  return nullptr;
}

}  // namespace

void ForEachDimOverride(const AcDbObject* dim, const std::function<void(int, const resbuf&)>& visit) {
  Chain acad(dim->xData(L"ACAD"));
  for (const resbuf* rb = acad.get(); rb; rb = rb->rbnext) {
    if (!IsText(rb, 1000, L"DSTYLE") || !IsText(rb->rbnext, 1002, L"{")) continue;
    for (const resbuf* v = rb->rbnext->rbnext; v && v->rbnext && !IsText(v, 1002, L"}"); v = v->rbnext->rbnext)
      if (v->restype == 1070) visit(v->resval.rint, *v->rbnext);
    return;
  }
}

namespace {

resbuf* TextNode(int code, const wchar_t* text) {
  resbuf* rb = acutNewRb(code);
  if (rb && acutNewString(text, rb->resval.rstring) != RTNORM) {
    acutRelRb(rb);
    return nullptr;
  }
  return rb;
}

// The "ACAD" data with the DSTYLE pair of code replaced by value (owned by
// the new chain; added at the end of the list when code had none; null
// removes the pair, and code 0 every pair). Data of other variables and outside the DSTYLE list is
// kept in its order.
Chain WithValue(const resbuf* acad, int code, resbuf* value) {
  Chain out(TextNode(1001, L"ACAD"));
  resbuf* tail = out.get();
  auto append = [&tail](resbuf* rb) {
    tail->rbnext = rb;
    while (tail->rbnext) tail = tail->rbnext;
  };
  auto copyNode = [](const resbuf* node) { return kelhost::rb::CopyNode(node); };
  auto pair = [&](resbuf* v) {
    resbuf* key = acutNewRb(1070);
    key->resval.rint = static_cast<short>(code);
    key->rbnext = v;
    return key;
  };
  bool placed = false;
  const resbuf* rb = acad && acad->restype == 1001 ? acad->rbnext : acad;
  while (rb) {
    if (!placed && IsText(rb, 1000, L"DSTYLE") && IsText(rb->rbnext, 1002, L"{")) {
      // The list is rebuilt without code's pair (all pairs for code 0).
      resbuf* kept = nullptr;
      resbuf** keptTail = &kept;
      const resbuf* v = rb->rbnext->rbnext;
      for (; v && v->rbnext && !IsText(v, 1002, L"}"); v = v->rbnext->rbnext) {
        if (code == 0) continue;
        const bool same = v->restype == 1070 && v->resval.rint == code;
        if (same && !value) continue;
        // The new value takes the place of the old.
        *keptTail = same ? pair(value) : copyNode(v);
        if (same) value = nullptr;
        else (*keptTail)->rbnext = copyNode(v->rbnext);
        keptTail = &(*keptTail)->rbnext->rbnext;
      }
      if (value) {
        *keptTail = pair(value);
        value = nullptr;
      }
      if (kept) {
        append(copyNode(rb));
        append(copyNode(rb->rbnext));
        append(kept);
        append(TextNode(1002, L"}"));
      }
      placed = true;
      rb = v && v->rbnext ? v->rbnext : nullptr;  // past the closing brace
      continue;
    }
    append(copyNode(rb));
    rb = rb->rbnext;
  }
  if (value) {
    append(TextNode(1000, L"DSTYLE"));
    append(TextNode(1002, L"{"));
    append(pair(value));
    append(TextNode(1002, L"}"));
  }
  return out;
}

// value null: code's pair is removed (code 0: every pair).
Acad::ErrorStatus SetValue(AcDbObject* dim, int code, resbuf* value) {
  if (!dim->isWriteEnabled()) {
    acutRelRb(value);
    return Acad::eNotOpenForWrite;
  }
  Chain current(dim->xData(L"ACAD"));
  Chain updated = WithValue(current.get(), code, value);
  return dim->setXData(updated.get());
}

}  // namespace

std::optional<double> DimOverrideReal(const AcDbObject* dim, int code) {
  Chain acad(dim->xData(L"ACAD"));
  const resbuf* v = ValueOf(acad.get(), code);
  if (!v || v->restype != 1040) return std::nullopt;
  return v->resval.rreal;
}

std::optional<AcDbObjectId> DimOverrideRecord(const AcDbObject* dim, int code) {
  Chain acad(dim->xData(L"ACAD"));
  const resbuf* v = ValueOf(acad.get(), code);
  AcDbDatabase* db = dim->database();
  if (!v || v->restype != 1005 || !v->resval.rstring || !db) return std::nullopt;
  AcDbObjectId id;
  if (db->getAcDbObjectId(id, false, AcDbHandle(v->resval.rstring)) != Acad::eOk) return AcDbObjectId::kNull;
  return id;
}

Acad::ErrorStatus SetDimOverrideReal(AcDbObject* dim, int code, double value) {
  resbuf* v = acutNewRb(1040);
  v->resval.rreal = value;
  return SetValue(dim, code, v);
}

std::optional<int> DimOverrideInt(const AcDbObject* dim, int code) {
  Chain acad(dim->xData(L"ACAD"));
  const resbuf* v = ValueOf(acad.get(), code);
  if (!v || (v->restype != 1070 && v->restype != 1071)) return std::nullopt;
  return v->restype == 1070 ? v->resval.rint : static_cast<int>(v->resval.rlong);
}

Acad::ErrorStatus SetDimOverrideInt(AcDbObject* dim, int code, int value) {
  if (value < -32768 || value > 32767) return Acad::eInvalidInput;
  resbuf* v = acutNewRb(1070);
  v->resval.rint = static_cast<short>(value);
  return SetValue(dim, code, v);
}

Acad::ErrorStatus SetDimOverrideText(AcDbObject* dim, int code, const wchar_t* text) {
  return SetValue(dim, code, TextNode(1000, text ? text : L""));
}

Acad::ErrorStatus RemoveDimOverride(AcDbObject* dim, int code) { return SetValue(dim, code, nullptr); }

Acad::ErrorStatus RemoveDimOverrides(AcDbObject* dim) { return SetValue(dim, 0, nullptr); }

Acad::ErrorStatus SetDimOverrideRecord(AcDbObject* dim, int code, AcDbObjectId record) {
  ACHAR hex[32] = L"0";
  if (!record.isNull()) record.handle().getIntoAsciiBuffer(hex, 32);
  resbuf* v = TextNode(1005, hex);
  return SetValue(dim, code, v);
}

}  // namespace kelhost::db
