// Positions of the fields in the printing side's blocks. Offsets are bytes, numbers little-endian, texts UTF-16 with a
// terminator unless said otherwise. The blocks belong to the printing side: what is not named here goes back as it
// came, and every number in a reply is checked before it is used.
#pragma once

#include <cstddef>
#include <cstdint>

namespace heron {

/// The reply of EscGetJobRecord.
struct JobRecordBlock {
  static constexpr size_t kSize = 9797;
  static constexpr size_t kExtraOffset = 6460;  ///< u16: offset of EnvExtra in this block
  static constexpr size_t kPrinterName = 6468;  ///< text, up to kEnvBase
  static constexpr size_t kEnvBase = 6688;      ///< EnvBase of the job, the record's bytes 220 to 1426
  static constexpr size_t kEnvBaseSize = 1207;
  static constexpr size_t kEnvExtraSize = 1901;  ///< EnvExtra of the job, the record's last bytes
};

/// The device fields, the front of the JobRecordBlock and what EscRestoreDevice sends. What isn't named is the printing
/// side's own.
struct DeviceFields {
  static constexpr size_t kSize = 1996;
  static constexpr size_t kPaperKind = 25;          ///< u8: 3 if a cover sheet has a paper of its own
  static constexpr size_t kPaperFlags = 26;         ///< two u16
  static constexpr size_t kOwnOrientation = 82;     ///< u8: of a cover sheet's document
  static constexpr size_t kOrientation = 84;        ///< u16: 1 upright, 2 across
  static constexpr size_t kPrintableDots = 128;     ///< four u32: left, top, right, bottom in dots
  static constexpr size_t kPrintable = 144;         ///< the same in hundredths of a millimetre
  static constexpr size_t kPaper = 208;             ///< u16: code of the paper
  static constexpr size_t kOutputPaperWidth = 230;  ///< u16, tenths of a millimetre
  static constexpr size_t kOutputPaperLength = 232;
  static constexpr size_t kZoom = 240;  ///< u8, percent
};

/// The reply of EscGetJobState.
struct JobStateBlock {
  static constexpr size_t kSize = 28332;
  static constexpr size_t kPageListsSent = 8;     ///< u32: 1 once the per-page lists have been sent
  static constexpr size_t kSpoolFileUsed = 84;    ///< u8: non-zero while a spool file is in use
  static constexpr size_t kSpoolFile = 88;        ///< text of 260: its path
  static constexpr size_t kMaskPassword = 1710;   ///< u16: 1 masks the password in the confirmation
  static constexpr size_t kConfirmSecure = 1776;  ///< u32: 1 confirms secure print
  static constexpr size_t kConfirmBox = 1784;     ///< u32: 1 confirms storing in a box
  static constexpr size_t kCoverFiles = 2604;     ///< u32: number of cover temporary files
  static constexpr size_t kFaxTime = 2822;        ///< five u16: year, month, day, hour, minute
  static constexpr size_t kRecipients = 2840;     ///< u32: number of recipients, at most kMaxRecipients used
  static constexpr size_t kRecipient = 2844;      ///< four byte texts of 44, then three bytes
  static constexpr size_t kRecipientSize = 180;
  static constexpr size_t kMaxRecipients = 100;
  static constexpr size_t kCoverFolder = 20844;    ///< text of 260
  static constexpr size_t kLastCoverFile = 21364;  ///< text of 30
  static constexpr size_t kCoverFile = 21424;      ///< texts of 30, one after another
  static constexpr size_t kCoverFileSize = 60;
};

/// The reply of EscGetFaxStatus.
struct FaxStatus {
  static constexpr size_t kSize = 16;
  static constexpr size_t kFaxJob = 0;       ///< u8: 1
  static constexpr size_t kCoverSheets = 1;  ///< u8: 1 if cover sheets are wanted
  static constexpr size_t kRecipients = 4;   ///< u32
  static constexpr size_t kHour = 8;         ///< u8
  static constexpr size_t kMinute = 9;       ///< u8
  static constexpr size_t kTimeSet = 10;     ///< u8: 1 if the fax is scheduled
  static constexpr size_t kPageDone = 12;    ///< u32: non-zero once the work of the first page is done
};

/// What EscSetFormBlock sends.
struct FormBlock {
  static constexpr size_t kSize = 528;
  static constexpr size_t kMode = 0;        ///< u8: 1 no form, 2 make one, 3 or 4 use one
  static constexpr size_t kPath = 4;        ///< text of 260
  static constexpr size_t kFileSize = 524;  ///< u32
};

/// The page state of path 556 (EscGetDrawPath is not 0).
struct PageState556 {
  static constexpr size_t kSize = 556;
  static constexpr size_t kDevMode = 0;             ///< the job's DEVMODEW
  static constexpr size_t kDrawingOrder = 228;      ///< u16: 1 draws the stamp at once, anything else defers it
  static constexpr size_t kFirstPageOnly = 252;     ///< u32
  static constexpr size_t kLayoutKind = 256;        ///< u16: 1 a plain page, 2 and 6 exchange width and height
  static constexpr size_t kFirstPageOnlyToo = 258;  ///< u32, the same value again
  static constexpr size_t kStampText = 262;         ///< text
  static constexpr size_t kStampStyle = 328;        ///< i16: 1 to 4
  static constexpr size_t kStampFont = 330;         ///< text
  static constexpr size_t kStampSize = 396;         ///< i16, points
  static constexpr size_t kStampIntensity = 398;    ///< u16, only the low byte is set
  static constexpr size_t kStampAngle = 400;        ///< i16: degrees when deferred, tenths when drawn at once
  static constexpr size_t kStampCenterX = 402;      ///< u32, tenths of a millimetre
  static constexpr size_t kStampCenterY = 406;      ///< u32, tenths of a millimetre
  static constexpr size_t kPrintable = 460;         ///< four u32: left, top, right, bottom in pixels
  static constexpr size_t kPhysical = 476;          ///< four u32, the same
  static constexpr size_t kLayoutFlag = 512;        ///< u16: 0 is no layout
  static constexpr size_t kWholeSheetFlag = 516;    ///< u32: 0 allows the whole-sheet case
  static constexpr size_t kZoom = 520;              ///< i16, percent
  static constexpr size_t kFormMaking = 538;        ///< u8: 1 or 2 while a form is made
  static constexpr size_t kOverlaySkipped = 539;    ///< u8: 1 when the user refuses the form
  static constexpr size_t kOverlayPrompt = 541;     ///< u8: non-zero asks before using the form
};

/// The page state of path 488 (EscGetDrawPath is 0).
struct PageState488 {
  static constexpr size_t kSize = 488;
  static constexpr size_t kLayoutFlag = 0;      ///< u8: 4 uses the printable rectangle, 3 allows the whole-sheet case
  static constexpr size_t kLayoutKind = 2;      ///< u8 here and at 3: the pairs (1, 2) and (2, 3) exchange the sides
  static constexpr size_t kZoom = 16;           ///< u16, percent
  static constexpr size_t kOverlayPrompt = 41;  ///< u8: non-zero asks before using the form
  static constexpr size_t kColorMode = 43;      ///< u8: 1, 2 or 3
  static constexpr size_t kFirstPageOnly = 44;  ///< u8
  static constexpr size_t kDrawingOrder = 45;   ///< u8: 2 marks the stamp with EscStampBegin and EscStampEnd
  static constexpr size_t kStampFlags = 50;     ///< three u8
  static constexpr size_t kPrintable = 128;     ///< four u32: left, top, right, bottom in pixels
  static constexpr size_t kPhysical = 144;      ///< four u32, the same
  static constexpr size_t kAppFlags = 178;      ///< two u8, written at the start of the document
  static constexpr size_t kDevMode = 180;       ///< the job's DEVMODEW
};

}  // namespace heron
