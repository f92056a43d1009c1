#pragma once

#include "platform/database.h"

namespace orlune {

/// Upgrades the schema of an older database; does nothing to a current one. Never fails: a step that fails is
/// skipped.
void UpgradeSchema(Connection& database);

}  // namespace orlune
