#include "pages/admin/file_record_manager.h"

#include "html/form_parts.h"
#include "request/field_limits.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/event_types.h"
#include "store/style_sheets.h"

namespace orlune {

constexpr FileRecordKind kEventTypes{
    .Texts = {Text::kEventTypesTitle, Text::kCurrentEventTypes, Text::kNewEventType},
    .NameLabel = Text::kEventTypeName,
    .FileLabel = Text::kEventTypeFile,
    .MostNameCharacters = 50,
    .MostFileCharacters = 50,
    .FixedFile = "",
    .Records = EventTypeRecords,
    .WithId = EventTypeWithId,
    .Save = SaveEventType,
    .Delete = DeleteEventType,
};

constexpr FileRecordKind kColourSchemes{
    .Texts = {Text::kColourSchemesTitle, Text::kAvailableColourSchemes, Text::kNewColourScheme},
    .NameLabel = Text::kColourSchemeName,
    .FileLabel = Text::kColourSchemeFile,
    .MostNameCharacters = 50,
    .MostFileCharacters = 255,
    .FixedFile = "default.css",
    .Records = StyleSheetRecords,
    .WithId = StyleSheetWithId,
    .Save = SaveStyleSheet,
    .Delete = DeleteStyleSheet,
};

bool FileRecordManager::HasFixedFile(const AdminState& record) const {
  return record.Id && !kind_.FixedFile.empty() && record.StoredIntName == kind_.FixedFile;
}

bool FileRecordManager::Load(Connection& database, AdminState& record) const {
  const auto stored = Ask(database, kind_.WithId(record.Id.value()));
  if (!stored) return false;
  record.Name = stored->Name;
  record.IntName = record.StoredIntName = stored->File;
  return true;
}

void FileRecordManager::ReadForm(const Visit& visit, AdminState& record) const {
  record.Name = visit.Request.FormField("name");
  record.IntName = HasFixedFile(record) ? "" : visit.Request.FormField("intname");
}

Html FileRecordManager::FieldRows(const PageContext& context, const AdminContent& content) const {
  const AdminState& record = content.Record;
  return Html("{}{}", FormRow(context, kind_.NameLabel, TextInput(context, "name", record.Name)),
              FormRow(context, kind_.FileLabel,
                      HasFixedFile(record) ? Html("{}", Content(kind_.FixedFile))
                                           : TextInput(context, "intname", record.IntName)));
}

void FileRecordManager::Validate(Visit& visit, const AdminState& record) const {
  if (record.IntName.empty()) AddAlert(visit, Text::kFileNameMissing);
  CheckLengths(visit, {{kind_.NameLabel, record.Name, kind_.MostNameCharacters, record.StoredName},
                       {kind_.FileLabel, record.IntName, kind_.MostFileCharacters, record.StoredIntName}});
}

void FileRecordManager::Save(Visit& visit, AdminState& record) const {
  kind_.Save(visit.Database, record.Id, {record.Name, record.IntName});
}

void FileRecordManager::Delete(Connection& database, const AdminState& record) const {
  kind_.Delete(database, record.Id.value());
}

}  // namespace orlune
