// The one atomic file writer (see AtomicFile.h).
#include "platform/common/AtomicFile.h"

#include <signal.h>
#include <sys/types.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <fstream>
#include <mutex>
#include <set>
#include <utility>

namespace iras {

namespace fs = std::filesystem;

namespace {

FileFaultHook& FaultHook() {
    static FileFaultHook hook;
    return hook;
}

std::error_code Fault(FileStep step, const fs::path& target) {
    const FileFaultHook& hook = FaultHook();
    return hook ? hook(step, target) : std::error_code{};
}

std::string Reason(const std::error_code& error) { return error.message(); }

std::string_view PrefixOf(TemporaryKind kind) {
    return kind == TemporaryKind::Log ? kLogTemporaryFilePrefix : kTemporaryFilePrefix;
}

// A temporary name of ours (".iras-tmp-<pid>-<n>-<name>" or
// ".iras-log-<pid>-<n>-<name>") taken apart; writer 0 when the name is not
// one of ours.
struct TemporaryName {
    pid_t writer = 0;
    TemporaryKind kind = TemporaryKind::Scratch;
    std::string target;  // the name the file was to take
};

TemporaryName ParseTemporaryName(const std::string& name) {
    TemporaryName parsed;
    for (const TemporaryKind kind : {TemporaryKind::Scratch, TemporaryKind::Log}) {
        const std::string_view prefix = PrefixOf(kind);
        if (name.rfind(prefix, 0) != 0) continue;
        std::size_t at = prefix.size();
        pid_t pid = 0;
        const std::size_t digitsFrom = at;
        while (at < name.size() && name[at] >= '0' && name[at] <= '9' && at - digitsFrom < 10) {
            pid = pid * 10 + (name[at] - '0');
            ++at;
        }
        if (at == digitsFrom || at >= name.size() || name[at] != '-') return parsed;
        // The counter, then the target's name.
        const std::size_t counterEnd = name.find('-', at + 1);
        parsed.writer = pid;
        parsed.kind = kind;
        if (counterEnd != std::string::npos) parsed.target = name.substr(counterEnd + 1);
        return parsed;
    }
    return parsed;
}

bool Running(pid_t pid) { return ::kill(pid, 0) == 0 || errno == EPERM; }

// Where the log a killed run was writing is kept, visible beside the log:
// "IRASSubmissionLogFile-killed-4711.txt".
fs::path KilledLogPath(const fs::path& folder, const std::string& target, pid_t writer) {
    const fs::path name = target.empty() ? fs::path("log.txt") : fs::path(target);
    const std::string stem = name.stem().string() + "-killed-" + std::to_string(writer);
    fs::path kept = folder / (stem + name.extension().string());
    for (int n = 2; fs::exists(kept); ++n) kept = folder / (stem + "-" + std::to_string(n) + name.extension().string());
    return kept;
}

// Marks folder as cleaned in this process; false when it already was.
bool MarkCleaned(const fs::path& folder) {
    static std::mutex guard;
    static std::set<fs::path> cleaned;
    std::error_code error;
    const fs::path key = fs::weakly_canonical(folder, error);
    const std::lock_guard<std::mutex> lock(guard);
    return cleaned.insert(error ? folder : key).second;
}

}  // namespace

fs::path TemporaryPathBeside(const fs::path& target, TemporaryKind kind) {
    static std::atomic<unsigned> counter{0};
    fs::path folder = target.parent_path();
    if (folder.empty()) folder = ".";
    // Each folder is cleaned once per process, before this process's first
    // temporary file there (unless its caller cleaned it already).
    if (MarkCleaned(folder)) RemoveStaleTemporaryFiles(folder);
    return folder / (std::string(PrefixOf(kind)) + std::to_string(::getpid()) + "-" +
                     std::to_string(counter.fetch_add(1)) + "-" + target.filename().string());
}

void SetFileFaultForTesting(FileFaultHook hook) { FaultHook() = std::move(hook); }

StaleTemporaryFiles RemoveStaleTemporaryFiles(const fs::path& folder) {
    MarkCleaned(folder);
    StaleTemporaryFiles stale;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        const TemporaryName parsed = ParseTemporaryName(name);
        if (parsed.writer <= 0 || parsed.writer == ::getpid() || Running(parsed.writer)) continue;
        std::error_code ignored;
        if (!entry->is_regular_file(ignored)) continue;
        if (parsed.kind == TemporaryKind::Log) {
            const fs::path kept = KilledLogPath(folder, parsed.target, parsed.writer);
            fs::rename(entry->path(), kept, ignored);
            if (!ignored) stale.logsKept.push_back(kept.filename().string());
        } else if (fs::remove(entry->path(), ignored)) {
            stale.removed.push_back(name);
        }
    }
    return stale;
}

std::string WriteFileAtomically(const fs::path& target, const std::function<void(std::ostream&)>& write) {
    const fs::path temporary = TemporaryPathBeside(target);
    std::string reason;
    if (const std::error_code fault = Fault(FileStep::Create, target)) return Reason(fault);
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        if (!out) return Reason(std::error_code(errno, std::generic_category()));
        write(out);
        out.flush();
        if (!out) {
            reason = Reason(std::error_code(errno, std::generic_category()));
        } else if (const std::error_code fault = Fault(FileStep::Write, target)) {
            reason = Reason(fault);
        }
    }
    if (reason.empty()) {
        std::error_code renameError = Fault(FileStep::Rename, target);
        if (!renameError) fs::rename(temporary, target, renameError);
        if (!renameError) return "";
        reason = Reason(renameError);
    }
    std::error_code ignored;
    fs::remove(temporary, ignored);
    return reason.empty() ? "the file could not be written" : reason;
}

std::error_code FileFault(FileStep step, const fs::path& target) { return Fault(step, target); }

std::string MoveIntoPlace(const fs::path& temporary, const fs::path& target) {
    std::error_code error = Fault(FileStep::Write, target);
    if (!error) error = Fault(FileStep::Rename, target);
    if (!error) fs::rename(temporary, target, error);
    return error ? Reason(error) : "";
}

std::string WriteFileAtomically(const fs::path& target, std::string_view bytes) {
    return WriteFileAtomically(target, [bytes](std::ostream& out) {
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    });
}

std::string WriteLinesAtomically(const fs::path& target, const StringList& lines, std::string_view lineEnd) {
    return WriteFileAtomically(target, [&](std::ostream& out) {
        for (const auto& line : lines) {
            out.write(line.data(), static_cast<std::streamsize>(line.size()));
            out.write(lineEnd.data(), static_cast<std::streamsize>(lineEnd.size()));
        }
    });
}

}  // namespace iras
