// Feeds arbitrary bytes to the DXF reader: it must never crash or leak,
// a refusal must name a line, and whatever it accepts must write out and
// read back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "arx/dbdatabase.h"
#include "dxf/dxf_file.h"

namespace {
void Check(bool ok) {
  if (!ok) std::abort();
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::wstring error;
  std::string written;
  {
    AcDbDatabase db(false, true);
    if (!kelhost::dxf::ReadDxf(bytes, &db, error)) {
      Check(error.compare(0, 5, L"line ") == 0);
      return 0;
    }
    Check(kelhost::dxf::WriteDxf(&db, written, error));
  }
  AcDbDatabase again(false, true);
  Check(kelhost::dxf::ReadDxf(written, &again, error));
  return 0;
}
