// What the tests of every return share: reading back a return file and its
// records, laying out an expected record from its 1-based positions, a
// submission engine that records its calls and answers as scripted, and a check that a layout table covers its record exactly.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/database/Query.h"
#include "platform/database/Schema.h"
#include "platform/host/BYESubmissionEngine.h"
#include "submission/common/RecordLayout.h"
#include "tests/support/ScratchFolder.h"

namespace iras::testing {

inline std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The records of a return file, split at CR LF; a last record without one fails.
inline std::vector<std::string> Records(const std::string& bytes) {
    std::vector<std::string> records;
    for (std::size_t start = 0, end; start < bytes.size(); start = end + 2) {
        end = bytes.find("\r\n", start);
        if (end == std::string::npos) { ADD_FAILURE() << "last record is not ended by CR LF"; break; }
        records.push_back(bytes.substr(start, end - start));
    }
    return records;
}

// A record of width blanks with texts at 1-based positions, as the layout
// tables give them.
inline std::string RecordOf(int width, std::initializer_list<std::pair<int, std::string>> fields) {
    std::string record(static_cast<std::size_t>(width), ' ');
    for (const auto& [position, text] : fields) record.replace(position - 1, text.size(), text);
    return record;
}

// Positions first to last (1-based, inclusive) of a record.
inline std::string Span(const std::string& record, int first, int last) {
    return record.substr(first - 1, last - first + 1);
}

// The fields, in any order, cover positions first..last exactly once each: no
// gap, no overlap, nothing outside. An off-by-one in a table shows here.
inline void ExpectFieldsTile(std::vector<RecordField> fields, int first, int last) {
    std::sort(fields.begin(), fields.end(),
              [](const RecordField& a, const RecordField& b) { return a.start < b.start; });
    int next = first;
    for (const RecordField& field : fields) {
        EXPECT_EQ(field.start, next) << "a field of width " << field.width << " starts at " << field.start
                                     << " where position " << next << " was expected";
        next = field.start + field.width;
    }
    EXPECT_EQ(next - 1, last) << "the fields end at " << next - 1;
}

// Makes a new payroll database at path (schema and keyword codes, and the
// sample data when asked) and reaches it as "kovadb"; the caller
// unregisters the alias when done.
inline void OpenPayroll(const std::filesystem::path& path, bool withSampleData) {
    db::CreateDatabase(path, withSampleData);
    db::ConnectionRegistry::Register("kovadb", {"sqlite", path.string(), false});
}

// Records every call in order ("SubmitRecords(true, false)") and answers as scripted.
struct RecordingEngine : BYESubmissionEngine {
    struct Script {
        std::vector<std::string> calls;
        int generate = 1, execute = 1, submit = 1;
        bool errors = false, warnings = false;
        std::function<void(int, const std::string&, const std::string&)> buildViews;
    };
    explicit RecordingEngine(std::shared_ptr<Script> s) : script(std::move(s)) {}
    void Call(const std::string& line) { script->calls.push_back(line); }
    static std::string B(bool b) { return b ? "true" : "false"; }

    void SetYEYear(int y) override { year = y, Call("SetYEYear(" + std::to_string(y) + ")"); }
    void SetYEEmployerId(const std::string& id) override { employer = id, Call("SetYEEmployerId(" + id + ")"); }
    void SetYESubmissionType(const std::string& t) override { type = t, Call("SetYESubmissionType(" + t + ")"); }
    void SetYEIgnoreChanges(bool b) override { Call("SetYEIgnoreChanges(" + B(b) + ")"); }
    void SetIsDirectSubmit(bool b) override { Call("SetIsDirectSubmit(" + B(b) + ")"); }
    void SetSubmitUserIDType(const std::string& t) override { Call("SetSubmitUserIDType(" + t + ")"); }
    void SetSubmitUserID(const std::string& id) override { Call("SetSubmitUserID(" + id + ")"); }
    void SetSubmitReportPath(const std::string& p) override { Call("SetSubmitReportPath(" + p + ")"); }
    int GenerateViewTables() override {
        Call("GenerateViewTables()");
        if (script->generate != 0 && script->buildViews) script->buildViews(year, employer, type);
        return script->generate;
    }
    int ExecuteDirectSubmit(const std::string& file, const std::string& form, int validateOnly) override {
        Call("ExecuteDirectSubmit(" + file + ", " + form + ", " + std::to_string(validateOnly) + ")");
        return script->execute;
    }
    bool HasErrors() const override { return script->errors; }
    bool HasWarnings() const override { return script->warnings; }
    void DirectSubmitAppendLog(LogSink* memo, const std::string& name) override {
        Call("DirectSubmitAppendLog(" + name + ")");
        memo->Append("engine record for " + name);
    }
    int SubmitRecords(bool original, bool allRun) override {
        Call("SubmitRecords(" + B(original) + ", " + B(allRun) + ")");
        return script->submit;
    }
    int CopyRecords(int, int) override { return 1; }

    std::shared_ptr<Script> script;
    int year = 0;
    std::string employer, type;
};

}  // namespace iras::testing
