// What every record's public part has in common: fixed fields and legal copies.
#pragma once

#include "catalog/catalog.h"
#include "settings/driver_env.h"

namespace heron {

/// Sets header, signature, tag and constant fields of the public part. With a null name the device name stays.
void InitPublicPart(DriverEnv* env, const char16_t* printer_name);

/// Copies above the range become its largest, below it the default.
int16_t LegalCopies(const ResourceContext* resources, int16_t copies);

}  // namespace heron
