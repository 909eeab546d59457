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

fs::path TemporaryBeside(const fs::path& target) {
    static std::atomic<unsigned> counter{0};
    fs::path folder = target.parent_path();
    if (folder.empty()) folder = ".";
    return folder / (std::string(kTemporaryFilePrefix) + std::to_string(::getpid()) + "-" +
                     std::to_string(counter.fetch_add(1)) + "-" + target.filename().string());
}

std::string Reason(const std::error_code& error) { return error.message(); }

// The writer's process id in a temporary name (".iras-tmp-<pid>-<n>-<name>"),
// or 0 when the name is not one of ours.
pid_t WriterOf(const std::string& name) {
    if (name.rfind(kTemporaryFilePrefix, 0) != 0) return 0;
    std::size_t at = kTemporaryFilePrefix.size();
    pid_t pid = 0;
    const std::size_t digitsFrom = at;
    while (at < name.size() && name[at] >= '0' && name[at] <= '9' && at - digitsFrom < 10) {
        pid = pid * 10 + (name[at] - '0');
        ++at;
    }
    if (at == digitsFrom || at >= name.size() || name[at] != '-') return 0;
    return pid;
}

bool Running(pid_t pid) { return ::kill(pid, 0) == 0 || errno == EPERM; }

// Each folder is cleaned once per process, before this process's first write.
void CleanOnce(const fs::path& folder) {
    static std::mutex guard;
    static std::set<fs::path> cleaned;
    std::error_code error;
    const fs::path key = fs::weakly_canonical(folder, error);
    {
        const std::lock_guard<std::mutex> lock(guard);
        if (!cleaned.insert(error ? folder : key).second) return;
    }
    RemoveStaleTemporaryFiles(folder);
}

}  // namespace

void SetFileFaultForTesting(FileFaultHook hook) { FaultHook() = std::move(hook); }

std::vector<std::string> RemoveStaleTemporaryFiles(const fs::path& folder) {
    std::vector<std::string> removed;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        const pid_t writer = WriterOf(name);
        if (writer <= 0 || writer == ::getpid() || Running(writer)) continue;
        std::error_code ignored;
        if (!entry->is_regular_file(ignored)) continue;
        if (fs::remove(entry->path(), ignored)) removed.push_back(name);
    }
    return removed;
}

std::string WriteFileAtomically(const fs::path& target, const std::function<void(std::ostream&)>& write) {
    const fs::path temporary = TemporaryBeside(target);
    CleanOnce(temporary.parent_path());
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
