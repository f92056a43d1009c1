#include "commands/copy.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "commands/current_tables.h"
#include "commands/table_copy.h"
#include "store/schema_upgrade.h"
#include "store/sharing_tables.h"

namespace orlune {
namespace {

/// A copy's source as its target names it.
std::string LastingName(const DatabaseAddress& address) {
  return address.IsFile() ? std::filesystem::weakly_canonical(address.Target()).string()
                          : address.Displayed();
}

/// Another spelling of the same host is not recognised, but then the target is not empty.
bool IsSameDatabase(const DatabaseAddress& one, const DatabaseAddress& other) {
  std::error_code missing;
  return LastingName(one) == LastingName(other) ||
         std::filesystem::equivalent(one.Target(), other.Target(), missing);
}

bool HasColumn(const dialect::Catalogue& catalogue, std::string_view table, std::string_view column) {
  const dialect::Table* found = catalogue.Find(table);
  return found != nullptr && found->Find(column) != nullptr;
}

/// Whether `catalogue` has every table and column of `wanted`.
bool Covers(const dialect::Catalogue& catalogue, const dialect::Catalogue& wanted) {
  return std::all_of(wanted.Tables.begin(), wanted.Tables.end(), [&](const dialect::Table& table) {
    return std::all_of(table.Columns.begin(), table.Columns.end(), [&](const dialect::Column& column) {
      return HasColumn(catalogue, table.Name, column.Name);
    });
  });
}

bool HasAnyAddition(const dialect::Catalogue& catalogue) {
  for (const dialect::Table& table : TablesInForm(SchemaForm::kCurrent).Tables) {
    for (const dialect::Column& column : table.Columns) {
      if (IsAddedByUpgrade(table.Name, column.Name) && HasColumn(catalogue, table.Name, column.Name))
        return true;
    }
  }
  return false;
}

/// The sharing tables that a copy of `source` has as well.
std::vector<dialect::Table> CopiedSharingTables(const dialect::Catalogue& source) {
  std::vector<dialect::Table> copied;
  for (dialect::Table& table : SharingTables().Tables) {
    if (!IsOfOneDatabase(table.Name) && Covers(source, {{table}})) copied.push_back(std::move(table));
  }
  return copied;
}

class Copy {
 public:
  Copy(const NamedDatabase& from, const NamedDatabase& to, std::ostream& output, CopyProgress& progress)
      : from_(from), to_(to), output_(output), progress_(progress) {}

  void Run();

 private:
  template <class... Parts>
  [[noreturn]] static void Refuse(fmt::format_string<Parts...> format, Parts&&... parts) {
    throw std::runtime_error(fmt::format(format, std::forward<Parts>(parts)...));
  }

  void OpenSource();
  SchemaForm FormOf(const dialect::Catalogue& catalogue) const;
  void OpenTarget();
  void MarkAsIncomplete();
  bool Compare();
  void NoteLostFields(const LostFields& lost);
  void NoteWhatIsNotCopied();

  const std::string& FromName() const { return from_.Address.Displayed(); }
  const std::string& ToName() const { return to_.Address.Displayed(); }

  const NamedDatabase& from_;
  const NamedDatabase& to_;
  std::ostream& output_;
  CopyProgress& progress_;
  std::unique_ptr<DatabaseMaintenance> source_;
  std::unique_ptr<DatabaseMaintenance> target_;
  SchemaForm form_ = SchemaForm::kCurrent;
  dialect::Catalogue tables_;
  bool hasSharingTables_ = false;
};

void Copy::Run() {
  if (IsSameDatabase(from_.Address, to_.Address))
    Refuse("cannot copy {} into itself; name another target", FromName());
  OpenSource();
  OpenTarget();
  for (const dialect::Table& table : tables_.Tables) CopyTable(table, *source_, *target_, progress_);
  NoteWhatIsNotCopied();
  if (!Compare()) {
    Refuse(
        "{} differs from its source, which may have changed meanwhile; stop the servers that use the source, "
        "delete the copy, and copy again",
        ToName());
  }
  target_->MarkCopyComplete();
  if (form_ == SchemaForm::kBase) UpgradeSchema(*to_.Engine.Connect(to_.Address));
  output_ << "copied " << FromName() << " to " << ToName() << "\n";
}

void Copy::OpenSource() {
  source_ = from_.Engine.OpenToRead(from_.Address);
  if (const auto origin = source_->UnfinishedCopySource())
    Refuse("{} is itself an incomplete copy of {}; finish that copy first", FromName(), *origin);
  const dialect::Catalogue present = source_->Tables();
  form_ = FormOf(present);
  tables_ = TablesInForm(form_);
  for (dialect::Table& table : CopiedSharingTables(present)) {
    tables_.Tables.push_back(std::move(table));
    hasSharingTables_ = true;
  }
}

SchemaForm Copy::FormOf(const dialect::Catalogue& catalogue) const {
  if (Covers(catalogue, TablesInForm(SchemaForm::kCurrent))) return SchemaForm::kCurrent;
  if (HasAnyAddition(catalogue) || !Covers(catalogue, TablesInForm(SchemaForm::kBase))) {
    Refuse("{0} lacks tables or columns; \"orlune check {0}\" lists them", FromName());
  }
  return SchemaForm::kBase;
}

void Copy::OpenTarget() {
  target_ = to_.Engine.OpenToFill(to_.Address);
  const auto origin = target_->UnfinishedCopySource();
  if (!origin) {
    MarkAsIncomplete();
  } else if (*origin != LastingName(from_.Address)) {
    Refuse("{} is an incomplete copy of {}; finish that copy, or delete it", ToName(), *origin);
  } else {
    output_ << "resuming the copy\n";
  }
  if (!Covers(target_->Tables(), tables_))
    Refuse("{} has other tables than its source; delete it, and copy again", ToName());
}

void Copy::MarkAsIncomplete() {
  const dialect::Catalogue present = target_->Tables();
  for (const dialect::Catalogue& ours : {TablesInForm(SchemaForm::kCurrent), tables_}) {
    for (const dialect::Table& table : ours.Tables) {
      if (present.Find(table.Name) != nullptr && target_->RowCount(table.Name) > 0)
        Refuse("{} is not empty: table {} has rows; name another target", ToName(), table.Name);
    }
  }
  if (form_ == SchemaForm::kCurrent) UpgradeSchema(*to_.Engine.Connect(to_.Address));
  if (hasSharingTables_) CreateSharingTables(*to_.Engine.Connect(to_.Address));
  target_->MarkUnfinishedCopy(LastingName(from_.Address));
}

bool Copy::Compare() {
  constexpr std::string_view kLine = "{:<{}}{:>12}{:>12}  {}\n";
  const int width = hasSharingTables_ ? 18 : 14;
  LostFields lost;
  LostFields ofTarget;
  bool isEqual = true;
  std::string lines = fmt::format(kLine, "table", width, "rows", "copied", "checksum");
  for (const dialect::Table& table : tables_.Tables) {
    const TableSummary source = Summarise(table, *source_, "source", lost, progress_);
    const TableSummary target = Summarise(table, *target_, "copy", ofTarget, progress_);
    const std::string verdict = source == target ? "same" : target.Checksum + "  DIFFERENT";
    lines +=
        fmt::format(kLine, table.Name, width, source.Rows, target.Rows, source.Checksum + "  " + verdict);
    isEqual = isEqual && source == target;
  }
  output_ << lines;
  NoteLostFields(lost);
  return isEqual;
}

void Copy::NoteLostFields(const LostFields& lost) {
  for (const auto& [place, count] : lost)
    output_ << fmt::format(
        "note: {} unreadable {} of {}.{} replaced in the copy; \"orlune check {}\" lists them\n", count,
        count == 1 ? "value" : "values", place.first, place.second, FromName());
}

void Copy::NoteWhatIsNotCopied() {
  for (const dialect::Table& table : source_->Tables().Tables) {
    if (dialect::SameName(table.Name, kSessionsTable) || IsOfOneDatabase(table.Name)) continue;
    const dialect::Table* copied = tables_.Find(table.Name);
    if (copied == nullptr) {
      output_ << fmt::format("note: table {} is not part of a calendar, not copied\n", table.Name);
      continue;
    }
    for (const dialect::Column& column : table.Columns) {
      if (copied->Find(column.Name) == nullptr)
        output_ << fmt::format("note: column {}.{} is not part of a calendar, not copied\n", table.Name,
                               column.Name);
    }
  }
}

}  // namespace

void CopyDatabase(const NamedDatabase& from, const NamedDatabase& to, std::ostream& output,
                  CopyProgress& progress) {
  Copy(from, to, output, progress).Run();
}

}  // namespace orlune
