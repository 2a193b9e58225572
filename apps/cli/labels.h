// The option catalogue with its labels, opened without a queue: the texts come from the driver's files beside this
// program or, failing those, from the store's driver directory. Without them labels are empty.
#pragma once

#include <cstdint>
#include <string>

#include "catalog/catalog.h"

namespace heron::cli {

class Catalogue {
 public:
  explicit Catalogue(uint32_t country);
  ~Catalogue();
  Catalogue(const Catalogue&) = delete;
  Catalogue& operator=(const Catalogue&) = delete;

  const ResourceContext* context() const { return &context_; }
  /// Label of row `index` of a list feature, text of a text feature; empty if there is none.
  std::string Label(uint16_t feature, uint32_t index) const;
  /// Text number `id` of the resource module; empty if there is none.
  std::string Text(uint32_t id) const;
  /// Label of the first row of a list feature that stores `value`; empty if there is none.
  std::string LabelOfValue(uint16_t feature, int32_t value) const;

 private:
  ResourceContext context_;
};

/// Whether a list feature is a switch: two rows, 0 and 1.
bool IsSwitch(uint16_t feature);

}  // namespace heron::cli
