// The arrows between the folders point down only: the programs and the form
// (apps/, frontend/, components/) may use the returns and the platform, a
// return uses the shared submission code and the platform, and the platform
// uses nothing above it. No return reaches into another return, and a
// return's folder is entered from above only by the job factory (and its
// options header by the runs that fill it). The test reads every #include of
// the source tree, so a wrong arrow fails the build's tests, not a review.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Include {
    std::string from;  // the including file, relative to the source root
    std::string to;    // the included project header, as written
    int line;
};

std::vector<Include> ProjectIncludes() {
    const fs::path root = IRAS_SOURCE_ROOT;
    const std::regex include(R"re(^\s*#\s*include\s+"([^"]+)")re");
    std::vector<Include> found;
    for (const char* top : {"apps", "frontend", "components", "platform", "submission"}) {
        if (!fs::exists(root / top)) continue;
        for (const auto& entry : fs::recursive_directory_iterator(root / top)) {
            const std::string ext = entry.path().extension().string();
            if (!entry.is_regular_file() || (ext != ".cpp" && ext != ".h")) continue;
            std::ifstream in(entry.path());
            std::string text;
            int number = 0;
            std::smatch match;
            while (std::getline(in, text)) {
                ++number;
                if (std::regex_search(text, match, include)) {
                    found.push_back({fs::relative(entry.path(), root).generic_string(), match[1].str(), number});
                }
            }
        }
    }
    return found;
}

bool StartsWith(const std::string& text, const std::string& prefix) { return text.rfind(prefix, 0) == 0; }

// "submission/ir8a" for "submission/ir8a/IR8ALayout.h"; "" outside the return folders.
std::string ReturnFolder(const std::string& path) {
    if (!StartsWith(path, "submission/") || StartsWith(path, "submission/common/")) return "";
    return path.substr(0, path.find('/', std::string("submission/").size()));
}

// 0 platform, 1 shared submission code, 2 a return, 3 programs, form and components.
int Layer(const std::string& path) {
    if (StartsWith(path, "platform/")) return 0;
    if (StartsWith(path, "submission/common/")) return 1;
    if (StartsWith(path, "submission/")) return 2;
    return 3;
}

// Why the arrow is wrong, or "" when it is allowed.
std::string Wrong(const Include& include) {
    const std::string& from = include.from;
    const std::string& to = include.to;
    if (!StartsWith(to, "apps/") && !StartsWith(to, "frontend/") && !StartsWith(to, "components/") &&
        !StartsWith(to, "platform/") && !StartsWith(to, "submission/")) {
        return "";  // a file of the folder itself or a system header
    }
    if (StartsWith(to, "tests/")) return "code includes a test header";
    const std::string fromReturn = ReturnFolder(from), toReturn = ReturnFolder(to);
    if (!toReturn.empty() && fromReturn != toReturn) {
        if (!fromReturn.empty()) return "one return reaches into another";
        const bool factory = from == "apps/run/JobFactory.cpp";
        const bool options = StartsWith(from, "apps/") && to.size() > 9 && to.substr(to.size() - 9) == "Options.h";
        if (!factory && !options) return "a return is entered from above other than by the job factory";
    }
    if (Layer(to) > Layer(from) && !(Layer(from) == 2 && Layer(to) == 2)) return "the arrow points up";
    if (StartsWith(from, "apps/run/") && StartsWith(to, "frontend/")) return "the runs know nothing of the form";
    return "";
}

TEST(Layering, EveryIncludePointsDownAndNoReturnReachesIntoAnother) {
    const std::vector<Include> includes = ProjectIncludes();
    ASSERT_GT(includes.size(), 100u) << "the source tree was not found at " << IRAS_SOURCE_ROOT;
    for (const Include& include : includes) {
        const std::string why = Wrong(include);
        EXPECT_TRUE(why.empty()) << include.from << ":" << include.line << " includes " << include.to << ": " << why;
    }
}

TEST(Layering, TheRuleCatchesTheWrongArrows) {
    const std::vector<std::pair<Include, bool>> cases = {
        {{"submission/ir8s/RIR8SeSubmission.cpp", "submission/ir8a/IR8AFields.h", 1}, false},
        {{"submission/ir8s/RIR8SeSubmission.cpp", "apps/run/FileType.h", 1}, false},
        {{"platform/host/ReferenceEngine.cpp", "submission/common/RunLogs.h", 1}, false},
        {{"submission/common/RYESubmissionJob.cpp", "submission/ir8a/IR8ALayout.h", 1}, false},
        {{"apps/run/RunController.cpp", "submission/ir8a/RIR8AeSubmission.h", 1}, false},
        {{"apps/run/JobFactory.cpp", "submission/ir8a/RIR8AeSubmission.h", 1}, true},
        {{"apps/run/JobFactory.h", "submission/ir8s/IR8SOptions.h", 1}, true},
        {{"submission/ir8s/IR8SDetails.cpp", "submission/ir8s/IR8SLayout.h", 1}, true},
        {{"submission/a8b/A8BDetails.cpp", "submission/common/AmountFields.h", 1}, true},
        {{"frontend/TIRASeSubmissionFrontend_Form.cpp", "apps/run/RunController.h", 1}, true},
        {{"apps/run/RunController.cpp", "frontend/TForm_CRProgressBar.h", 1}, false},
    };
    for (const auto& [include, allowed] : cases) {
        EXPECT_EQ(Wrong(include).empty(), allowed) << include.from << " -> " << include.to;
    }
}

}  // namespace
