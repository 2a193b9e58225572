// Asks the driver for a printer's resolved record (resolved_record.h).

#include "resolved_record.h"

#include "entry/exports.h"
#include "settings/driver_env.h"

namespace heron::cli {

platform::DEVMODEW* AsDevMode(Bytes& bytes) {
  return reinterpret_cast<platform::DEVMODEW*>(bytes.data());
}

Bytes ResolvedRecord(Printer& printer, Bytes input) {
  Bytes record(kEnvSize);
  platform::DEVMODEW* in = input.empty() ? nullptr : AsDevMode(input);
  const platform::DWORD mode = platform::DM_COPY | (in != nullptr ? platform::DM_MODIFY : 0);
  if (DrvDocumentProperties(nullptr, printer.handle(), printer.name(), AsDevMode(record), in, mode) != 1) {
    throw Failure(kFailed,
                  "the driver couldn't build a record for this printer; `heron printer show` shows what is stored");
  }
  return record;
}

}  // namespace heron::cli
