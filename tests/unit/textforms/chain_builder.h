// Builds result-buffer chains node by node for the text-form tests. The
// builder owns its chain and releases it with acutRelRb.
#pragma once

#include <cstdlib>
#include <cstring>
#include <string>

#include "kelcad/kelcad.h"

class ChainBuilder {
 public:
  ChainBuilder() = default;
  ChainBuilder(const ChainBuilder&) = delete;
  ChainBuilder& operator=(const ChainBuilder&) = delete;
  ~ChainBuilder() { acutRelRb(mHead); }

  resbuf* head() const { return mHead; }

  ChainBuilder& Mark(int type) { return New(type), *this; }
  ChainBuilder& Real(int type, double value) { return New(type)->resval.rreal = value, *this; }
  ChainBuilder& Short(int type, short value) { return New(type)->resval.rint = value, *this; }
  ChainBuilder& Long(int type, int value) { return New(type)->resval.rlong = value, *this; }
  ChainBuilder& Name(int type, long long firstWord) { return New(type)->resval.rlname[0] = firstWord, *this; }
  ChainBuilder& Point(int type, double x, double y, double z = 0.0) {
    double* point = New(type)->resval.rpoint;
    point[0] = x;
    point[1] = y;
    point[2] = z;
    return *this;
  }
  // A null text leaves the node's string null.
  ChainBuilder& Str(int type, const wchar_t* text) {
    resbuf* rb = New(type);
    if (text != nullptr) acutNewString(text, rb->resval.rstring);
    return *this;
  }
  ChainBuilder& Binary(const std::string& bytes) {
    resbuf* rb = New(1004);
    rb->resval.rbinary.clen = static_cast<short>(bytes.size());
    rb->resval.rbinary.buf = static_cast<char*>(std::malloc(bytes.size()));
    std::memcpy(rb->resval.rbinary.buf, bytes.data(), bytes.size());
    return *this;
  }

 private:
  resbuf* New(int type) {
    resbuf* rb = acutNewRb(type);
    KEL::AppendRb(mHead, rb);
    return rb;
  }
  resbuf* mHead = nullptr;
};
