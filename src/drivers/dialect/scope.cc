#include "drivers/dialect/scope.h"

#include <string>

#include "platform/database.h"

namespace orlune::dialect {

void Scope::Join(std::string_view table) {
  const Table* found = catalogue_.Find(table);
  if (found == nullptr) throw DatabaseError("no table " + std::string(table));
  tables_.push_back(found);
}

FoundColumn Scope::Find(const ColumnName& name) const {
  FoundColumn found{nullptr, nullptr};
  for (const Table* table : tables_) {
    if (!name.Table.empty() && !SameName(name.Table, table->Name)) continue;
    const Column* column = table->Find(name.Name);
    if (column == nullptr) continue;
    if (found.Definition != nullptr)
      throw DatabaseError("column " + name.Name + ": expected its table, as two have it");
    found = {table, column};
  }
  if (found.Definition == nullptr) throw DatabaseError("no column " + name.Name);
  return found;
}

}  // namespace orlune::dialect
