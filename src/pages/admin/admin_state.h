#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/record_choice.h"

namespace orlune {

/// The record that one request of the administration works on: as it is stored, and as it was typed once the
/// posted form is read. The lists are joined with ", ".
struct AdminState {
  std::optional<std::int64_t> Id;  ///< nothing for a new record
  std::string Name;                ///< for display
  std::string StoredName;          ///< before the form is read; "" for a new record
  std::string IntName;             ///< login name, group name or file name
  std::string StoredIntName;       ///< the same before the form is read; "" for a new record
  std::string Password;
  std::string StoredPassword;     ///< before the form is read; plain or hashed
  std::string GeneratedPassword;  ///< shown once after it was stored, else ""
  std::string Hide;               ///< "yes", "no", or "" while it is undecided
  std::string Memberships;
  std::string Adminships;
};

/// What a manager's page shows.
struct AdminContent {
  AdminState Record;
  std::vector<RecordChoice> Records;
  std::vector<RecordChoice> Choices;  ///< the groups of a user, or the users of a group, to choose from
};

}  // namespace orlune
