#pragma once

#include <memory>
#include <string_view>

#include "drivers/dialect/translation.h"
#include "drivers/postgresql/link.h"
#include "platform/database.h"

namespace orlune::postgresql {

/// The rows of a query, all of which have come.
class ResultRows : public ResultSet {
 public:
  ResultRows(std::shared_ptr<const dialect::Translation> translation, std::shared_ptr<const Reply> reply);

  bool Next() override;
  int Column(std::string_view name) const override;
  Value Get(int column) const override;

 private:
  std::shared_ptr<const dialect::Translation> translation_;
  std::shared_ptr<const Reply> reply_;
  int row_ = -1;
};

/// A field of a result as text; "" for Null.
std::string_view FieldText(const ResultHandle& result, int row, int column);

}  // namespace orlune::postgresql
