#include "commands/copy.h"

#include <algorithm>
#include <filesystem>
#include <iomanip>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <vector>

#include "commands/current_tables.h"
#include "commands/table_copy.h"
#include "store/schema_upgrade.h"

namespace orlune {
namespace {

/// A copy's source as the target remembers it.
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

/// One copying; serves once.
class Copy {
 public:
  Copy(const NamedDatabase& from, const NamedDatabase& to, std::ostream& output, CopyProgress& progress)
      : from_(from), to_(to), output_(output), progress_(progress) {}

  void Run();

 private:
  [[noreturn]] static void Refuse(const std::string& sentence) { throw std::runtime_error(sentence); }

  void OpenSource();
  SchemaForm FormOf(const dialect::Catalogue& catalogue) const;
  void OpenTarget();
  void BeginAnew();
  bool Compare();
  void TellLosses(const LostFields& lost);
  void TellWhatStays();

  const NamedDatabase& from_;
  const NamedDatabase& to_;
  std::ostream& output_;
  CopyProgress& progress_;
  std::unique_ptr<DatabaseMaintenance> source_;
  std::unique_ptr<DatabaseMaintenance> target_;
  SchemaForm form_ = SchemaForm::kCurrent;
  dialect::Catalogue tables_;
};

void Copy::Run() {
  if (IsSameDatabase(from_.Address, to_.Address)) Refuse("A database cannot be copied into itself.");
  OpenSource();
  OpenTarget();
  for (const dialect::Table& table : tables_.Tables) CopyTable(table, *source_, *target_, progress_);
  TellWhatStays();
  if (!Compare()) {
    Refuse(
        "The copy differs from its source, which was perhaps written to meanwhile. Stop the servers that use "
        "it, remove " +
        to_.Address.Displayed() + ", and copy again; until then the copy stays marked as unfinished.");
  }
  target_->MarkCopyComplete();
  if (form_ == SchemaForm::kBase) UpgradeSchema(*to_.Engine.Connect(to_.Address));
  output_ << "copied " << from_.Address.Displayed() << " to " << to_.Address.Displayed() << "\n";
}

void Copy::OpenSource() {
  source_ = from_.Engine.OpenToRead(from_.Address);
  if (source_->UnfinishedCopySource()) {
    Refuse("The database " + from_.Address.Displayed() + " is itself an unfinished copy of " +
           *source_->UnfinishedCopySource() + "; finish that one first.");
  }
  form_ = FormOf(source_->Tables());
  tables_ = TablesInForm(form_);
}

SchemaForm Copy::FormOf(const dialect::Catalogue& catalogue) const {
  if (Covers(catalogue, TablesInForm(SchemaForm::kCurrent))) return SchemaForm::kCurrent;
  if (HasAnyAddition(catalogue) || !Covers(catalogue, TablesInForm(SchemaForm::kBase))) {
    Refuse("The database " + from_.Address.Displayed() + " lacks tables or columns; \"orlune check " +
           from_.Address.Displayed() + "\" tells which.");
  }
  return SchemaForm::kBase;
}

void Copy::OpenTarget() {
  target_ = to_.Engine.OpenToFill(to_.Address);
  const auto begun = target_->UnfinishedCopySource();
  if (!begun) {
    BeginAnew();
  } else if (*begun != LastingName(from_.Address)) {
    Refuse("The database " + to_.Address.Displayed() + " is an unfinished copy of " + *begun +
           "; finish that one, or remove it.");
  } else {
    output_ << "going on with the copy that was begun\n";
  }
  if (!Covers(target_->Tables(), tables_)) {
    Refuse("The database " + to_.Address.Displayed() +
           " has other tables than its source has now; remove it, and copy again.");
  }
}

void Copy::BeginAnew() {
  const dialect::Catalogue present = target_->Tables();
  for (const dialect::Table& table : TablesInForm(SchemaForm::kCurrent).Tables) {
    if (present.Find(table.Name) != nullptr && target_->RowCount(table.Name) > 0) {
      Refuse("The database " + to_.Address.Displayed() + " is not empty: the table " + table.Name +
             " has rows. It was left as it was; name another one.");
    }
  }
  if (form_ == SchemaForm::kCurrent) UpgradeSchema(*to_.Engine.Connect(to_.Address));
  target_->MarkUnfinishedCopy(LastingName(from_.Address));
}

bool Copy::Compare() {
  LostFields lost;
  LostFields ofTarget;
  bool isEqual = true;
  std::vector<std::string> lines;
  for (const dialect::Table& table : tables_.Tables) {
    const TableSummary source = Summarise(table, *source_, "source", lost, progress_);
    const TableSummary target = Summarise(table, *target_, "copy", ofTarget, progress_);
    std::ostringstream line;
    line << std::left << std::setw(14) << table.Name << std::right << std::setw(12) << source.Rows
         << std::setw(12) << target.Rows << "  " << source.Checksum << "  ";
    line << (source == target ? "same" : target.Checksum + "  DIFFERENT") << "\n";
    lines.push_back(line.str());
    isEqual = isEqual && source == target;
  }
  output_ << std::left << std::setw(14) << "table" << std::right << std::setw(12) << "rows" << std::setw(12)
          << "copied"
          << "  checksum\n";
  for (const std::string& line : lines) output_ << line;
  TellLosses(lost);
  return isEqual;
}

void Copy::TellLosses(const LostFields& lost) {
  for (const auto& [place, count] : lost) {
    output_ << "note: " << count << (count == 1 ? " value" : " values") << " of " << place.first << "."
            << place.second << " cannot be read and " << (count == 1 ? "is" : "are")
            << " missing or mended in the copy; \"orlune check " << from_.Address.Displayed()
            << "\" tells which\n";
  }
}

void Copy::TellWhatStays() {
  for (const dialect::Table& table : source_->Tables().Tables) {
    if (dialect::SameName(table.Name, kSessionsTable)) continue;
    const dialect::Table* copied = tables_.Find(table.Name);
    if (copied == nullptr) {
      output_ << "note: the table " << table.Name << " is none of the calendar's and was not copied\n";
      continue;
    }
    for (const dialect::Column& column : table.Columns) {
      if (copied->Find(column.Name) == nullptr) {
        output_ << "note: the column " << table.Name << "." << column.Name << " was not copied\n";
      }
    }
  }
}

}  // namespace

void CopyDatabase(const NamedDatabase& from, const NamedDatabase& to, std::ostream& output,
                  CopyProgress& progress) {
  Copy(from, to, output, progress).Run();
}

}  // namespace orlune
