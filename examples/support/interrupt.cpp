#include "interrupt.h"

#include <atomic>
#include <csignal>

namespace support {
namespace {

constexpr int kNoted[] = {SIGINT, SIGTERM, SIGHUP};
std::atomic<int> gSignal = 0;
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler sets it");

void Note(int signal) { gSignal = signal; }

// Without SA_RESTART, so that a wait for input ends too.
void Handle(int signal, void (*handler)(int), int flags) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = flags;
  sigaction(signal, &action, nullptr);
}

}  // namespace

Interrupt::Interrupt() {
  for (const int signal : kNoted) Handle(signal, Note, static_cast<int>(SA_RESETHAND));
  Handle(SIGPIPE, SIG_IGN, 0);
}

Interrupt::~Interrupt() {
  for (const int signal : kNoted) Handle(signal, SIG_DFL, 0);
  Handle(SIGPIPE, SIG_DFL, 0);
}

bool Interrupt::QueryCancel() { return gSignal != 0; }

void Interrupt::Check() {
  if (const int signal = gSignal) throw Interrupted(signal);
}

}  // namespace support
