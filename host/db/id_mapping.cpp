// AcDbIdMapping, its pairs and its iterator: the record of a clone
// operation, kept in the order the pairs were made.
#include "arx/dbidmap.h"

#include "db/object_copier.h"
#include "db/rx_define.h"

KELHOST_RX_DEFINE(AcDbIdMapping, AcRxObject, L"")
KELHOST_RX_DEFINE(AcDbIdMappingIter, AcRxObject, L"")

AcDbIdMapping::AcDbIdMapping() = default;

// An operation still waiting for its translation takes back what it made.
AcDbIdMapping::~AcDbIdMapping() = default;

Acad::ErrorStatus AcDbIdMapping::assign(const AcDbIdPair& pair) {
  if (pair.key().isNull()) return Acad::eNullObjectId;
  auto [it, fresh] = mByKey.emplace(pair.key(), mPairs.size());
  if (fresh) {
    mPairs.push_back(pair);
    mDeleted.push_back(false);
  } else {
    mPairs[it->second] = pair;
    mDeleted[it->second] = false;
  }
  return Acad::eOk;
}

bool AcDbIdMapping::compute(AcDbIdPair& pair) const {
  auto it = mByKey.find(pair.key());
  if (it == mByKey.end() || mDeleted[it->second]) return false;
  pair = mPairs[it->second];
  return true;
}

bool AcDbIdMapping::change(const AcDbIdPair& pair) {
  auto it = mByKey.find(pair.key());
  if (it == mByKey.end() || mDeleted[it->second]) return false;
  mPairs[it->second] = pair;
  return true;
}

bool AcDbIdMapping::del(AcDbObjectId key) {
  auto it = mByKey.find(key);
  if (it == mByKey.end() || mDeleted[it->second]) return false;
  mDeleted[it->second] = true;
  return true;
}

AcDbObjectId AcDbIdMapping::lookup(AcDbObjectId key) const {
  auto it = mByKey.find(key);
  return it == mByKey.end() || mDeleted[it->second] ? AcDbObjectId::kNull : mPairs[it->second].value();
}

Acad::ErrorStatus AcDbIdMapping::destDb(AcDbDatabase*& db) const {
  db = mDestDb;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbIdMapping::setDestDb(AcDbDatabase* db) {
  if (mPending) return Acad::eInvalidContext;
  mDestDb = db;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbIdMapping::origDb(AcDbDatabase*& db) const {
  db = mOrigDb;
  return Acad::eOk;
}

AcDbIdMappingIter::AcDbIdMappingIter(const AcDbIdMapping& map) : mMap(&map) { start(); }

Acad::ErrorStatus AcDbIdMappingIter::iterateOn(const AcDbIdMapping& map) {
  mMap = &map;
  start();
  return Acad::eOk;
}

void AcDbIdMappingIter::skipDeleted() {
  while (mIndex < mMap->mPairs.size() && mMap->mDeleted[mIndex]) ++mIndex;
}

void AcDbIdMappingIter::start() {
  mIndex = 0;
  skipDeleted();
}

bool AcDbIdMappingIter::getMap(AcDbIdPair& pair) {
  if (done()) return false;
  pair = mMap->mPairs[mIndex];
  return true;
}

bool AcDbIdMappingIter::next() {
  if (done()) return false;
  ++mIndex;
  skipDeleted();
  return !done();
}

bool AcDbIdMappingIter::done() { return mIndex >= mMap->mPairs.size(); }
