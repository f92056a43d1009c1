#pragma once

#include "platform/database.h"

namespace orlune {

/// Brings an older database up to date; does nothing to one that is. Never fails: what cannot be added is
/// left.
void UpgradeSchema(Connection& database);

}  // namespace orlune
