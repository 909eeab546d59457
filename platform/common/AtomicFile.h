// Every file this system writes (return files, summaries, logs, copies) is
// written to a temporary file beside its target and renamed over it only when
// complete, so that a full disk, a refused folder or a killed run never leaves
// half a file under the name the user or IRAS will read.
//
// The three steps that can fail (making the temporary file, writing it,
// renaming it) go through one seam that a test can make fail, so that the
// handling of a full disk or an unwritable folder is tested, not assumed.
#pragma once

#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/common/LogSink.h"

namespace iras {

enum class FileStep { Create, Write, Rename };

// Answers an error for a step to make it fail, or an empty error_code to let
// it run. nullptr restores the real file system.
using FileFaultHook = std::function<std::error_code(FileStep step, const std::filesystem::path& target)>;
void SetFileFaultForTesting(FileFaultHook hook);

// The temporary files of this system start with one of these texts, so that
// what a killed run left behind can be told from the user's own files:
// ".iras-tmp-" for files that are worth nothing until they are whole (return
// files, summaries), ".iras-log-" for logs, which tell what a killed run did.
inline constexpr std::string_view kTemporaryFilePrefix = ".iras-tmp-";
inline constexpr std::string_view kLogTemporaryFilePrefix = ".iras-log-";

enum class TemporaryKind { Scratch, Log };

// A new temporary file name beside target: the prefix of its kind, the
// process id, a counter of the process and the target's own name. The first
// name in a folder cleans that folder of what ended runs left there
// (RemoveStaleTemporaryFiles).
std::filesystem::path TemporaryPathBeside(const std::filesystem::path& target,
                                          TemporaryKind kind = TemporaryKind::Scratch);

struct StaleTemporaryFiles {
    std::vector<std::string> removed;   // names of the files removed
    std::vector<std::string> logsKept;  // names the logs of killed runs now have
};

// Cleans folder of the temporary files of this system left by a process that
// is no longer running (a killed run): their names carry the writer's process
// id, and a file of a live process (a run going on beside this one) is never
// touched. A killed run's scratch files are removed; its logs are kept under a
// visible name beside the log ("IRASSubmissionLogFile-killed-4711.txt"), so
// that the next run neither loses them nor leaves them hidden. A folder
// cleaned so is not cleaned again by TemporaryPathBeside in this process.
StaleTemporaryFiles RemoveStaleTemporaryFiles(const std::filesystem::path& folder);

// Writes to target what write puts into the stream (a stream error counts as
// a failure), through a temporary file beside it. "" when the file is in
// place, else the reason ("No space left on device"); on failure the target
// is as it was and no temporary file stays behind.
std::string WriteFileAtomically(const std::filesystem::path& target,
                                const std::function<void(std::ostream&)>& write);

// Writes bytes to target. "" when the file is in place, else the reason
// ("No space left on device"); on failure the target is as it was and no
// temporary file stays behind.
std::string WriteFileAtomically(const std::filesystem::path& target, std::string_view bytes);

// Gives a finished temporary file (TemporaryPathBeside(target)) the target's
// name, through the same seam as the writes above. "" when the file is in
// place, else the reason; on failure the temporary file stays for the caller.
std::string MoveIntoPlace(const std::filesystem::path& temporary, const std::filesystem::path& target);

// Nothing, or the error that the test seam makes the step on target fail with.
std::error_code FileFault(FileStep step, const std::filesystem::path& target);

// The lines, each followed by lineEnd (CR LF for return files, "\n" for logs
// and summaries), written as WriteFileAtomically does.
std::string WriteLinesAtomically(const std::filesystem::path& target, const StringList& lines,
                                 std::string_view lineEnd);

}  // namespace iras
