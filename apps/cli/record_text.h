// A record's fields as text and as JSON. Secrets are masked; nothing outside the record's bytes is read.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/command.h"
#include "common/record_file.h"
#include "labels.h"
#include "record_layout.h"
#include "settings/driver_env.h"

namespace heron::cli {

/// One element of a field: a repeated field has several.
struct Slot {
  const EnvField* field;
  uint16_t index;
  std::string name;  ///< "Zoom", "trayTable.lpMediaType[3]"

  uint32_t offset() const { return field->At(index); }
};

/// The named fields that `record` holds, in their order: all of ours, or the public ones inside a foreign record's
/// dmSize.
std::vector<const EnvField*> FieldsOf(const Bytes& record);
/// The same, place by place.
std::vector<Slot> SlotsOf(const Bytes& record);

/// Whether two records that both hold the slot hold the same bytes there.
bool SameBytes(const Bytes& a, const Bytes& b, const Slot& slot);

/// Whether the field is shown for every record.
bool IsMainField(const EnvField& field);

Group GroupOf(const EnvField& field);

/// "9 (A4)", "on", "210.0 mm", "\"Office\"", "***".
std::string SlotText(const Bytes& record, const Slot& slot, const Catalogue& catalogue);

/// Bit names of dmFields, "DM_ORIENTATION, DM_COPIES"; an unknown bit as a number.
std::string FieldBits(uint32_t bits);

/// The bit of dmFields that names a public field, or 0.
uint32_t BitOfField(const EnvField& field);

}  // namespace heron::cli
