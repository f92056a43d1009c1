#pragma once

#include "platform/database.h"
#include "platform/passwords.h"

namespace orlune {

struct HashedPasswords {
  int Now = 0;      ///< hashed by this call
  int Before = 0;   ///< hashed already
  int Without = 0;  ///< accounts without a password, which are left as they are
};

/// Replaces the passwords in plain of all users by hashes. Servers may be running. Throws DatabaseError.
HashedPasswords HashPasswords(Connection& database, Passwords& passwords);

}  // namespace orlune
