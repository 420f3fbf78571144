// Settings of one dimension, each through one of its setters.
#include "kelcad/api/dimensions.h"
#include "kelcad/api/entity_edits.h"

namespace KEL {

namespace {

// Opens id as a dimension for write, runs change on it and closes it: the
// status of the open or of the change.
template <class Change>
Acad::ErrorStatus ChangeDimension(AcDbObjectId id, Change change) {
  AcDbDimension* dim = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(dim, id, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  es = change(dim);
  dim->close();
  return es;
}

// The system variable DIMSAH set to a value for as long as it lives.
class DimsahFor {
 public:
  explicit DimsahFor(short value) {
    mSaved = acedGetVar(L"DIMSAH", &mOld) == RTNORM;
    resbuf now;
    now.restype = RTSHORT;
    now.resval.rint = value;
    now.rbnext = nullptr;
    acedSetVar(L"DIMSAH", &now);
  }
  ~DimsahFor() {
    if (mSaved) acedSetVar(L"DIMSAH", &mOld);
  }
  DimsahFor(const DimsahFor&) = delete;
  DimsahFor& operator=(const DimsahFor&) = delete;

 private:
  resbuf mOld{};
  bool mSaved = false;
};

}  // namespace

Acad::ErrorStatus SetEntDimStyle(AcDbObjectId dim, AcDbObjectId style) {
  return ChangeDimension(dim, [&](AcDbDimension* d) { return d->setDimstyleData(style); });
}

Acad::ErrorStatus SetEntDimStyle(AcDbObjectId dim, CString styleName) {
  AcDbObjectId style;
  const Acad::ErrorStatus es = GetDimStyleIDbyName(styleName, style);
  if (es != Acad::eOk) return es;
  return SetEntDimStyle(dim, style);
}

Acad::ErrorStatus SetEntDimText(AcDbObjectId dim, const wchar_t* text) {
  return ChangeDimension(dim, [&](AcDbDimension* d) { return d->setDimensionText(text); });
}

Acad::ErrorStatus SetEntDimDec(AcDbObjectId& dim, int places) {
  return ChangeDimension(dim, [&](AcDbDimension* d) { return d->setDimdec(places); });
}

Acad::ErrorStatus SetEntDimRnd(AcDbObjectId& dim, double rounding) {
  return ChangeDimension(dim, [&](AcDbDimension* d) { return d->setDimrnd(rounding); });
}

Acad::ErrorStatus SetDimEntProperty(AcDbObjectId dim, double textGap, double arrowSize, double lineExtension,
                                    double extensionBeyond, const wchar_t* arrowBlock) {
  return ChangeDimension(dim, [&](AcDbDimension* d) {
    Acad::ErrorStatus es = d->setDimgap(textGap);
    if (es == Acad::eOk) es = d->setDimasz(arrowSize);
    if (es == Acad::eOk) es = d->setDimdle(lineExtension);
    if (es == Acad::eOk) es = d->setDimexe(extensionBeyond);
    if (es != Acad::eOk) return es;
    // Both ends take DIMBLK.
    DimsahFor off(0);
    es = d->setDimblk(arrowBlock ? arrowBlock : L"");
    if (es == Acad::eOk) es = d->setDimsah(false);
    return es;
  });
}

}  // namespace KEL
