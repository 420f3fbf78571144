// A dictionary's entries: kept in the order they came, found through a
// hash index (linear probing; an erased slot is filled by moving later
// slots of its run back, so no tombstones), sorted by key when iterated.
// A key is hashed and compared as it is read, mapped to upper case one
// character at a time, so a lookup copies nothing.
#include <algorithm>
#include <cstdint>

#include "arx/dbdict.h"
#include "kelhost/text.h"

using kelhost::ToUpperCharInline;

namespace {

// FNV-1a over the upper-case characters (keys are short: a simple hash
// beats a call to a general one), its high half folded into the low one
// that picks the slot. Never 0, which marks a free slot.
size_t HashOf(const ACHAR* key) {
  std::uint64_t hash = 14695981039346656037ull;
  for (const ACHAR* c = key; *c != L'\0'; ++c)
    hash = (hash ^ static_cast<std::uint32_t>(ToUpperCharInline(*c))) * 1099511628211ull;
  hash ^= hash >> 32;
  return hash != 0 ? static_cast<size_t>(hash) : 1;
}

bool SameKey(const std::wstring& upper, const ACHAR* key) {
  size_t i = 0;
  for (; i < upper.size(); ++i)
    if (key[i] == L'\0' || ToUpperCharInline(key[i]) != upper[i]) return false;
  return key[i] == L'\0';
}

const ACHAR* OrEmpty(const ACHAR* key) { return key != nullptr ? key : L""; }

}  // namespace

size_t AcDbDictionary::Entries::probe(const ACHAR* key, size_t hash) const {
  const size_t mask = mSlots.size() - 1;
  size_t i = hash & mask;
  while (mSlots[i].hash != 0 && (mSlots[i].hash != hash || !SameKey(mItems[mSlots[i].item].key, key)))
    i = (i + 1) & mask;
  return i;
}

AcDbDictionary::Entry* AcDbDictionary::Entries::find(const ACHAR* key) {
  if (mSlots.empty()) return nullptr;
  key = OrEmpty(key);
  const Slot& slot = mSlots[probe(key, HashOf(key))];
  return slot.hash != 0 ? &mItems[slot.item].entry : nullptr;
}

const AcDbDictionary::Entry* AcDbDictionary::Entries::find(const ACHAR* key) const {
  return const_cast<Entries*>(this)->find(key);
}

AcDbDictionary::Entry& AcDbDictionary::Entries::slot(const ACHAR* key) {
  if ((mItems.size() + 1) * 2 > mSlots.size()) grow();
  key = OrEmpty(key);
  const size_t hash = HashOf(key);
  Slot& slot = mSlots[probe(key, hash)];
  if (slot.hash == 0) {
    std::wstring upper(key);
    for (wchar_t& c : upper) c = ToUpperCharInline(c);
    mItems.push_back({std::move(upper), hash, Entry()});
    slot = {hash, mItems.size() - 1};
    mOrderValid = false;
  }
  return mItems[slot.item].entry;
}

void AcDbDictionary::Entries::erase(const ACHAR* key) {
  if (mSlots.empty()) return;
  key = OrEmpty(key);
  const size_t mask = mSlots.size() - 1;
  size_t hole = probe(key, HashOf(key));
  if (mSlots[hole].hash == 0) return;
  // The last item takes the erased one's place.
  const size_t item = mSlots[hole].item, last = mItems.size() - 1;
  if (item != last) {
    size_t moved = mItems[last].hash & mask;
    while (mSlots[moved].item != last || mSlots[moved].hash == 0) moved = (moved + 1) & mask;
    mSlots[moved].item = item;
    mItems[item] = std::move(mItems[last]);
  }
  mItems.pop_back();
  mOrderValid = false;
  // A later slot of the run moves into the hole unless its home lies
  // (cyclically) after the hole, where a probe would not pass the hole.
  for (size_t i = (hole + 1) & mask; mSlots[i].hash != 0; i = (i + 1) & mask) {
    const size_t home = mSlots[i].hash & mask;
    const bool homeAfterHole = hole <= i ? (hole < home && home <= i) : (hole < home || home <= i);
    if (homeAfterHole) continue;
    mSlots[hole] = mSlots[i];
    hole = i;
  }
  mSlots[hole] = Slot();
}

void AcDbDictionary::Entries::clear() {
  mItems.clear();
  mSlots.clear();
  mOrderValid = false;
}

const std::vector<AcDbDictionary::Entries::Item*>& AcDbDictionary::Entries::ordered() const {
  if (mOrderValid) return mOrder;
  mOrder.clear();
  for (const Item& item : mItems) mOrder.push_back(const_cast<Item*>(&item));
  std::sort(mOrder.begin(), mOrder.end(), [](const Item* a, const Item* b) { return a->key < b->key; });
  mOrderValid = true;
  return mOrder;
}

void AcDbDictionary::Entries::grow() {
  std::vector<Slot> old(mSlots.empty() ? 8 : mSlots.size() * 2);
  old.swap(mSlots);
  const size_t mask = mSlots.size() - 1;
  for (const Slot& slot : old) {
    if (slot.hash == 0) continue;
    size_t i = slot.hash & mask;
    while (mSlots[i].hash != 0) i = (i + 1) & mask;
    mSlots[i] = slot;
  }
}
