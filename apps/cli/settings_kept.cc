// Checks that a change is still there when the record is opened again (settings_kept.h).

#include "settings_kept.h"

#include <algorithm>
#include <array>

#include "changes/fax_mode.h"
#include "engine/setting.h"
#include "engine/sizes.h"
#include "generated/values.h"
#include "pages/image_shift.h"
#include "rules/control_tables.h"
#include "rules/dialogs.h"
#include "settings/papers.h"
#include "uistate/tray_media.h"
#include "uistate/unnamed_params.h"

namespace heron::cli {
namespace {

using engine::Setting;

[[noreturn]] void Refuse(const RequestedChange& request, const std::string& why) {
  throw Failure(kRefused, request.text + ": " + why);
}

/// A setting that is computed, and the key of what it follows from.
struct Follower {
  uint16_t parameter;
  const char* source;
};
constexpr std::array kFollowers = {
    Follower{ParamNamed<u"Layout_Check">(), "Nup_Check"},
    Follower{ParamNamed<u"lpLayout_Select">(), "Nup_Check"},
    Follower{ParamNamed<u"lpBooklet">(), "lpBooklet2"},
    Follower{ParamNamed<u"lpBorder">(), "lpBorder2"},
    Follower{ParamNamed<u"lpBindMargin">(), "lpBindPosit"},
    Follower{ParamIndexOf(param::kMediaSizeMark), "lpMediaSize"},
    Follower{ParamIndexOf(param::kOutputPaperMark), "lpOutputPaper"},
};

/// The settings that show what lies in a tray are kept with the tray.
bool IsTrayMirror(uint16_t parameter) {
  return std::ranges::any_of(kMirroredTrays, [&](const MirroredTray& tray) {
    return std::ranges::find(tray.mirrors, parameter) != tray.mirrors.end();
  });
}

bool HasField(uint16_t parameter) {
  const ParamRow& row = kParamRows[parameter];
  return !row.field.empty() && row.rule != ParamRule::kOwn;
}

bool IsDeviceOption(uint16_t parameter) {
  const EnvField* const field = Params().params[parameter].field;
  return field != nullptr && field->deviceOption;
}

/// "92.0 to 297.0 mm"
std::string RangeText(int32_t min, int32_t max) {
  const auto mm = [](int32_t tenths) { return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10); };
  return mm(min) + " to " + mm(max) + " mm (" + std::to_string(min) + " to " + std::to_string(max) + ')';
}

/// The size of a job's own paper: only the last custom size has one, the others are the printer's.
void CheckCustomSize(const UiState& ui, const RequestedChange& request) {
  constexpr uint16_t kWidth = ParamNamed<u"UDPaperWidth">();
  constexpr uint16_t kLength = ParamNamed<u"UDPaperLength">();
  const bool of_output =
      request.parameter == ParamNamed<u"UDMediaWidth">() || request.parameter == ParamNamed<u"UDMediaLength">();
  if (of_output) {
    Refuse(request, "the custom sizes to print on are the printer's own list; choose one with -o lpOutputPaper=NUMBER");
  }
  if (request.parameter != kWidth && request.parameter != kLength) return;
  if (Setting<u"lpMediaSize">(ui) != kLastUserPaper) {
    Refuse(request,
           "only the document size \"" + ValueName(engine::ControlId(u"lpMediaSize"), kLastUserPaper) +
               "\" has a size of the job's own, the others are changed in `heron sheet`; first -o lpMediaSize=" +
               std::to_string(kLastUserPaper));
  }
  const SourceLimit& limit = engine::LimitOfSource(ui, value::lpUDPaperUnit::kMillimetre);
  const bool width = request.parameter == kWidth;
  const int32_t min = width ? limit.minWidth : limit.minLength;
  const int32_t max = width ? limit.maxWidth : limit.maxLength;
  if (request.value < min || request.value > max) Refuse(request, "a custom size can be " + RangeText(min, max));
}

/// What decides on the zoom in the place of the user, by its key and label.
void CheckZoom(const UiState& ui, const engine::Engine& engine, const RequestedChange& request) {
  const bool zoom = request.parameter == ParamNamed<u"Zoom">();
  if (!zoom && request.parameter != ParamNamed<u"ZoomCheck">()) return;
  if (request.value == *FieldsOf(ui, request.parameter).value) return;
  constexpr uint16_t kOn = value::Nup_Check::kOn, kOff = value::Nup_Check::kOff;
  const auto decides = [&](uint16_t control, const char* key) {
    Refuse(request, "the zoom follows from \"" + ControlName(engine, control) + "\" = " + ValueName(control, kOn) +
                        "; first set it to " + ValueName(control, kOff) + " (`heron settings -o " + key + "=0`)");
  };
  const bool paper = engine::IsOn<u"Layout_Check2">(ui);
  if (paper && engine::IsOn<u"Nup_Check">(ui)) decides(engine::ControlId(u"Nup_Check"), "Nup_Check");
  if (engine::MarginReducesPage(ui)) decides(engine::ControlId(u"BindMargin_Check"), "BindMargin_Check");
  if (engine::IsOn<u"POD_Check">(ui) && engine::IsOn<u"POD_Nup_Check">(ui))
    decides(engine::ControlId(u"POD_Check"), "POD_Check");
  const int most = engine::MaxZoomForPaper(ui, Setting<u"lpMediaSize">(ui));
  if (zoom && request.value > most)
    Refuse(request, "give a number from " + std::to_string(engine::RangeOf<u"Zoom">(ui).min) + " to " +
                        std::to_string(most) + "; the document's paper is too long for more");
}

/// The back's shift is the user's own only while it doesn't follow the front.
void CheckImageShift(const UiState& ui, const RequestedChange& request) {
  constexpr uint16_t kBack[] = {ParamNamed<u"lpImgShiftDirectLRB">(), ParamNamed<u"lpImgShiftDirectUDB">(),
                                ParamNamed<u"ImgShiftValueLRB">(), ParamNamed<u"ImgShiftValueUDB">(),
                                ParamNamed<u"ImgShiftPageIntervalB">()};
  const bool follows = std::ranges::find(kBack, request.parameter) != std::end(kBack) && pages::BackFollowsFront(ui);
  if (follows && request.value != *FieldsOf(ui, request.parameter).value)
    Refuse(request, "the back follows the front; first `heron settings -o ImgShiftBackAuto_Check=0`");
}

/// Why a value is gone when the settings are read again.
std::string WhyGone(const RequestedChange& request, uint16_t promised, uint16_t read) {
  if (request.parameter == ParamNamed<u"lpOutput">())
    return "a fax needs a recipient, and these settings have none; the document would go to the printer";
  if (request.parameter == ParamNamed<u"lpOverlay">()) {
    return promised == value::lpOverlay::kCreateForm ? "the form needs a file, and these settings name none"
                                                     : "the list of forms is empty; add a form first";
  }
  return "it doesn't hold: the settings would be read again with " +
         (request.control != 0 ? ValueName(request.control, read) : std::to_string(NumberOf(request.parameter, read)));
}

}  // namespace

uint16_t ValueOfRequest(const UiState& ui, const RequestedChange& request) {
  if (request.parameter == kWatermarkChoice) return SlotAs<u"bWatermarkCurrent", uint8_t>(ui);
  return *FieldsOf(ui, request.parameter).value;
}

void CheckKeepable(const SettingsSession& opened, const RequestedChange& request, bool device) {
  const UiState& ui = opened.ui();
  const uint16_t parameter = request.parameter;
  const auto follower = std::ranges::find(kFollowers, parameter, &Follower::parameter);
  if (follower != kFollowers.end())
    Refuse(request, std::string("it follows from another setting; set that one: -o ") + follower->source + "=VALUE");
  if (!HasField(parameter) && !IsTrayMirror(parameter))
    Refuse(request, "it lasts only while its dialog is open; no record keeps it");
  const bool on_device_page = request.control != 0 && dialog::kDevicePage == engine::GetControlDialog(request.control);
  if (!device && (IsDeviceOption(parameter) || on_device_page))
    Refuse(request,
           "it is an option of the printer; use `heron settings --device -o " + request.text + "` to change it");
  // After the general reasons, whose messages are more helpful.
  CheckCustomSize(ui, request);
  CheckZoom(ui, opened.engine(), request);
  CheckImageShift(ui, request);
}

Promises::Promises(const UiState& ui, const std::vector<ChangeRecord>& changes) {
  for (const ChangeRecord& change : changes) promises_.push_back({change.request, ValueOfRequest(ui, change.request)});
}

std::string Promises::WhatIsLost(SettingsSession& opened) const {
  if (promises_.empty()) return {};
  // The next command reads the record through the driver, which may correct it. What wouldn't survive is refused now.
  const auto again = opened.ReadAgain();
  for (const Promise& promise : promises_) {
    const uint16_t read = ValueOfRequest(*again->ui, promise.request);
    if (read != promise.value)
      return promise.request.text + ": " + WhyGone(promise.request, promise.value, read) + "; nothing was changed";
  }
  return {};
}

std::string Promises::FirstBroken(const UiState& ui) const {
  for (const Promise& promise : promises_) {
    if (ValueOfRequest(ui, promise.request) != promise.value) return promise.request.text;
  }
  return {};
}

}  // namespace heron::cli
