// Settings records as files: read with every declared size checked, written whole or not at all.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace heron::cli {

using Bytes = std::vector<uint8_t>;

/// Reads the record in `path` ("-": standard input). The result holds exactly the dmSize + dmDriverExtra bytes that it
/// declares, at least 72. A file that is shorter, longer or over 64 KiB ends the command.
Bytes ReadRecord(const std::string& path);

/// Writes `bytes` to `path` ("-": standard output). A regular file is replaced whole, readable by its owner only: a
/// record may hold passwords. A device or pipe is written to as it stands.
void WriteRecord(const std::string& path, const Bytes& bytes);

/// Replaces or makes the file `path`, whole or not at all, readable by its owner only.
void ReplaceFile(const std::string& path, const Bytes& bytes);

/// The user's own working record of the queue `printer`; empty if there is none yet.
Bytes OwnRecord(const std::string& printer);
/// Makes `record` that; readable by its owner only.
void KeepOwnRecord(const std::string& printer, const Bytes& record);

}  // namespace heron::cli
