// The order of settings in `heron settings`: page by page, each with a label.
//
// Readers: settings_text.cc, and a test that holds it against the parameters: every setting that has options or a range
// on this model is here once. A row is the parameter's number and its label; a null label is the text of the
// setting's control, which reports and pages use too. Labels of our own are used where the control has none, shares it
// with another setting, or needs its page around it. To add a setting, add its row where a user would look for it.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace heron::cli {

struct SettingRow {
  uint16_t parameter;
  const char* label;  ///< null: the text of the setting's control
};

struct SettingPage {
  const char* title;
  std::span<const SettingRow> rows;
  bool inner = false;  ///< follows from other settings; shown only with --list
};

// clang-format off
inline constexpr auto kPaperSettings = std::to_array<SettingRow>({
    {2, nullptr}, {1, nullptr}, {3, nullptr}, {4, nullptr},
    {5, "Print size or zoom set by hand"}, {6, nullptr}, {7, nullptr}, {26, nullptr},
    {16, nullptr}, {144, nullptr}, {17, nullptr}, {18, nullptr}, {64, nullptr},
    {245, nullptr}, {244, nullptr}, {56, "Several pages per sheet"}, {11, nullptr}, {10, nullptr}, {103, nullptr},
    {63, "Binding margin in use"}, {146, "Binding margin on the front side (mm)"},
    {147, "Binding margin on the back side (mm)"}, {89, nullptr}, {99, nullptr},
    {59, "Staple in use"}, {14, nullptr}, {62, "Punch in use"}, {106, "Punch side"}, {102, "Punch holes"},
    {247, "Fold and staple in use"}, {248, nullptr}, {250, "Proof print"},
    {340, nullptr}, {96, nullptr}, {132, nullptr}, {143, "Position of wide paper"},
    {341, nullptr}, {343, nullptr}, {342, "Name used for authentication"}, {87, "Hide the password while it is typed"},
});

inline constexpr auto kCustomSizeSettings = std::to_array<SettingRow>({
    {140, "Custom size of the document"}, {151, "Custom width of the document (0.1 mm)"},
    {152, "Custom length of the document (0.1 mm)"}, {157, "Unit of the document's custom size"},
    {141, "Custom print size"}, {153, "Custom width of the print size (0.1 mm)"},
    {154, "Custom length of the print size (0.1 mm)"}, {158, "Unit of the custom print size"}, {580, "Long paper"},
});

inline constexpr auto kPerPageSettings = std::to_array<SettingRow>({
    {20, "Front cover in use"}, {21, "Front cover"}, {109, nullptr}, {22, "Back cover in use"}, {23, "Back cover"},
    {110, nullptr}, {24, "Cover tray"}, {76, nullptr}, {66, "Per-page list in use"}, {114, "Per-page list"},
    {133, nullptr}, {135, nullptr}, {92, "One-sided and two-sided pages mixed"},
});

inline constexpr auto kSpecialSettings = std::to_array<SettingRow>({
    {70, nullptr}, {72, "Combination in use"}, {115, nullptr}, {77, "Fold in use"}, {117, nullptr},
    {65, "Center finishing"}, {82, nullptr},
    {192, "Image shift, front, left or right"}, {196, "Image shift, front, left or right (0.1 mm)"},
    {193, "Image shift, front, up or down"}, {197, "Image shift, front, up or down (0.1 mm)"},
    {198, "Image shift, front, page interval"},
    {194, "Image shift, back, left or right"}, {199, "Image shift, back, left or right (0.1 mm)"},
    {195, "Image shift, back, up or down"}, {200, "Image shift, back, up or down (0.1 mm)"},
    {201, "Image shift, back, page interval"}, {202, nullptr},
});

inline constexpr auto kOverlaySettings = std::to_array<SettingRow>({
    {35, nullptr}, {36, nullptr}, {86, nullptr},
});

inline constexpr auto kWatermarkSettings = std::to_array<SettingRow>({
    {37, nullptr}, {39, nullptr}, {38, nullptr}, {288, nullptr}, {289, nullptr}, {287, "Copy number style"},
});

inline constexpr auto kQualitySettings = std::to_array<SettingRow>({
    {130, nullptr}, {30, nullptr}, {242, "Halftone lines"}, {561, "Halftone type"}, {29, "Halftone method"},
    {34, nullptr}, {84, nullptr}, {31, "Save toner by a lighter image"}, {10086, nullptr}, {85, nullptr},
    {97, "Printed in black"}, {32, "Intensity"}, {555, "Density set by hand"}, {145, "Density"},
    {240, "Color mode"}, {33, "Graphics mode"}, {241, "Hairlines strengthened"}, {560, "Bit depth may be reduced"},
    {90, "One plane of one bit"},
});

inline constexpr auto kFontSettings = std::to_array<SettingRow>({
    {203, nullptr}, {243, nullptr},
});

inline constexpr auto kFaxSettings = std::to_array<SettingRow>({
    {46, nullptr}, {47, "Fax resolution"}, {48, "Error correction (ECM)"}, {49, "Overseas transmission"},
    {50, "V.34 transmission"}, {52, "Print the document too"}, {53, "Send at a set time"}, {54, "Sub-address in use"},
    {55, "Sender ID in use"}, {51, "Cover sheet in use"}, {163, "Cover sheet: recipient text"},
    {164, "Cover sheet: whom it names"}, {159, "Cover sheet: subject"}, {160, "Cover sheet: recipient's name"},
    {161, "Cover sheet: recipient's company"}, {162, "Cover sheet: recipient's department"},
    {165, "Cover sheet: recipient's fax number"}, {166, "Cover sheet: sender's name"},
    {167, "Cover sheet: sender's company"}, {168, "Cover sheet: sender's department"},
    {169, "Cover sheet: sender's telephone number"}, {170, "Cover sheet: sender's fax number"},
    {171, "Cover sheet: sender's e-mail address"}, {172, "Cover sheet: date"}, {173, "Cover sheet: number of pages"},
    {174, "Cover sheet: picture"}, {175, "Cover sheet: picture zoomed"}, {176, "Cover sheet always on A4 portrait"},
});

inline constexpr auto kDeviceSettings = std::to_array<SettingRow>({
    {126, nullptr}, {40, nullptr}, {41, nullptr}, {123, nullptr}, {562, nullptr}, {129, nullptr}, {43, nullptr},
    {127, nullptr}, {344, nullptr}, {98, "Printer language"}, {234, "Device settings queried at start"},
});

inline constexpr auto kLibrarySettings = std::to_array<SettingRow>({
    {177, "Recall: paper size"}, {178, "Recall: custom sizes"}, {179, "Recall: per-page lists"},
    {180, "Recall: watermarks"}, {181, "Recall: fax cover sheet"}, {182, "Recall: overlay forms"},
    {183, "Recall: paper types of the trays"},
});

/// Kept by the driver between other choices; no page shows them as they are.
inline constexpr auto kInnerSettings = std::to_array<SettingRow>({
    {100, "Last view beside the pages"}, {61, "Layout options in use"}, {8, "Older layout switch"}, {9, "Older layout kind"},
    {12, "Older booklet direction"}, {13, "Older border"}, {104, "Older booklet"}, {71, "Older layout of special functions"},
    {73, "Older binding margin of special functions"}, {78, "Older staple of special functions"},
    {79, "Older punch of special functions"}, {148, "Older send time, hour"}, {149, "Older send time, minute"},
    {304, "Inner switch 304"}, {305, "Inner switch 305"},
});

/// While a dialog is open, these hold what it shows; they have no place of their own in a record.
inline constexpr auto kDialogSettings = std::to_array<SettingRow>({
    {142, "Custom size being edited"}, {155, "Custom width being edited (0.1 mm)"},
    {156, "Custom length being edited (0.1 mm)"}, {581, "Mark of the document's custom size"},
    {582, "Mark of the custom print size"}, {316, "Paper type of the per-page row being edited"},
    {500, "Tray being edited"}, {510, "Paper type of the paper tray"}, {530, "Paper type of the front cover tray"},
    {550, "Paper type of the back cover tray"},
});

inline constexpr auto kSettingPages = std::to_array<SettingPage>({
    {"Paper", kPaperSettings},       {"Custom sizes", kCustomSizeSettings}, {"Per page", kPerPageSettings},
    {"Special", kSpecialSettings},   {"Overlay", kOverlaySettings},         {"Watermark", kWatermarkSettings},
    {"Quality", kQualitySettings},   {"Fonts", kFontSettings},              {"Fax", kFaxSettings},
    {"Device", kDeviceSettings},     {"Settings library", kLibrarySettings}, {"Kept by the driver", kInnerSettings, true},
    {"Only in open dialogs", kDialogSettings, true},
});
// clang-format on

}  // namespace heron::cli
