#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drivers/dialect/catalogue.h"

struct sqlite3;

namespace orlune::sqlite {

/// What happens in a file besides what statements say.
class Triggers {
 public:
  Triggers() = default;
  /// Reads those of the file. Throws DatabaseError.
  Triggers(sqlite3* database, const dialect::Catalogue& catalogue);

  /// Whether the file has each of ours for which the tables are there.
  bool AreComplete() const { return areComplete_; }
  /// Whether it has others, which may write anywhere.
  bool HasOthers() const { return hasOthers_; }
  /// Adds the tables that ours write to when one of `tables` is written to.
  std::vector<std::string> WithWritten(std::vector<std::string> tables) const;

 private:
  struct Effect {
    std::string Table;
    std::vector<std::string> Written;
  };

  std::vector<Effect> effects_;
  bool areComplete_ = true;
  bool hasOthers_ = false;
};

/// Throws DatabaseError.
std::vector<std::string> NamesOfMissingTriggers(sqlite3* database, const dialect::Catalogue& catalogue);

/// Creates or replaces the missing triggers of ours. Throws DatabaseError.
void CreateMissingTriggers(sqlite3* database, const dialect::Catalogue& catalogue);

/// Drops all triggers of ours. Throws DatabaseError.
void DropTriggers(sqlite3* database, const dialect::Catalogue& catalogue);

}  // namespace orlune::sqlite
