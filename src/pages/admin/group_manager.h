#pragma once

#include "pages/admin/record_manager.h"

namespace orlune {

/// The groups. Their members and administrators are kept in the users' lists, which every save brings into
/// line. The group "default" keeps its name and has no list of its own. A deleted group leaves the users'
/// lists and takes its events along.
class GroupManager : public RecordManager {
 public:
  const RecordTexts& Texts() const override;
  Query<std::vector<RecordChoice>> Records() const override;
  Query<std::vector<RecordChoice>> Choices(const AdminState& record) const override;
  bool Load(Connection& database, AdminState& record) const override;
  void ReadForm(const Visit& visit, AdminState& record) const override;
  Html FieldRows(const PageContext& context, const AdminContent& content) const override;
  void Validate(Visit& visit, const AdminState& record) const override;
  void Save(Visit& visit, AdminState& record) const override;
  void Delete(Connection& database, const AdminState& record) const override;
};

}  // namespace orlune
