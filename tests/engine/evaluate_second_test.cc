// The engine against the second evaluator, on random settings.
#include <gtest/gtest.h>

#include <random>

#include "engine_fixture.h"
#include "second_evaluator.h"

namespace heron::engine {
namespace {

using Random = std::mt19937;

class SecondOpinionTest : public EngineTest {
 protected:
  /// Any value that the control can take or that a rule names: a list's items, a radio button's, a switch's two.
  void Scatter(Random& random) {
    for (size_t i = 0; i < kControlCount; ++i) {
      const auto control = static_cast<ControlIndex>(i);
      if (kControls[i].type == ControlType::kButton || random() % 3 == 0) continue;
      const ListBlock* list = engine->controls[i].list;
      if (list != nullptr && list->count != 0)
        engine->Set(control, engine->controls[i].list->Items()[random() % list->count].value);
      else if (kControls[i].type == ControlType::kCheck)
        engine->Set(control, random() % 2);
      else if (const int value = RadioMemberValue(kControls[i].id); value >= 0)
        engine->Set(control, static_cast<uint16_t>(value));
    }
    engine->Set(Control(u"lpPOD_OnePerSheet"), static_cast<uint16_t>(1 + random() % 6));
    engine->Set(Control(u"lpFold"), std::array<uint16_t, 6>{0, 11, 12, 21, 22, 31}[random() % 6]);
    engine->Set(Control(u"lpFoldStaple"), static_cast<uint16_t>(random() % 4));
    engine->Set(Control(u"lpOutput.Fax"), random() % 8 == 0 ? 1 : 2);
    if (random() % 2 == 0) engine->Set(Control(u"Layout_Check2"), 1);
    *FieldsOf(*ui, ParamNamed<u"AdhesiveBind_Check">()).value = random() % 8 == 0;
    *FieldsOf(*ui, ParamNamed<u"lpGraphicsMode">()).value = static_cast<uint16_t>(1 + random() % 2);
    constexpr std::array<uint8_t, 8> kMedia = {1, 1, 2, 2, 3, 6, 8, 30};
    for (size_t row = 0; row < 10; ++row) ui->head().trayTable[4 + 6 * row + 2] = kMedia[random() % kMedia.size()];
    if (random() % 2 == 0) Put("");  // the mirrors agree with the trays, or hold anything
  }

  World Look() const {
    World world;
    for (size_t i = 0; i < kControlCount; ++i) {
      const auto control = static_cast<ControlIndex>(i);
      const int id = kControls[i].id;
      if (kControls[i].type == ControlType::kButton) continue;
      world.values[id] = static_cast<int16_t>(engine->Value(control));
      world.defaults[id] = static_cast<int16_t>(engine->Default(control));
      if (engine->controls[i].list == nullptr) continue;
      for (const ListItem& item : engine->controls[i].list->Items()) {
        world.lists[id].push_back(static_cast<int16_t>(item.value));
        if (id == 120 || id == 2024 || id == 3300) world.media[item.value] = MediaOfTray(*engine, item.value).mediaType;
      }
      world.lists[id];
    }
    world.values[-1] = *FieldsOf(*ui, ParamNamed<u"AdhesiveBind_Check">()).value;
    world.values[-2] = *FieldsOf(*ui, ParamNamed<u"lpGraphicsMode">()).value;
    return world;
  }

  std::string Describe(const World& world) const {
    std::string text;
    for (const auto& [control, value] : world.values)
      text += std::to_string(control) + "=" + std::to_string(value) + " ";
    return text;
  }

  void Compare(const SecondEvaluator& second, const World& world) {
    for (const int control : second.Governed()) {
      ASSERT_EQ(IsControlAvailable(*engine, static_cast<uint16_t>(control)), second.Available(world, control))
          << control << " in " << Describe(world);
    }
    for (const auto& [list, items] : world.lists) {
      if (GetControlType(static_cast<uint16_t>(list)) != static_cast<int>(ControlType::kList)) continue;
      ComputeItemStatus(*engine, static_cast<uint16_t>(list));  // 122 and 2921 share one list
      const auto block = GetControlBlock(*engine, static_cast<uint16_t>(list))->Items();
      for (size_t i = 0; i < items.size(); ++i) {
        const bool forbidden = block[i].status == kItemForbidden;
        forbidden_ += forbidden;
        ASSERT_EQ(forbidden, second.Forbidden(world, list, items[i]))
            << list << " item " << items[i] << " in " << Describe(world);
      }
    }
  }

  int forbidden_ = 0;
};

TEST_F(SecondOpinionTest, AgreesOnAvailabilityAndItems) {
  const SecondEvaluator second;
  Random random(20011);
  constexpr int kStates = 10000;
  for (int state = 0; state < kStates; ++state) {
    Scatter(random);
    EvaluateRules(*engine, nullptr);
    Compare(second, Look());
    if (HasFatalFailure()) return;
  }
  EXPECT_GT(forbidden_, kStates);
}

}  // namespace
}  // namespace heron::engine
