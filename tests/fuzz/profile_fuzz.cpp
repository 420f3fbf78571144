// Feeds arbitrary bytes to the INI parser and checks that reading, editing
// and writing never crash and that what is written reads back the same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "win/profile_document.h"

namespace {
void Check(bool ok) {
  if (!ok) std::abort();
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using kelhost::ProfileDocument;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  ProfileDocument doc = ProfileDocument::Parse(bytes);

  // Every listed key reads back with the value the listing gave.
  for (const std::wstring& section : doc.SectionNames()) {
    Check(doc.HasSection(section));
    for (const auto& entry : doc.Entries(section)) {
      std::wstring value;
      Check(doc.Find(section, entry.first, value));
      Check(value == entry.second);
    }
    doc.EntryLines(section);
  }

  // Writing normalises once (encoding, line endings); after that it is a
  // fixed point.
  const std::string once = doc.Serialize();
  const std::string twice = ProfileDocument::Parse(once).Serialize();
  Check(ProfileDocument::Parse(twice).Serialize() == twice);

  // Edits keep the document readable and do what they say.
  const std::wstring section = doc.SectionNames().empty() ? L"S" : doc.SectionNames().front();
  doc.Set(section, L"fuzzkey", L"v");
  std::wstring value;
  Check(doc.Find(section, L"FUZZKEY", value) && value == L"v");
  Check(doc.DeleteKey(section, L"fuzzkey") || !doc.HasSection(section));
  Check(doc.DeleteSection(section));
  doc.Serialize();
  return 0;
}
