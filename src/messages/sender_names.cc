#include "messages/sender_names.h"

#include "data/database_access.h"
#include "data/field.h"

namespace orlune {

const std::string& SenderNames::DisplayName(std::string_view sender) {
  const auto known = known_.find(sender);
  if (known != known_.end()) return known->second;

  const auto row =
      OpenQuery(database_, Statement("SELECT FriendlyName FROM Calendars WHERE Name = '{}'", sender));
  const std::string_view name = row->Next() ? TextOf(row->Get(row->Column("FriendlyName"))) : sender;
  return known_.emplace(sender, name).first->second;
}

}  // namespace orlune
