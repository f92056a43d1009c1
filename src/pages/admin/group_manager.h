#pragma once

#include "pages/admin/record_manager.h"

namespace orlune {

/// Manages the groups. Members and administrators are stored in the users' lists, which every save updates.
/// The group "default" cannot be renamed, and its members cannot be chosen. Deleting a group deletes its
/// events and removes it from the users' lists.
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
