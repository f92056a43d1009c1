#pragma once

#include <string_view>
#include <vector>

#include "drivers/dialect/ast.h"

namespace orlune::dialect {

struct FoundColumn {
  const Table* Holder;
  const Column* Definition;
};

/// The tables that one statement names, and the columns to be found in them. Refers to the catalogue.
class Scope {
 public:
  /// The scope of a statement about the table `first`. Throws DatabaseError when the catalogue has no such
  /// table.
  Scope(const Catalogue& catalogue, std::string_view first) : catalogue_(catalogue) { Join(first); }

  void Join(std::string_view table);

  const Table& First() const { return *tables_.front(); }
  const std::vector<const Table*>& Tables() const { return tables_; }

  /// Throws DatabaseError when there is no such column, or one in more than one table.
  FoundColumn Find(const ColumnName& name) const;

 private:
  const Catalogue& catalogue_;
  std::vector<const Table*> tables_;
};

}  // namespace orlune::dialect
