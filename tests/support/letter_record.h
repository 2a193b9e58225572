// The record of a job on a Letter sheet at 600 dpi, as far as the printing side reads it.
#pragma once

#include <cstring>

#include "settings/driver_env.h"

namespace heron::test {

inline DriverEnv LetterRecord() {
  constexpr uint32_t kMargins[] = {100, 100, 5000, 6500};
  DriverEnv env{};
  Set<"dmPrintQuality">(env, 600);
  Set<"dmOrientation">(env, 1);
  Set<"paperSizeDots">(env, 5100, 0);
  Set<"paperSizeDots">(env, 6600, 1);
  std::memcpy(FieldBytes<"paperMarginsDots">(env), kMargins, sizeof kMargins);
  Set<"lpOutput">(env, 2);
  Set<"lpOutputMethod">(env, 1);
  Set<"lpWatermarkOrder">(env, 1);
  return env;
}

}  // namespace heron::test
