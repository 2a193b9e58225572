// Numbers of the texts that the settings library shows.
#pragma once

#include <cstdint>

namespace heron {

enum LibraryText : uint32_t {
  kLibraryFull = 21010,
  kLibraryCaption = 21102,
  kSaveCaption = 21103,
  kOrganizeCaption = 21105,
  kRegisterCaption = 21106,

  kChangedNotWritten = 25701,
  kNotCreated = 25702,
  kStandardStays = 25703,
  kNotRenamed = 25704,
  kNotSavedThere = 25705,
  kNotASettingsFile = 25706,
  kStandardNotRegistered = 25707,

  kProtectedAtOpening = 25709,
  kLeavesTheList = 25710,
  kProtected = 25711,
  kCanBeConverted = 25712,
  kAskToConvert = 25713,
  kDriverReplaced = 25714,
  kFilesCanBeConverted = 25717,
  kAskToKeep = 25718,

  kOneJobOnly = 25719,
  kNotSaved = 25720,
  kOutputMethodNotSaved = 25721,
  kOverlayNotSaved = 25723,
  kFaxNotSaved = 25724,
  kRecipientNotSaved = 25725,
  kPrintSizeMoves = 25728,
  kTrayMoves = 25729,
  kMediaTypeMoves = 25730,
  kOutputTrayMoves = 25731,

  kOtherModel = 25732,
  kOtherSystem = 25733,
  kOtherVersion = 25734,
  kOtherLanguage = 25735,

  kSaveNameMissing = 25750,
  kSaveNameIllegal = 25751,
  kNameTooLong = 25752,
  kSaveExtension = 25753,
  kSaveNameTaken = 25754,
  kAskToReplace = 25755,
  kFileProtected = 25756,
  kNameMissing = 25759,
  kNameIllegal = 25760,
  kFileNameTooLong = 25761,
  kRegisterExtension = 25763,
  kRegisterNameTaken = 25764,
  kNameTaken = 25765,
  kAskToRemove = 25766,
  kFolderProtected = 25767,
  kNameControl = 25768,
};

}  // namespace heron
