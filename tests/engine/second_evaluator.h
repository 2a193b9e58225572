// A second, slow reading of the rules: availability and item status straight from the tables' notation.
//
// It shares no step of evaluation with the engine: it reads the notation anew, knows controls by number, follows the
// definitions recursively and asks every question from scratch. Of the engine's room it uses table texts and the plain
// look-ups of papers and capabilities.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace heron::engine {

/// All that the rules may look at.
struct World {
  std::map<int, int> values;              ///< by control number; -1 AdhesiveBind_Check, -2 lpGraphicsMode
  std::map<int, int> defaults;            ///< the same
  std::map<int, std::vector<int>> lists;  ///< values of the items, by control number
  std::map<int, int> media;               ///< media type by tray
  mutable std::map<int, bool> available;  ///< answers of SecondEvaluator so far
};

class SecondEvaluator {
 public:
  SecondEvaluator();
  bool Available(const World& world, int control) const;
  /// Whether the item `value` of a list is forbidden.
  bool Forbidden(const World& world, int list, int value) const;
  /// Numbers of all that an enable rule governs.
  std::set<int> Governed() const;

 private:
  struct Term {
    int control;
    int value;
  };
  struct Row {
    int level = 0;
    bool all = false;
    std::vector<Term> parents;
    std::string function;
  };
  struct Rule {
    std::vector<Term> others;
  };
  struct Papers {
    int value;
    std::vector<int> conditions;
    std::set<int> set;
  };
  using Availability = std::function<bool(int)>;

  void ReadControls();
  void ReadValues();
  void ReadEnableRules();
  void ReadGates();
  void ReadRules(const std::u16string_view& text);
  void ReadPapers();
  int NumberOf(const std::string& name) const;
  int ValueOf(const std::string& control, const std::string& word) const;
  std::vector<Term> Terms(const std::string& operand) const;

  bool Decide(const World& world, int control) const;
  bool Gated(const World& world, int control) const;
  bool ByFunction(const World& world, const std::string& function, int control) const;
  bool Interleaves(const World& world) const;
  bool Forbidden(const World& world, const Availability& available, int list, int value) const;
  bool ByCombination(const World& world, const Availability& available, int list, int value) const;
  bool ByPaper(const World& world, const Availability& available, int list, int value) const;
  bool ByFinishing(const World& world, const Availability& available, int list, int value) const;

  std::map<std::string, int> numbers_;
  std::map<std::string, std::string> parameters_;             ///< of controls that aren't found by their key
  std::map<std::string, std::map<std::string, int>> values_;  ///< by name, by key or parameter
  std::map<int, int> dialogs_;
  std::set<int> fixed_;
  std::set<int> always_usable_;
  std::map<int, std::vector<Row>> rows_;
  std::map<int, std::vector<std::vector<Term>>> device_gates_;
  std::set<int> printer_only_;
  std::map<std::pair<int, int>, std::vector<Rule>> rules_;  ///< by first control and value
  std::map<int, std::vector<Papers>> papers_;               ///< by group
  std::map<int, std::vector<int>> groups_;
  std::map<int, Term> conditions_;
};

}  // namespace heron::engine
