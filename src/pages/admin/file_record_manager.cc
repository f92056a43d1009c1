#include "pages/admin/file_record_manager.h"

#include <string>

#include "html/form_parts.h"
#include "pages/admin/field_rows.h"
#include "request/component_state.h"
#include "request/texts.h"
#include "store/field.h"

namespace orlune {

constexpr FileRecordKind kEventTypes{
    {710, 711, 712, "SELECT TypeID AS ID, TypeName AS PrettyName, FileName AS IntName FROM EventTypes",
     "EventTypes", "TypeID"},
    "TypeName",
    "FileName",
    713,
    714,
    ""};

constexpr FileRecordKind kColourSchemes{
    {700, 701, 702,
     "SELECT SheetID AS ID, SheetName AS PrettyName, SheetFile AS IntName FROM StyleSheets "
     "ORDER BY SheetName",
     "StyleSheets", "SheetID"},
    "SheetName",
    "SheetFile",
    703,
    704,
    "default.css"};

bool FileRecordManager::HasFixedFile(const AdminState& record) const {
  return !record.Id.empty() && !kind_.FixedFile.empty() && record.StoredIntName == kind_.FixedFile;
}

bool FileRecordManager::Load(const ComponentState& state, AdminState& record) const {
  const auto row =
      OpenQuery(*state.Database, Statement("SELECT {}, {} FROM {} WHERE ({} = {})", kind_.NameColumn,
                                           kind_.FileColumn, kind_.Kind.Table, kind_.Kind.Key, record.Id));
  if (!row->Next()) return false;
  record.Name = TextOf(row->Get(0));
  record.IntName = record.StoredIntName = TextOf(row->Get(1));
  return true;
}

void FileRecordManager::ReadForm(const ComponentState& state, AdminState& record) const {
  record.Name = state.Context.Request->FormField("name");
  record.IntName = HasFixedFile(record) ? "" : state.Context.Request->FormField("intname");
}

Html FileRecordManager::FieldRows(const ComponentState& state, const AdminState& record) const {
  Html rows = FieldRow(state, kind_.NameLabel, TextInput(state, "name", record.Name));
  rows.Add(FieldRow(state, kind_.FileLabel,
                    HasFixedFile(record) ? Html("{}", Content(kind_.FixedFile))
                                         : TextInput(state, "intname", record.IntName)));
  return rows;
}

void FileRecordManager::Validate(ComponentState& state, const AdminState& record) const {
  if (record.IntName.empty()) AddAlert(state, 853);
}

std::vector<ColumnValue> FileRecordManager::Columns(const AdminState& record) const {
  return {{kind_.NameColumn, SqlText(record.Name)}, {kind_.FileColumn, SqlText(record.IntName)}};
}

}  // namespace orlune
