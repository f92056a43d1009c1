#pragma once

#include <string>
#include <vector>

#include "drivers/dialect/catalogue.h"
#include "drivers/postgresql/link.h"

namespace orlune::postgresql {

/// Asks the server only when their tables are there. Throws DatabaseError.
std::vector<std::string> NamesOfMissingTriggers(Link& link, const dialect::Catalogue& tables);

/// The statements that create or replace the triggers that the schema lacks. Asks the server only when their
/// tables are there. Throws DatabaseError.
std::vector<std::string> CreationOfMissingTriggers(Link& link, const dialect::Catalogue& tables);

/// The statements that drop all triggers of ours.
std::vector<std::string> RemovalOfTriggers(const dialect::Catalogue& tables);

}  // namespace orlune::postgresql
