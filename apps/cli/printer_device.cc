// The device of a new queue, and directory values (printer_device.h).

#include "printer_device.h"

#include <cstring>
#include <vector>

#include "platform/api/spooler.h"
#include "platform/api/text.h"
#include "settings/printer_data.h"
#include "settings_session.h"

namespace heron::cli {

using platform::DWORD;

AskedNewDevice AskNewDevice(const NewDevice& device) {
  if (device.query && device.address.empty()) throw Failure(kUsage, "--query needs the --address of the device");
  AskedNewDevice asked{.address = DeviceAddressOf(device.address), .asked = {}};
  if (device.query) {
    const DeviceTarget target{.address = asked.address, .folder = platform::FromUtf8(ProgramDriverFolder())};
    asked.asked = AskDevice(target, Catalogue(ReadLocaleCountry()));
  }
  return asked;
}

void StoreNewDevice(const std::string& name, const AskedNewDevice& device) {
  if (device.address.empty()) return;
  Printer printer(name);
  SettingsSession opened(printer, name, {}, SettingsKind::kDevice);
  opened.Open(false);
  SetDeviceAddress(opened.ui(), device.address);
  if (!(device.asked ? StoreAsked(opened, *device.asked) : opened.Keep(opened.Record())))
    throw Failure(kFailed, "another program has changed the settings of the printer meanwhile; try again");
}

Json DirectoryJson(const Printer& printer) {
  std::vector<uint8_t> buffer;
  DWORD needed = 0;
  DWORD count = 0;
  DWORD status = platform::kErrorMoreData;
  while (status == platform::kErrorMoreData) {
    buffer.resize(needed);
    status = platform::EnumPrinterDataExW(printer.handle(), u"DsDriver", buffer.data(),
                                          static_cast<DWORD>(buffer.size()), &needed, &count);
  }
  Json values = Json::object();
  for (DWORD i = 0; status == platform::kErrorSuccess && i < count; ++i) {
    platform::PRINTER_ENUM_VALUESW row;
    std::memcpy(&row, buffer.data() + i * sizeof row, sizeof row);
    const std::vector<uint8_t> bytes(row.pData, row.pData + row.cbData);
    values[Printable(std::u16string_view(row.pValueName))] = bytes.size() == 1 ? Json(bytes[0]) : Json(bytes);
  }
  return values;
}

}  // namespace heron::cli
