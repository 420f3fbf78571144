// AcArray<T>: the platform's growable array, index-based, by value.
#pragma once

#include <algorithm>
#include <vector>

template <class T>
class AcArray {
 public:
  AcArray() = default;
  explicit AcArray(int physicalLength, int growLength = 8) { mData.reserve(physicalLength > 0 ? physicalLength : 0); }

  int length() const { return static_cast<int>(mData.size()); }
  int logicalLength() const { return length(); }
  int physicalLength() const { return static_cast<int>(mData.capacity()); }
  bool isEmpty() const { return mData.empty(); }
  bool isValid(int i) const { return i >= 0 && i < length(); }

  T& operator[](int i) { return mData[static_cast<size_t>(i)]; }
  const T& operator[](int i) const { return mData[static_cast<size_t>(i)]; }
  T& at(int i) { return mData.at(static_cast<size_t>(i)); }
  const T& at(int i) const { return mData.at(static_cast<size_t>(i)); }
  T& first() { return mData.front(); }
  const T& first() const { return mData.front(); }
  T& last() { return mData.back(); }
  const T& last() const { return mData.back(); }
  T* asArrayPtr() { return mData.data(); }
  const T* asArrayPtr() const { return mData.data(); }

  // Returns the index of the new element.
  int append(const T& value) { mData.push_back(value); return length() - 1; }
  AcArray& append(const AcArray& other) {
    mData.insert(mData.end(), other.mData.begin(), other.mData.end());
    return *this;
  }
  AcArray& insertAt(int i, const T& value) { mData.insert(mData.begin() + i, value); return *this; }
  AcArray& removeAt(int i) { mData.erase(mData.begin() + i); return *this; }
  bool remove(const T& value, int start = 0) {
    int i = 0;
    if (!find(value, i, start)) return false;
    removeAt(i);
    return true;
  }
  AcArray& removeFirst() { return removeAt(0); }
  AcArray& removeLast() { mData.pop_back(); return *this; }
  AcArray& removeAll() { mData.clear(); return *this; }
  AcArray& removeSubArray(int start, int end) {
    mData.erase(mData.begin() + start, mData.begin() + end + 1);
    return *this;
  }
  AcArray& setAt(int i, const T& value) { mData[static_cast<size_t>(i)] = value; return *this; }
  AcArray& setLogicalLength(int n) { mData.resize(static_cast<size_t>(n)); return *this; }
  AcArray& setPhysicalLength(int n) { mData.reserve(static_cast<size_t>(n)); return *this; }
  AcArray& reverse() { std::reverse(mData.begin(), mData.end()); return *this; }
  AcArray& swap(int i, int j) { std::swap(mData[i], mData[j]); return *this; }

  bool contains(const T& value, int start = 0) const { int i; return find(value, i, start); }
  bool find(const T& value, int& foundAt, int start = 0) const {
    for (int i = start; i < length(); ++i)
      if (mData[static_cast<size_t>(i)] == value) { foundAt = i; return true; }
    return false;
  }
  int find(const T& value) const { int i = -1; return find(value, i, 0) ? i : -1; }

  bool operator==(const AcArray& other) const { return mData == other.mData; }

  typename std::vector<T>::iterator begin() { return mData.begin(); }
  typename std::vector<T>::iterator end() { return mData.end(); }
  typename std::vector<T>::const_iterator begin() const { return mData.begin(); }
  typename std::vector<T>::const_iterator end() const { return mData.end(); }

 private:
  std::vector<T> mData;
};

class AcGePoint3d;
class AcGePoint2d;
typedef AcArray<AcGePoint3d> AcGePoint3dArray;
typedef AcArray<AcGePoint2d> AcGePoint2dArray;
typedef AcArray<double> AcGeDoubleArray;
