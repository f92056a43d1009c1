#pragma once

#include "platform/passwords.h"
#include "request/session_values.h"
#include "store/calendars.h"

namespace orlune {

struct Visit;

// A session carries the number of its user's account and a stamp of the password. It ends when either
// changes: an account that is deleted and made anew is not entered by an old session, nor one whose password
// was changed because somebody else knew it.

/// Notes the account in the session.
void StampLogin(SessionValues& session, const Passwords& passwords, const Account& account);
/// Whether the session belongs to the account as it is now.
bool IsLoginOf(const SessionValues& session, const Passwords& passwords, const Account& account);

/// Keeps the user's own session valid after the user has changed their password. Throws DatabaseError.
void KeepOwnLogin(Visit& visit);

}  // namespace orlune
