// A view without a user: it returns one pending value and answers yes.
#pragma once

#include <benchmark/benchmark.h>

#include "engine/view.h"

namespace heron {

struct BenchView : engine::EngineView {
  uint16_t ReadControl(uint16_t) override { return pending; }
  bool Show(const engine::Report& report) override {
    benchmark::DoNotOptimize(report.text.data());
    return true;
  }
  void EnableControl(uint16_t, bool) override {}
  bool PerPageRowSelected() const override { return false; }
  uint16_t pending = 0;
};

}  // namespace heron
