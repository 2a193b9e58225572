// Notes signals (interrupt.h).

#include "interrupt.h"

#include <csignal>

#include "common/command.h"

namespace heron::spool {
namespace {

constexpr int kSignalExit = 128;  ///< a shell adds the signal's number to it

volatile std::sig_atomic_t caught = 0;

}  // namespace

void CatchInterrupts() {
  struct sigaction action {};
  action.sa_handler = [](int number) { caught = number; };  // without SA_RESTART, so that a question ends too
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaction(number, &action, nullptr);
}

void EndIfInterrupted() {
  if (caught != 0) throw cli::Failure(kSignalExit + caught, "interrupted; nothing was printed");
}

}  // namespace heron::spool
