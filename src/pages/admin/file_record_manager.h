#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "pages/admin/record_manager.h"

namespace orlune {

/// A kind of record that consists of a display name and a file: its texts, and its functions of `store`.
struct FileRecordKind {
  RecordTexts Texts;
  Text NameLabel;
  Text FileLabel;
  std::size_t MostNameCharacters;
  std::size_t MostFileCharacters;
  std::string_view FixedFile;  ///< the record with this file cannot be changed; "" for none

  Query<std::vector<RecordChoice>> (*Records)();
  Query<std::optional<NamedFile>> (*WithId)(std::int64_t id);
  void (*Save)(Connection& database, std::optional<std::int64_t> id, const NamedFile& record);
  void (*Delete)(Connection& database, std::int64_t id);
};

/// The event types with their icons.
extern const FileRecordKind kEventTypes;
/// The colour schemes with their style sheets.
extern const FileRecordKind kColourSchemes;

/// Manages the records of one kind. No other rows depend on them.
class FileRecordManager : public RecordManager {
 public:
  /// `kind` must outlive the manager.
  explicit FileRecordManager(const FileRecordKind& kind) : kind_(kind) {}

  const RecordTexts& Texts() const override { return kind_.Texts; }
  Query<std::vector<RecordChoice>> Records() const override { return kind_.Records(); }
  bool Load(Connection& database, AdminState& record) const override;
  void ReadForm(const Visit& visit, AdminState& record) const override;
  Html FieldRows(const PageContext& context, const AdminContent& content) const override;
  void Validate(Visit& visit, const AdminState& record) const override;
  void Save(Visit& visit, AdminState& record) const override;
  void Delete(Connection& database, const AdminState& record) const override;

 private:
  bool HasFixedFile(const AdminState& record) const;

  const FileRecordKind& kind_;
};

}  // namespace orlune
