#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orlune {

class Connection;

/// The calendars that a recipient list of a form chose, each once and as the database spells it. A name may
/// stand in brackets; one that no calendar has counts as not chosen. Throws DatabaseError.
std::vector<std::string> ChosenRecipients(Connection& database, std::string_view listText);

/// The recipients with the members of groups in place of these, each once; "default" stands for every user.
/// Whether somebody is a member is looked for as a part of the membership text, so a group whose name is part
/// of another's brings the members of that one too. Throws DatabaseError.
std::vector<std::string> ExpandGroupRecipients(Connection& database, std::span<const std::string> recipients);

}  // namespace orlune
