// Requests over Net-SNMP's single sessions (snmp.h).
//
// The library's own waiting calls aren't used: they wait as long as anything at all arrives. Here every wait looks at
// the deadline and at Cancel.

// The library's headers need this order.
// clang-format off
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>
#include <net-snmp/library/large_fd_set.h>
#include <net-snmp/library/snmp_transport.h>
// clang-format on

#include "snmp.h"

#include <poll.h>

#include <algorithm>
#include <mutex>
#include <utility>

namespace heron::devicecomm {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kRequestLimit{600};  ///< then the request is sent again
constexpr int kMostRetries = 8;             ///< the deadline comes first
constexpr milliseconds kNextPeerAfter{200};
constexpr milliseconds kLookInterval{50};  ///< for a Cancel
constexpr size_t kMostColumns = 8;         ///< of one request
constexpr long kFirstRepetitions = 10;

struct Binding {
  Oid oid;
  Value value;
  bool ends = false;  ///< the agent has nothing behind what was asked
};

/// The library reads no configuration, writes none, and logs nothing: addresses and communities stay private.
void StartLibrary() {
  static std::once_flag once;
  std::call_once(once, [] {
    snmp_disable_log();
    netsnmp_register_loghandler(NETSNMP_LOGHANDLER_NONE, LOG_DEBUG);
    for (const int option : {NETSNMP_DS_LIB_DONT_READ_CONFIGS, NETSNMP_DS_LIB_DONT_PERSIST_STATE,
                             NETSNMP_DS_LIB_DISABLE_PERSISTENT_LOAD, NETSNMP_DS_LIB_DISABLE_PERSISTENT_SAVE})
      netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID, option, 1);
  });
}

Oid Arcs(const oid* name, size_t length) {
  Oid arcs(std::min<size_t>(length, MAX_OID_LEN));
  std::transform(name, name + arcs.size(), arcs.begin(), [](oid arc) { return static_cast<uint32_t>(arc); });
  return arcs;
}

std::string TextOf(const variable_list& variable) {
  std::string text(reinterpret_cast<const char*>(variable.val.string), std::min(variable.val_len, kLongestValue));
  text.erase(text.find_last_not_of(std::string_view("\0 \t\r\n", 5)) + 1);
  return text;
}

Value ValueOf(const variable_list& variable) {
  Value value;
  switch (variable.type) {
    case ASN_OCTET_STR:
      if (variable.val.string != nullptr) value.text = TextOf(variable);
      break;
    case ASN_INTEGER:
    case ASN_COUNTER:
    case ASN_GAUGE:
    case ASN_TIMETICKS:
      if (variable.val.integer != nullptr) value.number = *variable.val.integer;
      value.text = std::to_string(value.number);
      break;
    case ASN_OBJECT_ID:
      if (variable.val.objid != nullptr) value.text = OidText(Arcs(variable.val.objid, variable.val_len / sizeof(oid)));
      break;
    default:
      break;
  }
  return value;
}

bool Ends(const variable_list& variable) {
  return variable.type == SNMP_ENDOFMIBVIEW || variable.type == SNMP_NOSUCHOBJECT ||
         variable.type == SNMP_NOSUCHINSTANCE;
}

/// A column on its way.
struct Progress {
  Oid column;
  Oid next;  ///< behind this one the agent goes on
  Column rows;
  bool done = false;

  void Take(const Binding& binding) {
    const bool below =
        binding.oid.size() > column.size() && std::ranges::equal(column, std::span(binding.oid).first(column.size()));
    done = done || binding.ends || !below || binding.oid <= next || rows.size() >= kMostRows;
    if (done) return;
    rows[Oid(binding.oid.begin() + static_cast<std::ptrdiff_t>(column.size()), binding.oid.end())] = binding.value;
    next = binding.oid;
  }
};

}  // namespace

/// What came for one request.
struct Agent::Request {
  std::vector<Binding> bindings;
  long error = SNMP_ERR_NOERROR;
  long error_index = 0;  ///< from 1

  void Take(const netsnmp_pdu& pdu, size_t most) {
    error = pdu.errstat;
    error_index = pdu.errindex;
    for (const variable_list* variable = pdu.variables; variable != nullptr && bindings.size() < most;
         variable = variable->next_variable) {
      bindings.push_back({Arcs(variable->name, variable->name_length), ValueOf(*variable), Ends(*variable)});
    }
  }
};

/// A socket to one peer in one version, with at most one request under way.
struct Agent::Session {
  Session(void* opened, long of_version) : handle(opened), version(of_version) {}
  ~Session() { snmp_sess_close(handle); }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  static int Called(int operation, netsnmp_session*, int, netsnmp_pdu* pdu, void* magic) {
    auto& session = *static_cast<Session*>(magic);
    if (operation != NETSNMP_CALLBACK_OP_RECEIVED_MESSAGE) {
      session.failed = true;
      return 1;
    }
    if (pdu == nullptr || pdu->command != SNMP_MSG_RESPONSE) return 1;
    try {
      session.request.Take(*pdu, session.most);
      session.answered = true;
    } catch (const std::bad_alloc&) {
      session.failed = true;
    }
    return 1;
  }

  int Socket() const {
    const netsnmp_transport* const transport = snmp_sess_transport(handle);
    return transport == nullptr ? -1 : transport->sock;
  }

  void Read(int socket) const {
    netsnmp_large_fd_set ready;
    netsnmp_large_fd_set_init(&ready, socket + 1);
    netsnmp_large_fd_setfd(socket, &ready);
    snmp_sess_read2(handle, &ready);
    netsnmp_large_fd_set_cleanup(&ready);
  }

  void* handle;
  long version;
  size_t most = 0;  ///< bindings that an answer may have
  bool answered = false;
  bool failed = false;
  Request request;
};

Agent::Agent(std::vector<std::string> peers, std::string community, Clock::time_point deadline, StopCheck stop)
    : peers_(std::move(peers)),
      community_(std::move(community)),
      deadline_(deadline),
      stop_(std::move(stop)),
      repetitions_(kFirstRepetitions) {}

Agent::~Agent() = default;

bool Agent::MayGoOn() const {
  return Clock::now() < deadline_ && !stop_();
}

std::unique_ptr<Agent::Session> Agent::Open(const std::string& peer, long version) const {
  StartLibrary();
  netsnmp_session options;
  snmp_sess_init(&options);
  options.version = version;
  options.peername = const_cast<char*>(peer.c_str());  // copied by the library
  options.community = reinterpret_cast<u_char*>(const_cast<char*>(community_.data()));
  options.community_len = community_.size();
  options.timeout = std::chrono::microseconds(kRequestLimit).count();
  options.retries = kMostRetries;
  void* const handle = snmp_sess_open(&options);
  return handle == nullptr ? nullptr : std::make_unique<Session>(handle, version);
}

bool Agent::Send(Session& session, std::span<const Oid> oids) const {
  const bool bulk = session.version == SNMP_VERSION_2c;
  netsnmp_pdu* const pdu = snmp_pdu_create(bulk ? SNMP_MSG_GETBULK : SNMP_MSG_GETNEXT);
  if (pdu == nullptr) return false;
  if (bulk) {
    pdu->non_repeaters = 0;
    pdu->max_repetitions = repetitions_;
  }
  for (const Oid& arcs : oids) {
    const std::vector<oid> name(arcs.begin(), arcs.end());
    snmp_add_null_var(pdu, name.data(), name.size());
  }
  session.most = oids.size() * static_cast<size_t>(bulk ? repetitions_ : 1);
  session.answered = session.failed = false;
  session.request = {};
  if (snmp_sess_async_send(session.handle, pdu, &Session::Called, &session) != 0) return true;
  snmp_free_pdu(pdu);
  return false;
}

/// Until something arrives at one of them, at most for kLookInterval; what is overdue is sent again.
void Agent::Wait(std::span<const std::unique_ptr<Session>> sessions) const {
  std::vector<pollfd> sockets;
  for (const auto& session : sessions) {
    if (session->Socket() < 0) session->failed = true;
    sockets.push_back({.fd = session->Socket(), .events = POLLIN, .revents = 0});
  }
  const auto left = std::chrono::ceil<milliseconds>(deadline_ - Clock::now());
  const auto wait = std::clamp<milliseconds>(left, milliseconds(0), kLookInterval);
  poll(sockets.data(), sockets.size(), static_cast<int>(wait.count()));
  for (size_t i = 0; i < sockets.size(); ++i) {
    if ((sockets[i].revents & POLLIN) != 0) sessions[i]->Read(sockets[i].fd);
    if (!sessions[i]->answered && !sessions[i]->failed) snmp_sess_timeout(sessions[i]->handle);
  }
}

/// The first request: every address of the host and both versions, one after the other, until one of them answers. What
/// was asked first may still answer late.
bool Agent::Establish(std::span<const Oid> oids, Request* request) {
  const Clock::time_point start = Clock::now();
  std::vector<std::unique_ptr<Session>> sessions;
  const size_t attempts = 2 * peers_.size();
  for (size_t next = 0; MayGoOn();) {
    const bool older = next >= peers_.size();
    const auto due = start + (older ? kRequestLimit : milliseconds(0)) +
                     kNextPeerAfter * (peers_.empty() ? 0 : next % peers_.size());
    if (next < attempts && Clock::now() >= due) {
      auto session = Open(peers_[next % peers_.size()], older ? SNMP_VERSION_1 : SNMP_VERSION_2c);
      if (session != nullptr && Send(*session, oids)) sessions.push_back(std::move(session));
      ++next;
      continue;
    }
    if (next == attempts && sessions.empty()) return false;
    Wait(sessions);
    const auto answered = std::ranges::find_if(sessions, [](const auto& session) { return session->answered; });
    if (answered != sessions.end()) {
      session_ = std::move(*answered);
      *request = std::move(session_->request);
      return true;
    }
    std::erase_if(sessions, [](const auto& session) { return session->failed; });
  }
  return false;
}

bool Agent::Ask(std::span<const Oid> oids, Request* request) {
  if (session_ == nullptr) return Establish(oids, request);
  if (!MayGoOn() || !Send(*session_, oids)) return false;
  while (MayGoOn() && !session_->answered && !session_->failed) Wait(std::span(&session_, 1));
  *request = std::move(session_->request);
  return session_->answered;
}

bool Agent::Walk(std::span<const Oid> columns, std::vector<Column>* out) {
  std::vector<Progress> all;
  for (const Oid& column : columns) all.push_back({.column = column, .next = column, .rows = {}});
  while (std::ranges::any_of(all, [](const Progress& column) { return !column.done; })) {
    std::vector<Progress*> asked;
    std::vector<Oid> oids;
    for (Progress& column : all) {
      if (column.done || asked.size() == kMostColumns) continue;
      asked.push_back(&column);
      oids.push_back(column.next);
    }
    Request request;
    if (!Ask(oids, &request)) return false;
    if (request.error == SNMP_ERR_TOOBIG && repetitions_ > 1) {
      repetitions_ /= 2;
    } else if (request.error != SNMP_ERR_NOERROR) {
      const auto index = static_cast<size_t>(request.error_index);
      if (index < 1 || index > asked.size()) return false;
      asked[index - 1]->done = true;  // how v1 says that there is nothing more
    } else {
      if (request.bindings.empty()) return false;
      for (size_t i = 0; i < request.bindings.size(); ++i) asked[i % asked.size()]->Take(request.bindings[i]);
    }
  }
  out->clear();
  for (Progress& column : all) out->push_back(std::move(column.rows));
  return true;
}

}  // namespace heron::devicecomm
