#pragma once

#include <string_view>
#include <vector>

#include "html/html.h"
#include "pages/admin/admin_state.h"
#include "store/database_access.h"
#include "texts/text.h"

namespace orlune {

struct Visit;

/// A kind of record: its texts by their numbers, and where it is stored.
struct RecordKind {
  Text Title;
  Text ListCaption;
  Text NewEntry;
  SqlLiteral Records;  ///< all of them, their columns named ID, PrettyName and IntName
  SqlLiteral Table;
  SqlLiteral Key;
};

/// What the administration has to know of one kind of record beyond the steps that all kinds share.
/// Everything may throw DatabaseError. A save or a deletion is one transaction around `Load` and all that
/// follows.
class RecordManager {
 public:
  virtual ~RecordManager() = default;

  virtual const RecordKind& Kind() const = 0;
  /// Fills `record` from the row of its `Id`; false when no row of this kind has it.
  virtual bool Load(const Visit& visit, AdminState& record) const = 0;
  /// Takes the posted fields over; what may not be changed in the stored record stays.
  virtual void ReadForm(const Visit& visit, AdminState& record) const = 0;
  /// The rows of the form below the list of records.
  virtual Html FieldRows(const Visit& visit, const AdminState& record) const = 0;
  /// Appends what is wrong with `record`, beyond its display name, to the request's errors.
  virtual void Validate(Visit& visit, const AdminState& record) const = 0;
  /// The columns to write, for a new record with the defaults of those that are not on the form.
  virtual std::vector<ColumnValue> Columns(const AdminState& record) const = 0;
  /// Brings other rows into line with a row just written.
  virtual void AfterSave(Connection& /*database*/, const AdminState& /*record*/) const {}
  /// Brings other rows into line with the loss of the record called `name`.
  virtual void AfterDelete(Connection& /*database*/, std::string_view /*name*/) const {}
};

}  // namespace orlune
