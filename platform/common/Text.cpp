// Case folding and trimming (see Text.h). std::tolower is not used on purpose:
// under a non-C locale it would fold bytes of UTF-8 names as well.
#include "platform/common/Text.h"

#include <algorithm>

namespace iras {
namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace

std::string AsciiLower(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), Lower);
    return result;
}

std::string AsciiUpper(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), Upper);
    return result;
}

bool SameIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return Lower(x) == Lower(y); });
}

std::string TrimSpace(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return "";
    const auto last = text.find_last_not_of(" \t\r\n");
    return std::string(text.substr(first, last - first + 1));
}

std::size_t CharacterCount(std::string_view utf8) {
    std::size_t count = 0;
    for (unsigned char c : utf8) {
        if ((c & 0xC0) != 0x80) ++count;
    }
    return count;
}

bool IsOneOf(std::string_view value, std::initializer_list<std::string_view> choices) {
    for (std::string_view choice : choices) {
        if (value == choice) return true;
    }
    return false;
}

}  // namespace iras
