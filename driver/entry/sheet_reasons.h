// The life of a property sheet, by the reasons of its host's calls: INIT, GET_INFO_HEADER, SET_RESULT, DESTROY.
//
// INIT makes the SheetContext and keeps it in the UserData of the host's PROPSHEETUI_INFO; DESTROY frees it. Nothing
// outlives DESTROY but what SET_RESULT wrote, and a sheet that wasn't confirmed writes nothing. After an INIT that
// failed there is no context, and the host shows none of the pages that it may have been given.
#pragma once

#include "platform/api/devmode.h"

namespace heron {

/// 1, or -1; 0 if the host refused a page. An exhausted memory throws. The header's printer name isn't null.
int32_t DocumentSheetReason(platform::PROPSHEETUI_INFO& info, const platform::DOCUMENTPROPERTYHEADER& header,
                            platform::LPARAM lParam);
/// The same for the printer's own settings, which SET_RESULT stores as printer data; -1 if what a user was free to
/// change can't be stored.
int32_t DeviceSheetReason(platform::PROPSHEETUI_INFO& info, const platform::DEVICEPROPERTYHEADER& header,
                          platform::LPARAM lParam);

/// Whether the call is the SET_RESULT of a sheet that the user has confirmed.
bool IsConfirmed(const platform::PROPSHEETUI_INFO& info, platform::LPARAM lParam);

}  // namespace heron
