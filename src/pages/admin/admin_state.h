#pragma once

#include <string>

namespace orlune {

/// The record that one request of the administration works on: as it is stored, and as it was typed once the
/// posted form is read. The lists are joined with ", ".
struct AdminState {
  std::string Id;             ///< "" for a new record
  std::string Name;           ///< for display
  std::string IntName;        ///< login name, group name or file name
  std::string StoredIntName;  ///< the same before the form is read; "" for a new record
  std::string Password;
  std::string Hide;  ///< "yes", "no", or "" while it is undecided
  std::string Memberships;
  std::string Adminships;
};

}  // namespace orlune
