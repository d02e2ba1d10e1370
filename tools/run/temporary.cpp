// SPDX-License-Identifier: MIT

#include <tools/run/temporary.h>

#include <unistd.h>
#include <climits>
#include <csignal>
#include <cstring>

namespace tool {

namespace {

constexpr int endingSignals[] = {SIGHUP, SIGINT, SIGTERM, SIGPIPE, SIGXCPU, SIGXFSZ};

// The only data that the signal handler accesses.
char temporaryPath[PATH_MAX];
volatile std::sig_atomic_t hasTemporary = 0;

/// Calls only functions that are safe in a handler; the signal then has its usual effect.
extern "C" void removeAndEnd(int signal) {
  if (hasTemporary != 0) unlink(temporaryPath);
  std::signal(signal, SIG_DFL);
  raise(signal);
}

/// Signals that the caller of the program ignores stay ignored.
void catchSignals() {
  for (const int signal : endingSignals) {
    struct sigaction present {};
    if (sigaction(signal, nullptr, &present) != 0 || present.sa_handler != SIG_DFL) continue;
    struct sigaction action {};
    action.sa_handler = removeAndEnd;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
  }
}

}  // namespace

void rememberTemporary(const std::string& path) {
  hasTemporary = 0;
  if (path.size() >= sizeof temporaryPath) return;
  std::memcpy(temporaryPath, path.c_str(), path.size() + 1);
  hasTemporary = 1;
  catchSignals();
}

void forgetTemporary() noexcept { hasTemporary = 0; }

}  // namespace tool
