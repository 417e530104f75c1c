#include "platform/process.h"

#include <pthread.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <limits>

std::string HOST_NAME() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? std::string(name.data()) : std::string{};
}

std::uint64_t PROCESS_NUMBER() { return static_cast<std::uint64_t>(getpid()); }

bool PROCESS_IS_GONE(std::uint64_t number) {
    if (number == 0 || number > static_cast<std::uint64_t>(std::numeric_limits<pid_t>::max())) return true;
    return kill(static_cast<pid_t>(number), 0) != 0 && errno == ESRCH;
}

namespace {

sigset_t endingSignals;
void (*cleanUpBeforeEnd)() = nullptr;

void* waitForSignal(void*) {
    int signal = 0;
    if (sigwait(&endingSignals, &signal) != 0) return nullptr;
    cleanUpBeforeEnd();
    std::signal(signal, SIG_DFL);
    pthread_sigmask(SIG_UNBLOCK, &endingSignals, nullptr);
    std::raise(signal);
    return nullptr;
}

}  // namespace

void CLEAN_UP_BEFORE_SIGNALS_END(void (*cleanUp)()) {
    cleanUpBeforeEnd = cleanUp;
    sigemptyset(&endingSignals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) sigaddset(&endingSignals, signal);
    }
    // Blocked here and so in every thread to come, they wait for the one that takes them.
    pthread_sigmask(SIG_BLOCK, &endingSignals, nullptr);
    pthread_t thread{};
    if (pthread_create(&thread, nullptr, waitForSignal, nullptr) == 0) pthread_detach(thread);
    else pthread_sigmask(SIG_UNBLOCK, &endingSignals, nullptr);  // they end the process as ever
}
