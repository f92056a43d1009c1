#include "drivers/dialect/catalogue.h"

#include <algorithm>

#include "base/ascii.h"

namespace orlune::dialect {

namespace {

template <class Item>
const Item* FindNamed(const std::vector<Item>& items, std::string_view name) {
  const auto found = std::find_if(items.begin(), items.end(),
                                  [name](const Item& item) { return SameName(item.Name, name); });
  return found == items.end() ? nullptr : &*found;
}

}  // namespace

std::string_view DescribeType(ColumnType type) {
  switch (type) {
    case ColumnType::kCounter:
    case ColumnType::kLong:
      return "a whole number";
    case ColumnType::kYesNo:
      return "yes or no";
    case ColumnType::kDate:
      return "a date";
    case ColumnType::kTime:
      return "a time of day";
    case ColumnType::kDateTime:
      return "a date with its time";
    case ColumnType::kText:
    case ColumnType::kMemo:
      break;
  }
  return "a text";
}

bool SameName(std::string_view one, std::string_view other) {
  return EqualsIgnoringAsciiCase(one, other);
}

const Column* Table::Find(std::string_view name) const {
  return FindNamed(Columns, name);
}

const Column* Table::Counter() const {
  const auto found = std::find_if(Columns.begin(), Columns.end(),
                                  [](const Column& column) { return column.Type == ColumnType::kCounter; });
  return found == Columns.end() ? nullptr : &*found;
}

const Table* Catalogue::Find(std::string_view name) const {
  return FindNamed(Tables, name);
}

}  // namespace orlune::dialect
