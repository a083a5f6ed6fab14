// measure COMMAND [ARGUMENT]...: runs a command. Then prints the command's CPU time and wall time
// in seconds, and its peak memory in KB, to standard error. What the command itself writes to
// standard error is dropped. The exit status is 1 if the command cannot be run or is killed by a
// signal.
//
// Until a child process executes its program, the kernel counts the memory of the parent as memory
// of the child. So this program must be small.

#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double now() {
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        return 2;
    }
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

    const double begin = now();
    pid_t process = 0;
    if (::posix_spawn(&process, argv[1], &actions, nullptr, argv + 1, environ) != 0) {
        std::perror(argv[1]);
        return 1;
    }
    int status = 0;
    rusage usage{};
    ::wait4(process, &status, 0, &usage);
    const double wall = now() - begin;

    std::fprintf(stderr, "%.6f %.6f %ld\n", seconds(usage.ru_utime) + seconds(usage.ru_stime), wall,
                 usage.ru_maxrss);
    return WIFEXITED(status) && WEXITSTATUS(status) != 127 ? 0 : 1;
}
