#include "drivers/sqlite/file_history.h"

#include <algorithm>
#include <bit>

namespace orlune::sqlite {

std::uint64_t FileState::LastChange(TableSet tables) const {
  std::uint64_t last = 0;
  for (; tables != 0; tables &= tables - 1)
    last = std::max(last, lastChanges_[static_cast<std::size_t>(std::countr_zero(tables))]);
  return last;
}

FileHistory::Committing::Committing(FileHistory& history) : history_(history) {
  const std::lock_guard lock(history_.mutex_);
  ++history_.committing_;
}

FileHistory::Committing::~Committing() {
  const std::lock_guard lock(history_.mutex_);
  --history_.committing_;
}

void FileHistory::KeepOpen(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout) {
  const std::lock_guard lock(mutex_);
  if (open_) return;
  open_ = OpenExisting(file, busyTimeout);
  // A file counts as open from the first time on that it was read with its log.
  Run(open_.get(), "PRAGMA schema_version");
}

std::shared_ptr<const FileState> FileHistory::StateOf(const WalHeader& header) {
  const std::lock_guard lock(mutex_);
  auto known = Find(header);
  if (known || committing_ > 0) return known;
  return Add(header, {}, kAllTables);
}

void FileHistory::AddCommit(const WalHeader& before, const WalHeader& after, TableSet written) {
  const std::lock_guard lock(mutex_);
  auto origin = Find(before);
  if (!origin) origin = Add(before, {}, kAllTables);
  if (!Find(after)) Add(after, *origin, written);
}

TableSet FileHistory::SetOf(std::span<const std::string> tables) {
  constexpr std::size_t kLastBit = 63;
  const std::lock_guard lock(mutex_);
  TableSet set = 0;
  for (const std::string& table : tables) {
    const auto found = std::find(tables_.begin(), tables_.end(), table);
    const auto position = static_cast<std::size_t>(found - tables_.begin());
    if (found == tables_.end() && position < kLastBit) tables_.push_back(table);
    set |= TableSet{1} << std::min(position, kLastBit);
  }
  return set;
}

std::shared_ptr<const FileState> FileHistory::Find(const WalHeader& header) const {
  const auto hasHeader = [&header](const KnownState& known) { return known.Header == header; };
  const auto found = std::find_if(states_.begin(), states_.end(), hasHeader);
  return found == states_.end() ? nullptr : found->State;
}

/// Takes the place of the oldest state.
std::shared_ptr<const FileState> FileHistory::Add(const WalHeader& header, FileState state,
                                                  TableSet changed) {
  ++lastNumber_;
  for (; changed != 0; changed &= changed - 1)
    state.lastChanges_[static_cast<std::size_t>(std::countr_zero(changed))] = lastNumber_;
  KnownState& added = states_[lastNumber_ % kMostStates];
  added = {header, std::make_shared<const FileState>(state)};
  return added.State;
}

}  // namespace orlune::sqlite
