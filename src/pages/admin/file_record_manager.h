#pragma once

#include "pages/admin/record_manager.h"
#include "texts/text.h"

namespace orlune {

/// A kind of record that is a display name and a file; its texts by their numbers.
struct FileRecordKind {
  RecordKind Kind;
  SqlLiteral NameColumn;
  SqlLiteral FileColumn;
  Text NameLabel;
  Text FileLabel;
  std::string_view FixedFile;  ///< the record of this file keeps it and cannot be saved; "" for none
};

/// The event types with their icons.
extern const FileRecordKind kEventTypes;
/// The colour schemes with their style sheets.
extern const FileRecordKind kColourSchemes;

/// The records of one such kind. Nothing else depends on them.
class FileRecordManager : public RecordManager {
 public:
  /// `kind` outlives the manager.
  explicit FileRecordManager(const FileRecordKind& kind) : kind_(kind) {}

  const RecordKind& Kind() const override { return kind_.Kind; }
  bool Load(const Visit& visit, AdminState& record) const override;
  void ReadForm(const Visit& visit, AdminState& record) const override;
  Html FieldRows(const Visit& visit, const AdminState& record) const override;
  void Validate(Visit& visit, const AdminState& record) const override;
  std::vector<ColumnValue> Columns(const AdminState& record) const override;

 private:
  bool HasFixedFile(const AdminState& record) const;

  const FileRecordKind& kind_;
};

}  // namespace orlune
