// Reads a secret from a file or from a terminal without echo. Never from an argument or the environment, which other
// users and the shell's history can see.
#pragma once

#include <string>

namespace heron::cli {

/// The content of a file without the line end behind it. `what` names the secret; the path isn't repeated in a message,
/// as a secret may have been written in its place. Throws exit code 5 or 6 for a file that isn't there or may not be
/// read, 4 for one that is too long to be a secret.
std::string ReadSecretFile(const std::string& what, const std::string& path);

/// Asks for `what` on the terminal, twice, without an echo; without a terminal the next line of standard input. Throws
/// exit code 1 if there is none, 2 if the two aren't equal.
std::string AskSecret(const std::string& what);

}  // namespace heron::cli
