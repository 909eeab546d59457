// Detached start by double fork: the first child makes a session of its own,
// forks the program and ends at once, so that we reap it at once and the
// program is adopted by the system (no zombie, never waited for). A pipe that
// closes on exec tells us whether the program was loaded: it reaches end of
// file when the exec succeeds, or carries the errno of the failure. Between
// fork and exec only async-signal-safe calls are made, since the caller may
// run threads (a Qt application does).

#include "components/DetachedProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

extern char** environ;

namespace iras {

std::vector<std::string> SplitCommandLine(std::string_view commandLine) {
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    bool quoted = false;
    for (const char c : commandLine) {
        if (c == '"') {
            quoted = !quoted;
            inWord = true;  // "" is an empty word of its own
        } else if (!quoted && (c == ' ' || c == '\t')) {
            if (inWord) words.push_back(std::move(word));
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord) words.push_back(std::move(word));
    return words;
}

namespace {

// Reports errno through the pipe and ends the child; async-signal-safe.
[[noreturn]] void Fail(int pipeWrite) {
    const int error = errno;
    [[maybe_unused]] const ssize_t written = write(pipeWrite, &error, sizeof error);
    _exit(127);
}

// The program's side of the double fork. Nothing here allocates.
[[noreturn]] void RunProgram(char* const* argv, int pipeWrite, int highestFd) {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    struct sigaction standard {};
    standard.sa_handler = SIG_DFL;
    sigaction(SIGPIPE, &standard, nullptr);
    sigaction(SIGCHLD, &standard, nullptr);

    const int null = open("/dev/null", O_RDWR);
    if (null < 0) Fail(pipeWrite);
    for (int fd = 0; fd <= 2; ++fd) {
        if (dup2(null, fd) < 0) Fail(pipeWrite);
    }
    if (null > 2) close(null);
    // Every other descriptor of the caller (its database, sockets) closes on
    // exec; the pipe does too, which is how the caller learns that it ran.
    if (close_range(3, ~0U, CLOSE_RANGE_CLOEXEC) != 0) {
        for (int fd = 3; fd <= highestFd; ++fd) fcntl(fd, F_SETFD, FD_CLOEXEC);
    }
    execve(argv[0], argv, environ);
    Fail(pipeWrite);
}

}  // namespace

std::string StartDetached(const std::vector<std::string>& arguments) {
    if (arguments.empty() || arguments.front().empty()) return "No program was named to start.";
    const std::string& program = arguments.front();

    // Everything the children need is made before the fork.
    std::vector<std::string> copies(arguments);
    std::vector<char*> argv;
    for (std::string& argument : copies) argv.push_back(argument.data());
    argv.push_back(nullptr);
    const long openMax = sysconf(_SC_OPEN_MAX);
    const int highestFd = openMax > 0 && openMax < 65536 ? static_cast<int>(openMax) - 1 : 65535;

    int pipeFds[2];
    if (pipe2(pipeFds, O_CLOEXEC) != 0) {
        return "The program " + program + " cannot be started: " + std::strerror(errno) + ".";
    }
    const pid_t child = fork();
    if (child < 0) {
        const int error = errno;
        close(pipeFds[0]);
        close(pipeFds[1]);
        return "The program " + program + " cannot be started: " + std::strerror(error) + ".";
    }
    if (child == 0) {
        close(pipeFds[0]);
        if (setsid() < 0) Fail(pipeFds[1]);
        const pid_t grandchild = fork();
        if (grandchild < 0) Fail(pipeFds[1]);
        if (grandchild == 0) RunProgram(argv.data(), pipeFds[1], highestFd);
        _exit(0);
    }

    close(pipeFds[1]);
    // The first child ends right after its fork. A caller that ignores
    // SIGCHLD has it reaped already (ECHILD), which is as good.
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    int error = 0;
    ssize_t got = 0;
    do {
        got = read(pipeFds[0], &error, sizeof error);
    } while (got < 0 && errno == EINTR);
    close(pipeFds[0]);
    if (got == static_cast<ssize_t>(sizeof error)) {
        if (error == ENOENT) return "The program " + program + " does not exist.";
        return "The program " + program + " cannot be started: " + std::strerror(error) + ".";
    }
    return "";
}

}  // namespace iras
