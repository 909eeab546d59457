// A fresh, empty folder per test under the system's temporary folder, named
// after the test program's process so that parallel test programs never meet.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <system_error>

namespace iras::testing {

// Made empty now; the caller removes it (or uses ScratchFolder).
inline std::filesystem::path UniqueTempFolder(const std::string& stem) {
    static std::atomic<int> counter{0};
    const auto folder = std::filesystem::temp_directory_path() /
                        (stem + "-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

// A UniqueTempFolder removed with everything in it by the destructor.
class ScratchFolder {
public:
    explicit ScratchFolder(const std::string& stem) : path_(UniqueTempFolder(stem)) {}
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

// The process id of a process that has ended, as a killed run's files carry.
inline pid_t DeadProcess() {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(0);
    int status = 0;
    ::waitpid(child, &status, 0);
    return child;
}

}  // namespace iras::testing
