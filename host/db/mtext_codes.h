// The inline formatting codes of multiline text, and the plain text they
// leave.
#pragma once

#include <string>

namespace kelhost::db {

// The text a reader sees: \P (and the column and dimension-line breaks
// \N, \X) become newlines; \~ a space; \\ \{ \} their characters; groups
// { } and the codes \f \F \H \C \c \A \T \Q \W \p (each up to its ';') and
// \L \l \O \o \K \k disappear; a stacked \Sa^b; (or a/b, a#b) reads a/b;
// \U+XXXX is that character; %%c %%d %%p become the diameter, degree and
// plus-minus signs, %%% a percent sign and %%nnn the character nnn. An
// unknown code is kept as written.
std::wstring MTextPlainText(const std::wstring& contents);

}  // namespace kelhost::db
