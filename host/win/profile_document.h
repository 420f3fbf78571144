// An INI (private-profile) file held as its lines, so that edits keep
// everything else of the file (comments, blank lines, order, spelling).
// Lookups follow the Windows rules: section and key names compared without
// regard to case, the first of duplicate sections and keys wins, values
// trimmed of blanks with one pair of matching quotes removed, comment lines
// (';' or '#') and lines without '=' ignored by key reads.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kelhost {
class ProfileDocument {
 public:
  // Decodes UTF-8 (with or without a byte-order mark) or UTF-16 LE/BE
  // (with a mark); any bytes are accepted, bad sequences become U+FFFD.
  static ProfileDocument Parse(const std::string& bytes);
  // UTF-8 without a mark, with the line ending the file had (LF if none).
  std::string Serialize() const;
  bool IsEmpty() const { return mLines.empty(); }

  // Non-empty section names in file order, each name once.
  std::vector<std::wstring> SectionNames() const;
  bool HasSection(const std::wstring& section) const;
  // Keys of the section with their values (trimmed, unquoted), file order,
  // first of duplicate keys only.
  std::vector<std::pair<std::wstring, std::wstring>> Entries(const std::wstring& section) const;
  // The section's key lines as "key=value" with blanks around '=' and at
  // the ends removed (quotes kept), as GetPrivateProfileSection gives them.
  std::vector<std::wstring> EntryLines(const std::wstring& section) const;
  bool Find(const std::wstring& section, const std::wstring& key, std::wstring& value) const;

  // Replaces the first matching key's line, or adds the key after the
  // section's last key line, or adds the section at the end.
  void Set(const std::wstring& section, const std::wstring& key, const std::wstring& value);
  // Adds an empty section at the end unless it exists; true when added.
  bool AddSection(const std::wstring& section);
  // False when there was nothing to delete.
  bool DeleteKey(const std::wstring& section, const std::wstring& key);
  // Removes the header and every line up to the next section.
  bool DeleteSection(const std::wstring& section);

  // Trimming and quote removal of a value as a key read returns it.
  static std::wstring UnquoteValue(const std::wstring& rawValue);

  // Whether a section, key (null: the whole section) and value (null: no
  // value) can be written so that they read back the same. Names that a
  // read would trim, split at '=' or take for a comment or a header, and
  // any line break, cannot: false with the reason. A value that a read
  // would trim or unquote is stored in double quotes (the platform's own
  // reads remove one pair): stored is the text to write.
  static bool Storable(const std::wstring& section, const wchar_t* key, const wchar_t* value, std::wstring& stored,
                       std::wstring& why);

 private:
  enum class Kind { kBlank, kComment, kSection, kEntry, kOther };
  struct Line {
    std::wstring text;
    Kind kind = Kind::kBlank;
    std::wstring name;      // section name or key, trimmed
    std::wstring rawValue;  // entry value, trimmed, quotes kept
  };
  static Line Classify(const std::wstring& text);
  // Index of the first header of section, or npos; the section's lines
  // run from header + 1 to end (exclusive).
  size_t FindSection(const std::wstring& section, size_t& end) const;
  size_t FindKey(size_t header, size_t end, const std::wstring& key) const;

  std::vector<Line> mLines;
  bool mCrlf = false;
};
}  // namespace kelhost
