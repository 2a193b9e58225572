// Merging a caller's record over ours, field by field or whole.
#pragma once

#include "catalog/catalog.h"
#include "settings/driver_env.h"

namespace heron {

/// Takes over the public fields that `source` names in dmFields and whose values this model has; the rest stays.
void MergePublic(const ResourceContext* resources, const ForeignEnv& source, DriverEnv& target);

/// MergePublic, then the private part. Only for a source of our own format; false for a null one.
bool MergeWhole(const ResourceContext* resources, const ForeignEnv& source, DriverEnv& target);

/// MergeWhole if `source` has the target's format, else MergePublic; nothing for a null source.
void MergeRecord(const ResourceContext* resources, const ForeignEnv& source, DriverEnv& target);

/// Copies the fields marked as device options from the queue's saved record.
void CopyDeviceOptions(const DriverEnv& printer, DriverEnv& target);

}  // namespace heron
