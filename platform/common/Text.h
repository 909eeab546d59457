// Small text helpers shared by the layers: ASCII case folding for names that
// SQL and the payroll compare without regard to case, and trimming of the
// blanks and line breaks around SQL texts and keys. Bytes beyond ASCII (the
// parts of a UTF-8 character) are never changed.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace iras {

std::string AsciiLower(std::string_view text);
std::string AsciiUpper(std::string_view text);

// True when the two texts are equal once ASCII letters are folded to one case.
bool SameIgnoringCase(std::string_view a, std::string_view b);

// text without the blanks, tabs, carriage returns and line feeds around it.
std::string TrimSpace(std::string_view text);

// Characters, not bytes, of a UTF-8 text: IRAS counts what the user typed.
std::size_t CharacterCount(std::string_view utf8);

// True when value is one of the choices (exact, letter case included).
bool IsOneOf(std::string_view value, std::initializer_list<std::string_view> choices);

}  // namespace iras
