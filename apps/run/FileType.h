// The six choices of the "File Type" list and what each one stands for: its
// text as the list shows it, the submission type code that the engine and the
// LastSubmission table know it by, and the module id of the user right that
// guards it. The list's order (index 0-5) is used throughout the runs.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace iras {

enum class FileType : int {
    CurrentIR8A = 0,
    SupplementaryIR8A = 1,
    IR8S = 2,
    Appendix8A = 3,
    Appendix8B = 4,
    All = 5,
};

// The five returns in the order the "All" run builds, validates and processes them.
inline constexpr std::array<FileType, 5> kReturnTypes = {
    FileType::CurrentIR8A, FileType::SupplementaryIR8A, FileType::IR8S,
    FileType::Appendix8A,  FileType::Appendix8B,
};

// "Current IR8A", "Supplementary IR8A", "IR8S", "Appendix 8A", "Appendix 8B", "All".
std::string FileTypeText(FileType type);

// "CurIR8A", "SupIR8A", "IR8S", "A8A", "A8B"; "" for All, which has no single code.
std::string SubmissionTypeCode(FileType type);

// "YEDirectCurIR8ARpt" ... "YEDirectA8BRpt"; "" for All (it needs all five).
std::string ReturnModuleId(FileType type);

// The command-line names: "cur-ir8a", "sup-ir8a", "ir8s", "a8a", "a8b", "all".
std::string FileTypeOption(FileType type);
std::optional<FileType> FileTypeFromOption(std::string_view option);

// The right that opens the module at all.
inline const std::string kModuleRightId = "YEIRASDirect";

}  // namespace iras
