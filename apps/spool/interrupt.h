// Ctrl-C and similar signals: the handler only records the signal, and the job ends at its next step, with an event to
// the driver and nothing left behind.
#pragma once

namespace heron::spool {

/// From now on SIGINT, SIGTERM and SIGHUP are noted. Calls of the system that wait return with EINTR.
void CatchInterrupts();

/// Throws the Failure of a job that was interrupted, with the exit code that a shell gives a program which the signal
/// ended (130 for Ctrl-C); returns if there was none.
void EndIfInterrupted();

}  // namespace heron::spool
