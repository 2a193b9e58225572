// SNMP to one agent: v2c, or v1 where an agent knows no other, with a time limit for everything.
//
// Whatever an agent answers is bounded: rows of a column, bytes of a value, requests by the deadline. An answer with
// object ids that don't ascend ends its column.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "address.h"
#include "oid.h"

namespace heron::devicecomm {

/// A value as text: an octet string without blanks and terminators at its end, a number in digits, an object id in
/// dotted form.
struct Value {
  std::string text;
  int64_t number = 0;  ///< of a numeric type, else 0
};

/// Values of a column by the rest of their object id behind the column's.
using Column = std::map<Oid, Value>;

inline constexpr size_t kMostRows = 256;
inline constexpr size_t kLongestValue = 255;

class Agent {
 public:
  /// `peers` as Resolve gives them. Nothing is asked yet.
  Agent(std::vector<std::string> peers, std::string community, Clock::time_point deadline, StopCheck stop);
  ~Agent();
  Agent(const Agent&) = delete;
  Agent& operator=(const Agent&) = delete;

  /// Reads the columns with these object ids. False if the agent doesn't answer within the deadline, or can't be
  /// understood; a column that it doesn't have is empty.
  bool Walk(std::span<const Oid> columns, std::vector<Column>* out);

 private:
  struct Session;
  struct Request;

  bool Ask(std::span<const Oid> oids, Request* request);
  bool Establish(std::span<const Oid> oids, Request* request);
  std::unique_ptr<Session> Open(const std::string& peer, long version) const;
  bool Send(Session& session, std::span<const Oid> oids) const;
  void Wait(std::span<const std::unique_ptr<Session>> sessions) const;
  bool MayGoOn() const;

  std::vector<std::string> peers_;
  std::string community_;
  Clock::time_point deadline_;
  StopCheck stop_;
  std::unique_ptr<Session> session_;  ///< null until the agent has answered once
  long repetitions_;                  ///< rows of a column in one answer; fewer if the agent finds them too many
};

}  // namespace heron::devicecomm
