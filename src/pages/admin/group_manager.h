#pragma once

#include "pages/admin/record_manager.h"

namespace orlune {

/// The groups. Their members and administrators are kept in the users' lists, which every save brings into
/// line. The group "default" keeps its name and has no list of its own. A deleted group leaves the users'
/// lists and takes its events along.
class GroupManager : public RecordManager {
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
