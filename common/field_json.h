// A record's fields as JSON, and which of them are secret. Shared by the command and the
// job ticket.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <span>
#include <string>

#include "settings/driver_env.h"

namespace heron::record {

/// Keys stay in the order in which they were set.
using Json = nlohmann::ordered_json;

/// The bytes of a record; a field that is asked for lies inside.
using RecordBytes = std::span<const uint8_t>;

/// Whether the field holds a secret: it is never shown in clear, only whether something is there.
bool IsSecret(const EnvField& field);

/// A number of `type` at byte `offset`.
int64_t FieldNumber(RecordBytes record, FieldType type, uint32_t offset);
/// A text field up to its terminator or the field's end.
std::u16string FieldText(RecordBytes record, const EnvField& field);
/// The field's bytes in hexadecimal.
std::string FieldHex(RecordBytes record, const EnvField& field);
/// Whether all of the field's bytes are 0.
bool IsFieldZero(RecordBytes record, const EnvField& field);

/// Raw value: a number, an array of numbers, a text, bytes in hexadecimal, or "***" for a secret that isn't empty.
Json FieldJson(RecordBytes record, const EnvField& field);

}  // namespace heron::record
