// A conversation with one device: its address, its time limit, and the columns that have been read, each once.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/api/device_module.h"
#include "snmp.h"

namespace heron::devicecomm {

/// A driver has two conversations for a query, one to see who answers and one to read. What the first leaves of its
/// time belongs to the second, so that both together end within 5 seconds.
inline constexpr std::chrono::milliseconds kConversationLimit{2400};

class Conversation {
 public:
  /// `before`: the one that this one follows; may be null.
  Conversation(std::string text, Address address, const Conversation* before);

  /// Reads the columns that aren't known yet. False if that failed; the columns are then not known.
  bool Know(const std::set<Oid>& columns, const BdcLink& link);
  /// A column that is known; empty otherwise.
  const Column& At(const Oid& column) const;
  /// The value of a row, empty if the column has none.
  const Value& At(const Oid& column, const Oid& row) const;

  const std::string& text() const { return text_; }
  const Address& address() const { return address_; }

 private:
  bool Connect(const BdcLink& link);

  std::string text_;
  Address address_;
  bool follows_ = false;  ///< the second of a query
  Clock::time_point deadline_;
  StopCheck stop_;
  std::optional<std::vector<std::string>> peers_;
  std::unique_ptr<Agent> agent_;
  std::map<Oid, Column> columns_;
  const BdcLink* link_ = nullptr;  ///< of the call in progress, for the caller's stop
};

/// A text of the caller up to its terminator or the end of its field.
template <size_t N>
std::string FieldText(const char (&field)[N]) {
  return {field, std::find(field, field + N, '\0')};
}

/// Begins the calling thread's conversation anew; null for an address that is none.
Conversation* BeginConversation(const std::string& address);
/// The calling thread's conversation with the link's device, begun if there is none; null as above.
Conversation* ConversationOf(const BdcLink& link);

}  // namespace heron::devicecomm
