#include <zrbasic/platform/appkit/detached_process_p.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

extern char** environ;

namespace zr::detail {

namespace {

/// Waits for a child, signals or not.
void waitFor(pid_t child) {
    while (waitpid(child, nullptr, 0) == -1 && errno == EINTR) {
    }
}

/// A pipe whose ends close when a program is run.
bool makePipe(int (&ends)[2]) {
#if defined(__linux__)
    return pipe2(ends, O_CLOEXEC) == 0;
#else
    if (pipe(ends) != 0) {
        return false;
    }
    fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    fcntl(ends[1], F_SETFD, FD_CLOEXEC);
    return true;
#endif
}

} // namespace

bool startDetached(const std::string& path) {
    int report[2];
    if (path.empty() || path.find('\0') != std::string::npos || !makePipe(report)) {
        return false;
    }
    // Other threads may hold locks, so from the fork on everything must be ready and only system calls are made.
    const char* const file = path.c_str();
    char* const arguments[] = {const_cast<char*>(file), nullptr};
    sigset_t none;
    sigemptyset(&none);
    const pid_t child = fork();
    if (child == 0) {
        setsid();
        // The child of a child that has ended is nobody's to wait for.
        const pid_t grandchild = fork();
        if (grandchild == 0) {
            sigprocmask(SIG_SETMASK, &none, nullptr);
            execve(file, arguments, environ);
        }
        if (grandchild <= 0) {
            const char failed = 1;
            (void)!write(report[1], &failed, 1);
        }
        _exit(0);
    }
    close(report[1]);
    char failed = 0;
    ssize_t count = -1;
    if (child > 0) {
        waitFor(child);
        // Ends without a byte when the program runs and the pipe has closed behind it.
        do {
            count = read(report[0], &failed, 1);
        } while (count == -1 && errno == EINTR);
    }
    close(report[0]);
    return count == 0;
}

} // namespace zr::detail
