#pragma once

#include "pages/admin/record_manager.h"

namespace orlune {

/// The accounts. The account "admin" keeps its login name and its empty lists of groups, in a demonstration
/// its password as well. A changed login name moves everything that belongs to it; a deleted account takes
/// its events, its received messages, its group views and its places in those of others along.
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
