#pragma once

#include "pages/admin/record_manager.h"

namespace orlune {

/// The accounts. The account "admin" keeps its login name and its empty lists of groups, in a demonstration
/// its password as well. A changed login name moves everything that belongs to it; a deleted account takes
/// its events, its received messages, its group views and its places in those of others along.
class UserManager : public RecordManager {
 public:
  const RecordKind& Kind() const override;
  bool Load(const Visit& visit, AdminState& record) const override;
  void ReadForm(const Visit& visit, AdminState& record) const override;
  Html FieldRows(const Visit& visit, const AdminState& record) const override;
  void Validate(Visit& visit, const AdminState& record) const override;
  std::vector<ColumnValue> Columns(const AdminState& record) const override;
  void AfterSave(Connection& database, const AdminState& record) const override;
  void AfterDelete(Connection& database, std::string_view name) const override;
};

}  // namespace orlune
