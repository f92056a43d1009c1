#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orlune {

class Connection;

/// The calendars in the recipient list of a form, without duplicates and as the database spells them.
/// Brackets around a name and unknown names are ignored. Throws DatabaseError.
std::vector<std::string> ChosenRecipients(Connection& database, std::string_view listText);

/// The recipients with groups replaced by their members, without duplicates; "default" is every user.
/// Membership is a substring match: a group "sale" also has the members of "sales". Throws DatabaseError.
std::vector<std::string> ExpandGroupRecipients(Connection& database, std::span<const std::string> recipients);

}  // namespace orlune
