// The path of the curve last queried, kept while nothing can change it: a
// program that asks a long polyline for thousands of points builds its
// path once. The curve must be in a database and open only for reading;
// opening it for write (or undo restoring it) and its database going end
// the entry.
#include <memory>

#include "arx/dbents.h"
#include "db/curve_path.h"
#include "db/stub.h"

namespace kelhost::geom {
namespace {

class LastPath : public db::ObjectObserver {
 public:
  LastPath() { db::AddObjectObserver(this); }
  void beforeWrite(AcDbObject* object) override {
    if (object == mCurve) forget();
  }
  void added(AcDbObject*) override {}
  void databaseGoing(AcDbDatabase* database) override {
    if (database == mDatabase) forget();
  }
  const Path* find(const AcDbCurve& curve) const {
    return &curve == mCurve && curve.database() == mDatabase && curve.objectId() == mId ? mPath.get() : nullptr;
  }
  const Path* keep(const AcDbCurve& curve, Path&& path) {
    mCurve = &curve;
    mDatabase = curve.database();
    mId = curve.objectId();
    mPath = std::make_unique<Path>(std::move(path));
    return mPath.get();
  }

 private:
  void forget() {
    mCurve = nullptr;
    mDatabase = nullptr;
    mId = AcDbObjectId();
    mPath.reset();
  }
  const AcDbCurve* mCurve = nullptr;
  AcDbDatabase* mDatabase = nullptr;
  AcDbObjectId mId;
  std::unique_ptr<Path> mPath;
};

LastPath& Last() {
  static LastPath* last = new LastPath();  // lives as long as the observers' list
  return *last;
}

}  // namespace

const Path* PathOf(const AcDbCurve& curve, Path& scratch) {
  const bool steady = curve.database() != nullptr && curve.isReadEnabled() && !curve.isWriteEnabled();
  if (steady)
    if (const Path* kept = Last().find(curve)) return kept;
  if (!curve.buildPath(scratch) || scratch.empty()) return nullptr;
  return steady ? Last().keep(curve, std::move(scratch)) : &scratch;
}

}  // namespace kelhost::geom
