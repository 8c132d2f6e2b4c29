// Runs a command and tells, on the last line of standard error, its processor time and
// its largest resident memory: measured COMMAND... A large parent's memory would count as
// that of the child until it has its own, so this program stays small.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    const pid_t child = fork();
    if (child == 0) {
        execvp(argv[1], argv + 1);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child) return 2;
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_usec);
    };
    std::fprintf(stderr, "\n%d %.6f %ld\n", WIFEXITED(status) ? WEXITSTATUS(status) : 127,
                 seconds(usage.ru_utime) + seconds(usage.ru_stime), usage.ru_maxrss);
    return 0;
}
