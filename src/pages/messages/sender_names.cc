#include "pages/messages/sender_names.h"

#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

Statement NameOfSender(std::string_view sender) {
  return Statement("SELECT FriendlyName FROM Calendars WHERE Name = '{}'", sender);
}

}  // namespace

void SenderNames::Announce(std::string_view sender) {
  if (announced_.contains(sender)) return;
  announced_.emplace(sender);
  database_.Announce(NameOfSender(sender));
}

const std::string& SenderNames::DisplayName(std::string_view sender) {
  const auto known = known_.find(sender);
  if (known != known_.end()) return known->second;

  const auto row = OpenQuery(database_, NameOfSender(sender));
  const std::string_view name = row->Next() ? TextOf(row->Get(row->Column("FriendlyName"))) : sender;
  return known_.emplace(sender, name).first->second;
}

}  // namespace orlune
