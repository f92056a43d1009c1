#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/record_choice.h"

namespace orlune {

/// The record that a request to the administration edits: first as stored, then with the values of the posted
/// form. The lists are text lists.
struct AdminState {
  std::optional<std::int64_t> Id;  ///< nothing for a new record
  std::string Name;                ///< display name
  std::string StoredName;          ///< `Name` as stored; "" for a new record
  std::string IntName;             ///< login name, group name or file name
  std::string StoredIntName;       ///< `IntName` as stored; "" for a new record
  std::string Password;
  std::string StoredPassword;     ///< before the form is read; plain or hashed
  std::string GeneratedPassword;  ///< shown once after it was stored, else ""
  std::string Hide;               ///< "yes", "no", or "" for the default
  std::string Memberships;
  std::string Adminships;
};

/// The data of a manager's page.
struct AdminContent {
  AdminState Record;
  std::vector<RecordChoice> Records;
  std::vector<RecordChoice> Choices;  ///< the groups to choose from for a user, or the users for a group
};

}  // namespace orlune
