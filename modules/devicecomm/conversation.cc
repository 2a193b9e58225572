// What a conversation remembers (conversation.h).

#include "conversation.h"

#include <algorithm>
#include <utility>

namespace heron::devicecomm {
namespace {

/// Ends with its thread.
thread_local std::unique_ptr<Conversation> current;

}  // namespace

Conversation::Conversation(std::string text, Address address, const Conversation* before)
    : text_(std::move(text)), address_(std::move(address)), deadline_(Clock::now() + kConversationLimit) {
  follows_ = before != nullptr && before->text_ == text_ && !before->follows_;
  if (follows_) deadline_ = std::max(deadline_, before->deadline_ + kConversationLimit);
  stop_ = [this] {
    return link_ != nullptr && link_->stopRequested != nullptr && link_->stopRequested(link_->stopContext);
  };
}

bool Conversation::Connect(const BdcLink& link) {
  if (agent_ != nullptr) return true;
  if (!peers_) peers_ = Resolve(address_, deadline_, stop_);
  if (peers_->empty()) return false;
  agent_ = std::make_unique<Agent>(*peers_, FieldText(link.community), deadline_, stop_);
  return true;
}

bool Conversation::Know(const std::set<Oid>& columns, const BdcLink& link) {
  std::vector<Oid> missing;
  std::ranges::copy_if(columns, std::back_inserter(missing),
                       [this](const Oid& column) { return !columns_.contains(column); });
  if (missing.empty()) return true;
  link_ = &link;
  std::vector<Column> read;
  const bool done = Connect(link) && agent_->Walk(missing, &read);
  link_ = nullptr;
  for (size_t i = 0; done && i < missing.size(); ++i) columns_[missing[i]] = std::move(read[i]);
  return done;
}

const Column& Conversation::At(const Oid& column) const {
  static const Column kNone;
  const auto found = columns_.find(column);
  return found == columns_.end() ? kNone : found->second;
}

const Value& Conversation::At(const Oid& column, const Oid& row) const {
  static const Value kNone;
  const Column& rows = At(column);
  const auto found = rows.find(row);
  return found == rows.end() ? kNone : found->second;
}

Conversation* BeginConversation(const std::string& address) {
  std::optional<Address> parsed = ParseAddress(address);
  current = parsed ? std::make_unique<Conversation>(address, std::move(*parsed), current.get()) : nullptr;
  return current.get();
}

Conversation* ConversationOf(const BdcLink& link) {
  const std::string address = FieldText(link.address);
  return current != nullptr && current->text() == address ? current.get() : BeginConversation(address);
}

}  // namespace heron::devicecomm
