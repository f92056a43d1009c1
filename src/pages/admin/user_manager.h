#pragma once

#include "pages/admin/record_manager.h"

namespace orlune {

/// Manages the accounts. Login name and groups of the account "admin" cannot be changed, in demo mode neither
/// can its password. Renaming a user updates everything that refers to the name. Deleting a user deletes its
/// events, received messages and group views, and removes it from the group views of others.
class UserManager : public RecordManager {
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
