// Lists of printers as files, for `heron printer add --from`.
#pragma once

#include <string>
#include <vector>

namespace heron::cli {

inline constexpr const char* kDriverName = "Varnell 70/36MX-2 PCL";

/// What a list says of one printer; what it leaves out is as without a list.
struct PrinterRow {
  std::string name;
  std::string server;
  std::string port = "FILE:";
  std::string driver = kDriverName;
  std::string data_file;
  std::string identity;
};

/// How a list looks, for --help.
extern const char* const kPrinterListHelp;

/// Reads the list in `path` ("-": standard input): JSON, as `heron printer list --json` prints it or the array alone,
/// or CSV whose first line names the columns. Ends the command for a list that can't be read, is over 16 MiB, names a
/// column that isn't known or a printer twice, or has a row without a name.
std::vector<PrinterRow> ReadPrinterList(const std::string& path);

}  // namespace heron::cli
