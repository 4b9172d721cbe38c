// The program for the terminal. This file has only what belongs to a process and not to a
// library: signals, standard streams, arguments.
#include "cli/Program.h"

#include <csignal>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>

namespace {

// A signal handler can only access a static variable.
volatile std::sig_atomic_t stopSignals = 0;

extern "C" void rememberSignal(int) {
    stopSignals = 1;
}

/// Ctrl-C is the Cancel button, also if pressed again: the run cleans up and ends.
void catchSignals() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction former {};
        // What the caller has ignored (as `nohup` does) stays ignored.
        if (sigaction(signal, nullptr, &former) == 0 && former.sa_handler == SIG_IGN) {
            continue;
        }
        struct sigaction action {};
        action.sa_handler = rememberSignal;
        sigemptyset(&action.sa_mask);
        sigaction(signal, &action, nullptr);
    }
    // A closed pipe and a file that grew too large are failed writes, which are reported,
    // and no reason to leave the working store on the disk.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

/// The descriptor of a stream that the caller has closed would go to the next file that is
/// opened, and output would end up there. It is occupied by a descriptor that refuses
/// writes.
void holdStandardStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            (void)open("/dev/null", O_RDONLY);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    holdStandardStreams();
    catchSignals();
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto status = kavu::cli::runProgram(arguments, kavu::Environment::ofProcess(),
                                              {std::cout, std::cerr, isatty(STDERR_FILENO) == 1},
                                              [] { return stopSignals != 0; });
    return static_cast<int>(status);
}
