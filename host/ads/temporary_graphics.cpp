#include "ads/temporary_graphics.h"

#include <map>

namespace kelhost::ads {
namespace {
std::vector<TemporaryVector>& Vectors() {
  static std::vector<TemporaryVector> vectors;
  return vectors;
}
std::map<int, std::wstring>& Texts() {
  static std::map<int, std::wstring> texts;
  return texts;
}
}  // namespace

void AddTemporaryVector(const TemporaryVector& v) { Vectors().push_back(v); }
const std::vector<TemporaryVector>& TemporaryVectors() { return Vectors(); }
void ClearTemporaryGraphics() { Vectors().clear(); }

void SetScreenText(int box, const std::wstring& text) { Texts()[box] = text; }
std::wstring ScreenText(int box) {
  auto it = Texts().find(box);
  return it == Texts().end() ? std::wstring() : it->second;
}

}  // namespace kelhost::ads
