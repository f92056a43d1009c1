#pragma once

#include <vector>

#include "html/html.h"
#include "pages/admin/admin_state.h"
#include "store/query.h"
#include "texts/text.h"

namespace orlune {

struct PageContext;
struct Visit;

/// The captions of the page of a kind of record.
struct RecordTexts {
  Text Title;
  Text ListCaption;
  Text NewEntry;
};

/// What differs between the kinds of records; the steps themselves are in `admin_page`. Functions that access
/// the database throw DatabaseError. A save or a deletion is one transaction from `Load` on.
class RecordManager {
 public:
  virtual ~RecordManager() = default;

  virtual const RecordTexts& Texts() const = 0;
  virtual Query<std::vector<RecordChoice>> Records() const = 0;
  /// Further choices in the form of `record`; by default none, without a query.
  virtual Query<std::vector<RecordChoice>> Choices(const AdminState& /*record*/) const { return {}; }
  /// Fills `record` from the row with its `Id`; false when there is no such row of this kind.
  virtual bool Load(Connection& database, AdminState& record) const = 0;
  /// Copies the posted fields to `record`, except those that must not be changed.
  virtual void ReadForm(const Visit& visit, AdminState& record) const = 0;
  /// The rows of the form below the list of records.
  virtual Html FieldRows(const PageContext& context, const AdminContent& content) const = 0;
  /// Appends an alert for each invalid value of `record`. Its display name was checked before.
  virtual void Validate(Visit& visit, const AdminState& record) const = 0;
  /// Writes the record, and updates the rows that depend on it.
  virtual void Save(Visit& visit, AdminState& record) const = 0;
  /// Deletes a stored record, and updates or deletes the rows that depend on it.
  virtual void Delete(Connection& database, const AdminState& record) const = 0;
};

}  // namespace orlune
