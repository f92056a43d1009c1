#pragma once

#include <vector>

#include "html/html.h"
#include "pages/admin/admin_state.h"
#include "store/query.h"
#include "texts/text.h"

namespace orlune {

struct PageContext;
struct Visit;

/// What the page of a kind of record is called, and its list.
struct RecordTexts {
  Text Title;
  Text ListCaption;
  Text NewEntry;
};

/// What the administration has to know of one kind of record beyond the steps that all kinds share.
/// What reads or writes the database throws DatabaseError. A save or a deletion is one transaction around
/// `Load` and all that follows.
class RecordManager {
 public:
  virtual ~RecordManager() = default;

  virtual const RecordTexts& Texts() const = 0;
  virtual Query<std::vector<RecordChoice>> Records() const = 0;
  /// What the form of `record` offers to choose from besides; asks nothing by default.
  virtual Query<std::vector<RecordChoice>> Choices(const AdminState& /*record*/) const { return {}; }
  /// Fills `record` from the row of its `Id`; false when no row of this kind has it.
  virtual bool Load(Connection& database, AdminState& record) const = 0;
  /// Takes the posted fields over; what may not be changed in the stored record stays.
  virtual void ReadForm(const Visit& visit, AdminState& record) const = 0;
  /// The rows of the form below the list of records.
  virtual Html FieldRows(const PageContext& context, const AdminContent& content) const = 0;
  /// Appends what is wrong with `record`, beyond its display name, to the request's errors.
  virtual void Validate(Visit& visit, const AdminState& record) const = 0;
  /// Writes the record, and brings other rows into line with it.
  virtual void Save(Visit& visit, AdminState& record) const = 0;
  /// Deletes a stored record, and brings other rows into line with the loss.
  virtual void Delete(Connection& database, const AdminState& record) const = 0;
};

}  // namespace orlune
