#include "db/dimension_text.h"

#include <charconv>
#include <cmath>

#include "arx/acutads.h"
#include "arx/dbsymtb.h"

namespace kelhost::db {
namespace {

std::wstring Decimal(double value, int precision, int dimzin, wchar_t separator) {
  char buf[400];
  auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed, precision);
  std::string s = res.ec == std::errc() ? std::string(buf, res.ptr) : std::string("0");
  const bool negative = !s.empty() && s[0] == '-';
  if (negative) s.erase(0, 1);
  if ((dimzin & 8) && s.find('.') != std::string::npos) {
    while (s.back() == '0') s.pop_back();
    if (s.back() == '.') s.pop_back();
  }
  if ((dimzin & 4) && s.size() > 1 && s[0] == '0' && s[1] == '.') s.erase(0, 1);
  if (negative && s.find_first_not_of("0.") != std::string::npos) s.insert(s.begin(), '-');
  std::wstring out(s.begin(), s.end());
  for (wchar_t& c : out)
    if (c == L'.') c = separator;
  return out;
}

}  // namespace

std::wstring FormatLinearMeasurement(double value, const AcDbDimStyleTableRecord& style) {
  const double factor = style.real(144);
  if (factor != 0) value *= factor;
  const double round = style.real(45);
  if (round > 0) value = std::round(value / round) * round;
  int precision = style.integer(271);
  if (precision < 0) precision = 0;
  if (precision > 8) precision = 8;
  const int unit = style.integer(277);
  std::wstring number;
  if (unit >= 1 && unit <= 5 && unit != 2) {
    ACHAR buf[256] = L"";
    if (acutRToS(value, unit, precision, buf, 256) == RTNORM) number = buf;
  }
  if (number.empty()) {
    const int sep = style.integer(278);
    number = Decimal(value, precision, style.integer(78), sep > 0 ? static_cast<wchar_t>(sep) : L'.');
  }
  const std::wstring post = style.dimpost();
  const size_t at = post.find(L"<>");
  if (at != std::wstring::npos) return post.substr(0, at) + number + post.substr(at + 2);
  return number + post;
}

std::wstring DimensionTextWith(const std::wstring& own, const std::wstring& measured) {
  if (own.empty()) return measured;
  if (own == L" ") return L"";
  const size_t at = own.find(L"<>");
  if (at == std::wstring::npos) return own;
  return own.substr(0, at) + measured + own.substr(at + 2);
}

}  // namespace kelhost::db
