#include "settings/resolve.h"

#include <memory>
#include <string>

#include "platform/api/handles.h"
#include "settings/defaults.h"
#include "settings/merge.h"
#include "settings/printer_data.h"
#include "settings/validate.h"

namespace heron {

using namespace platform;

bool ResolveJobEnv(JobRequest* request) {
  const auto records = std::make_unique<DriverEnv[]>(2);
  DriverEnv& work = records[0];
  DriverEnv& printer = records[1];
  std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(ReadLocaleCountry()));
  if (resources == nullptr) return false;

  std::u16string own_name;
  const char16_t* name = request->printerName;
  if (name == nullptr) name = (own_name = PrinterName(request->hPrinter)).c_str();
  BuildDefaultEnv(resources.get(), &work, name, request->hPrinter);
  const PrinterInfo info(request->hPrinter, 2);
  if (!info || !LoadPrinterEnv(request->hPrinter, &printer, name, resources.get())) return false;
  MergeRecord(resources.get(), ForeignEnv(info.As<PRINTER_INFO_2W>().pDevMode), work);
  MergeRecord(resources.get(), ForeignEnv(request->inputEnv), work);
  CopyDeviceOptions(printer, work);
  if (!ValidateEnv(resources.get(), &work, request->hPrinter)) return false;

  *request->resultBuffer = work;
  request->resolvedEnv = request->resultBuffer;
  request->resources = resources.release();
  return true;
}

}  // namespace heron
