#include "drivers/sqlite/result_sets.h"

namespace orlune::sqlite {

bool ReadRows::Next() {
  if (next_ == rows_->RowCount()) return false;
  ++next_;
  return true;
}

RunningRows::RunningRows(std::shared_ptr<Lease> lease, RunningStatement running,
                         std::shared_ptr<const RowBlock> first)
    : lease_(std::move(lease)), running_(std::move(running)), first_(std::move(first)) {}

bool RunningRows::Next() {
  if (!running_) return false;
  if (next_ <= first_->RowCount()) ++next_;
  if (next_ <= first_->RowCount() || Step(running_->Handle())) return true;
  running_.reset();
  lease_.reset();
  return false;
}

Value RunningRows::Get(int column) const {
  if (!running_) return {};
  if (next_ <= first_->RowCount()) return first_->Field(next_ - 1, column);
  return ReadField(running_->Handle(), column,
                   running_->Origin()->Translation.Columns[static_cast<std::size_t>(column)].Type);
}

}  // namespace orlune::sqlite
