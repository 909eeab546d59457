// The one atomic file writer (see AtomicFile.h).
#include "platform/common/AtomicFile.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <fstream>
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

}  // namespace

fs::path TemporaryPathBeside(const fs::path& target) {
    static std::atomic<unsigned> counter{0};
    fs::path folder = target.parent_path();
    if (folder.empty()) folder = ".";
    return folder / (std::string(kTemporaryFilePrefix) + std::to_string(::getpid()) + "-" +
                     std::to_string(counter.fetch_add(1)) + "-" + target.filename().string());
}

void SetFileFaultForTesting(FileFaultHook hook) { FaultHook() = std::move(hook); }

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
