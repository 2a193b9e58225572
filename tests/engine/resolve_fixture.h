// A resolver over the engine of the fixture. Text n of the resource module reads "[n]", formats apart, so that a report
// shows which texts it was made of.
#pragma once

#include <vector>

#include "changes/resolve.h"
#include "engine_fixture.h"
#include "platform/api/text.h"

namespace heron::engine {

/// Hands out one new value, gives the scripted answer, and keeps what it was shown: "caption|text", a question with
/// "?".
struct ResolveView : TestView {
  uint16_t ReadControl(uint16_t) override { return pending; }
  bool Show(const Report& report) override {
    shown += platform::ToUtf8(report.caption) + "|" + platform::ToUtf8(report.text) + (report.asks ? "?" : "");
    return yes;
  }

  uint16_t pending = 0;
  bool yes = true;
  std::string shown;
};

class ResolveTest : public EngineTest {
 protected:
  ResolveTest() {
    auto& texts = backend.modules[test::kResourceModule];
    for (uint32_t n = 20000; n < 50000; ++n) texts[n] = u"[" + platform::FromUtf8(std::to_string(n)) + u"]";
    texts.erase(21200);
    for (const uint32_t n : {31621U, 31622U, 31623U, 31625U, 31636U, 31637U}) texts[n] += u"%s ";
    AcquireStrings();
    LoadPaperLabels();
    resolver = std::make_unique<Resolver>(*engine);
  }
  ~ResolveTest() override { ReleaseStrings(); }

  /// The user sets one control. "result" with "!" if nothing was applied.
  std::string Resolve(std::string_view name, std::string_view value) {
    return ResolveId(kControls[ControlNamed(name)].id, test::ValueNamed(ControlNamed(name), value));
  }
  std::string ResolveId(uint16_t id, int value) {
    front.pending = static_cast<uint16_t>(value);
    front.shown.clear();
    outcome = ResolveChange(*resolver, &front, id);
    return std::to_string(outcome.result) + (outcome.applied ? "" : "!");
  }

  /// All bytes that a withdrawn change must leave as they were.
  std::vector<uint8_t> Bytes() const {
    std::vector<uint8_t> bytes(ui->fixed.get(), ui->fixed.get() + ui->fixedSize);
    bytes.insert(bytes.end(), ui->variable.get(), ui->variable.get() + ui->variableSize);
    const auto add = [&bytes](const auto& block) {
      const auto* first = reinterpret_cast<const uint8_t*>(&block);
      bytes.insert(bytes.end(), first, first + sizeof block);
    };
    add(*ui->stores.pageLists);
    add(*ui->stores.userPapers);
    add(*ui->stores.overlays);
    add(*ui->stores.watermarks);
    add(*ui->stores.fontSubst);
    add(*ui->stores.faxCover);
    add(engine->rules);
    return bytes;
  }

  std::unique_ptr<Resolver> resolver;
  ResolveView front;
  ResolveOutcome outcome;
};

}  // namespace heron::engine
