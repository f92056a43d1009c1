#include "drivers/dialect/catalogue.h"

#include <algorithm>

namespace orlune::dialect {

namespace {

char LowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter | 0x20) : letter;
}

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
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char left, char right) { return LowerCase(left) == LowerCase(right); });
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
