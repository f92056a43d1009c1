#include "pages/admin/file_record_manager.h"

#include <string>

#include "html/form_parts.h"
#include "pages/admin/field_rows.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/field.h"

namespace orlune {

constexpr FileRecordKind kEventTypes{
    {Text::kEventTypesTitle, Text::kCurrentEventTypes, Text::kNewEventType,
     "SELECT TypeID AS ID, TypeName AS PrettyName, FileName AS IntName FROM EventTypes", "EventTypes",
     "TypeID"},
    "TypeName",
    "FileName",
    Text::kEventTypeName,
    Text::kEventTypeFile,
    ""};

constexpr FileRecordKind kColourSchemes{
    {Text::kColourSchemesTitle, Text::kAvailableColourSchemes, Text::kNewColourScheme,
     "SELECT SheetID AS ID, SheetName AS PrettyName, SheetFile AS IntName FROM StyleSheets "
     "ORDER BY SheetName",
     "StyleSheets", "SheetID"},
    "SheetName",
    "SheetFile",
    Text::kColourSchemeName,
    Text::kColourSchemeFile,
    "default.css"};

bool FileRecordManager::HasFixedFile(const AdminState& record) const {
  return !record.Id.empty() && !kind_.FixedFile.empty() && record.StoredIntName == kind_.FixedFile;
}

bool FileRecordManager::Load(const Visit& visit, AdminState& record) const {
  const auto row =
      OpenQuery(visit.Database, Statement("SELECT {}, {} FROM {} WHERE ({} = {})", kind_.NameColumn,
                                          kind_.FileColumn, kind_.Kind.Table, kind_.Kind.Key, record.Id));
  if (!row->Next()) return false;
  record.Name = TextOf(row->Get(0));
  record.IntName = record.StoredIntName = TextOf(row->Get(1));
  return true;
}

void FileRecordManager::ReadForm(const Visit& visit, AdminState& record) const {
  record.Name = visit.Request.FormField("name");
  record.IntName = HasFixedFile(record) ? "" : visit.Request.FormField("intname");
}

Html FileRecordManager::FieldRows(const Visit& visit, const AdminState& record) const {
  Html rows = FieldRow(visit, kind_.NameLabel, TextInput(visit, "name", record.Name));
  rows.Add(FieldRow(visit, kind_.FileLabel,
                    HasFixedFile(record) ? Html("{}", Content(kind_.FixedFile))
                                         : TextInput(visit, "intname", record.IntName)));
  return rows;
}

void FileRecordManager::Validate(Visit& visit, const AdminState& record) const {
  if (record.IntName.empty()) AddAlert(visit, Text::kFileNameMissing);
}

std::vector<ColumnValue> FileRecordManager::Columns(const AdminState& record) const {
  return {{kind_.NameColumn, SqlText(record.Name)}, {kind_.FileColumn, SqlText(record.IntName)}};
}

}  // namespace orlune
