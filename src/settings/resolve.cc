#include "settings/resolve.h"

#include <memory>
#include <vector>

#include "platform/spooler.h"
#include "settings/defaults.h"
#include "settings/merge.h"
#include "settings/printer_data.h"
#include "settings/validate.h"

namespace heron {
namespace {

using namespace platform;

/// PRINTER_INFO_2 of a queue with its texts and record; the usual one fits without a second call.
class PrinterInfo {
 public:
  explicit PrinterInfo(HANDLE printer) {
    DWORD needed = 0;
    buffer_.resize(kUsualSize);
    valid_ = Fetch(printer, &needed);
    if (!valid_ && needed > buffer_.size()) {
      buffer_.resize(needed);
      valid_ = Fetch(printer, &needed);
    }
  }
  explicit operator bool() const { return valid_; }
  const void* DevMode() const { return reinterpret_cast<const PRINTER_INFO_2W*>(buffer_.data())->pDevMode; }

 private:
  static constexpr size_t kUsualSize = 6144;
  bool Fetch(HANDLE printer, DWORD* needed) {
    return GetPrinterW(printer, 2, buffer_.data(), static_cast<DWORD>(buffer_.size()), needed) != 0;
  }
  std::vector<uint8_t> buffer_;
  bool valid_ = false;
};

}  // namespace

bool ResolveJobEnv(JobRequest* request) {
  const auto records = std::make_unique<DriverEnv[]>(2);
  DriverEnv& work = records[0];
  DriverEnv& printer = records[1];
  std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(ReadLocaleCountry()));
  if (resources == nullptr) return false;

  BuildDefaultEnv(resources.get(), &work, request->printerName, request->hPrinter);
  const PrinterInfo info(request->hPrinter);
  if (!info || !LoadPrinterEnv(request->hPrinter, &printer, request->printerName, resources.get())) return false;
  MergeRecord(resources.get(), ForeignEnv(info.DevMode()), work);
  MergeRecord(resources.get(), ForeignEnv(request->inputEnv), work);
  CopyDeviceOptions(printer, work);
  if (!ValidateEnv(resources.get(), &work, request->hPrinter)) return false;

  *request->resultBuffer = work;
  request->resolvedEnv = request->resultBuffer;
  request->resources = resources.release();
  return true;
}

}  // namespace heron
