// Starts a program many times over, one after the other: starts COUNT PROGRAM.
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

int main(int count, char** arguments) {
    if (count != 3) return 2;
    for (int i = std::atoi(arguments[1]); i > 0; --i) {
        pid_t child = 0;
        int status = 0;
        if (posix_spawn(&child, arguments[2], nullptr, nullptr, arguments + 2, environ) != 0 ||
            waitpid(child, &status, 0) != child || status != 0)
            return 1;
    }
    return 0;
}
