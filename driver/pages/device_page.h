// Page 800, the only one of the printer's sheet: installed options, printer language, network address, and the query of
// the device.
//
// Options and language follow the common sequences of their kind. The address is stored as it is typed. A query stores
// what the device reports as working values and says what that changes; as with everything else, Apply keeps it.
#pragma once

#include "devicelink/device_query.h"
#include "pages/page.h"

namespace heron::pages {

class DevicePage : public Page {
 public:
  DevicePage(SheetContext& sheet, const PageRow& row);

 protected:
  void OnInitialise() override;
  void OnTextChanged(ControlId id) override;
  void OnButton(ControlId id) override;
  void OnGroupShown(uint8_t group) override;
  bool OnApply() override;

 private:
  void QueryDevice();
  void RefuseQuery(uint32_t text);
  void TakeReport(const DeviceReport& report);
};

}  // namespace heron::pages
