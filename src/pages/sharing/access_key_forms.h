#pragma once

#include <optional>

#include "pages/sharing/sharing_form.h"

namespace orlune {

struct Visit;

// The forms that make and revoke the visitor's keys; see `ShowSharingPage` for their fields. Throw
// DatabaseError.

/// Whether the visitor has a login of their own. Where everybody uses one account, keys would let everybody
/// stay in it, and revoke those of others.
bool MayHaveKeys(const PageContext& context);

/// Makes a key. Nothing, with an alert, when the form is not right.
std::optional<NewKey> MakePostedAppPassword(Visit& visit);
std::optional<NewKey> MakePostedSecretLink(Visit& visit, const SharedCalendar& calendar);

void RevokePostedAppPassword(Visit& visit);
void RevokePostedSecretLink(Visit& visit);

}  // namespace orlune
