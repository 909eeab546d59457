// Texts, codes and rights of the six file types.
#include "apps/run/FileType.h"

namespace iras {

namespace {

struct FileTypeInfo {
    const char* text;
    const char* code;
    const char* moduleId;
    const char* option;
};

constexpr std::array<FileTypeInfo, 6> kInfo = {{
    {"Current IR8A", "CurIR8A", "YEDirectCurIR8ARpt", "cur-ir8a"},
    {"Supplementary IR8A", "SupIR8A", "YEDirectSupIR8ARpt", "sup-ir8a"},
    {"IR8S", "IR8S", "YEDirectIR8SRpt", "ir8s"},
    {"Appendix 8A", "A8A", "YEDirectA8ARpt", "a8a"},
    {"Appendix 8B", "A8B", "YEDirectA8BRpt", "a8b"},
    {"All", "", "", "all"},
}};

const FileTypeInfo& InfoOf(FileType type) { return kInfo.at(static_cast<std::size_t>(type)); }

}  // namespace

std::string FileTypeText(FileType type) { return InfoOf(type).text; }
std::string SubmissionTypeCode(FileType type) { return InfoOf(type).code; }
std::string ReturnModuleId(FileType type) { return InfoOf(type).moduleId; }
std::string FileTypeOption(FileType type) { return InfoOf(type).option; }

std::optional<FileType> FileTypeFromOption(std::string_view option) {
    for (std::size_t i = 0; i < kInfo.size(); ++i) {
        if (option == kInfo[i].option) return static_cast<FileType>(i);
    }
    return std::nullopt;
}

}  // namespace iras
