#include "drivers/dialect/translation.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "drivers/dialect/evaluation.h"
#include "drivers/dialect/scope.h"
#include "platform/database.h"

namespace orlune::dialect {

namespace {

std::string_view SqlOperator(ComparisonOperator comparison) {
  switch (comparison) {
    case ComparisonOperator::kEqual:
      return " = ";
    case ComparisonOperator::kNotEqual:
      return " <> ";
    case ComparisonOperator::kLess:
      return " < ";
    case ComparisonOperator::kLessOrEqual:
      return " <= ";
    case ComparisonOperator::kGreater:
      return " > ";
    case ComparisonOperator::kGreaterOrEqual:
      return " >= ";
    case ComparisonOperator::kLike:
      break;
  }
  return " LIKE ";
}

std::string QualifiedName(const FoundColumn& column) {
  return Quoted(column.Holder->Name) + '.' + Quoted(column.Definition->Name);
}

/// Writes one statement. Serves once.
class Translator {
 public:
  Translator(const Catalogue& catalogue, const EngineSql& engine, const RegionalSettings& regional)
      : catalogue_(catalogue), engine_(engine), regional_(regional) {}

  Translation operator()(const Select& select);
  Translation operator()(const Insert& insert);
  Translation operator()(const Update& update);
  Translation operator()(const Delete& statement);
  Translation operator()(const CreateTable& create);
  Translation operator()(const AddColumn& add);
  Translation operator()(const DropColumn& drop);

 private:
  void WriteSelectedColumns(const Select& select, const Scope& scope);
  void WriteAllColumns(const Scope& scope);
  void WriteOrder(const Select& select, const Scope& scope);
  void WriteWhere(const std::optional<Condition>& where, const Scope& scope);
  void WriteCondition(const Condition& condition, const Scope& scope);
  void Write(const Comparison& comparison, const Scope& scope);
  void Write(const Membership& membership, const Scope& scope);
  void Write(const NullTest& test, const Scope& scope);
  void Write(const Junction& junction, const Scope& scope);
  void NameTables(const Scope& scope);
  std::string CounterOf(const Table& table) const;
  std::string Comparable(const FoundColumn& column) const;
  std::string LiteralSql(const Literal& literal, const Column& column, LiteralUse use);
  void WriteAssigned(const Literal& literal, const Column& column);
  Translation SchemaChange() &&;
  static Translation Refuse(std::string cause);

  template <class Items, class WriteItem>
  void WriteList(const Items& items, WriteItem writeItem) {
    std::string_view separator;
    for (const auto& item : items) {
      Sql() += separator;
      writeItem(item);
      separator = ", ";
    }
  }

  std::string& Sql() { return result_.Sql; }

  const Catalogue& catalogue_;
  const EngineSql& engine_;
  const RegionalSettings& regional_;
  Translation result_;
};

Translation Translator::operator()(const Select& select) {
  Scope scope(catalogue_, select.From);
  if (select.Join) scope.Join(select.Join->Table);
  NameTables(scope);
  Sql() = "SELECT ";
  WriteSelectedColumns(select, scope);
  Sql() += " FROM " + Quoted(scope.First().Name);
  if (select.Join) {
    Sql() += " INNER JOIN " + Quoted(scope.Tables().back()->Name) + " ON " +
             Comparable(scope.Find(select.Join->Left)) + " = " + Comparable(scope.Find(select.Join->Right));
  }
  WriteWhere(select.Where, scope);
  WriteOrder(select, scope);
  if (select.Top) Sql() += " LIMIT " + std::to_string(*select.Top);
  return std::move(result_);
}

void Translator::NameTables(const Scope& scope) {
  for (const Table* table : scope.Tables()) result_.Tables.push_back(table->Name);
}

std::string Translator::CounterOf(const Table& table) const {
  const Column* counter = table.Counter();
  return Quoted(table.Name) + '.' +
         (counter == nullptr ? std::string(engine_.RowNumber()) : Quoted(counter->Name));
}

std::string Translator::Comparable(const FoundColumn& column) const {
  return engine_.Comparable(QualifiedName(column), column.Definition->Type);
}

void Translator::WriteSelectedColumns(const Select& select, const Scope& scope) {
  if (select.Columns.empty()) return WriteAllColumns(scope);
  WriteList(select.Columns, [&](const SelectedColumn& column) {
    const FoundColumn found = scope.Find(column.Source);
    const std::string name = QualifiedName(found);
    if (column.IsCount) {
      Sql() += "count(" + name + ')';
      result_.Columns.push_back({column.Alias, ColumnType::kLong});
      return;
    }
    Sql() += select.IsDistinct ? engine_.OfFirstInGroup(name, CounterOf(scope.First())) : name;
    result_.Columns.push_back(
        {column.Alias.empty() ? found.Definition->Name : column.Alias, found.Definition->Type});
  });
}

void Translator::WriteAllColumns(const Scope& scope) {
  for (const Table* table : scope.Tables()) {
    for (const Column& column : table->Columns) {
      if (!result_.Columns.empty()) Sql() += ", ";
      Sql() += QualifiedName({table, &column});
      result_.Columns.push_back({column.Name, column.Type});
    }
  }
}

void Translator::WriteOrder(const Select& select, const Scope& scope) {
  const auto isCount = [](const SelectedColumn& column) { return column.IsCount; };
  const auto counts = std::count_if(select.Columns.begin(), select.Columns.end(), isCount);
  if (counts > 0) {
    const bool isAlone = select.Columns.size() == 1 && select.Order.empty() && !select.IsDistinct;
    if (!isAlone) throw DatabaseError("Count: expected no other columns");
    return;
  }
  std::string counter = CounterOf(scope.First());
  if (select.IsDistinct) {
    if (select.Columns.empty()) throw DatabaseError("DISTINCT: expected columns");
    Sql() += " GROUP BY ";
    WriteList(select.Columns, [&](const auto& column) { Sql() += Comparable(scope.Find(column.Source)); });
    counter = "min(" + counter + ')';
  }
  Sql() += " ORDER BY ";
  bool isUnique = false;
  for (const OrderKey& key : select.Order) {
    const FoundColumn column = scope.Find(key.Source);
    Sql() += engine_.SortKey(Comparable(column), column.Definition->Type, key.IsDescending) + ", ";
    isUnique = isUnique || QualifiedName(column) == counter;
  }
  if (isUnique) {
    Sql().resize(Sql().size() - 2);
  } else {
    Sql() += counter;
  }
}

void Translator::WriteWhere(const std::optional<Condition>& where, const Scope& scope) {
  if (!where) return;
  Sql() += " WHERE ";
  WriteCondition(*where, scope);
}

void Translator::WriteCondition(const Condition& condition, const Scope& scope) {
  std::visit([&](const auto& node) { Write(node, scope); }, condition.Node);
}

void Translator::Write(const Comparison& comparison, const Scope& scope) {
  const FoundColumn left = scope.Find(comparison.Left);
  const ColumnType type = left.Definition->Type;
  const bool isText = type == ColumnType::kText || type == ColumnType::kMemo;
  if (comparison.Operator == ComparisonOperator::kLike && !isText) {
    throw DatabaseError("LIKE: expected a text, not column " + left.Definition->Name);
  }
  Sql() += Comparable(left);
  if (const auto* right = std::get_if<ColumnName>(&comparison.Right)) {
    Sql().append(SqlOperator(comparison.Operator)).append(Comparable(scope.Find(*right)));
    return;
  }
  const auto& literal = std::get<Literal>(comparison.Right);
  if (comparison.Operator == ComparisonOperator::kLike) {
    Sql() += engine_.Like(LiteralSql(literal, *left.Definition, LiteralUse::kPattern));
  } else {
    Sql()
        .append(SqlOperator(comparison.Operator))
        .append(LiteralSql(literal, *left.Definition, LiteralUse::kCompared));
  }
}

void Translator::Write(const Membership& membership, const Scope& scope) {
  const FoundColumn left = scope.Find(membership.Left);
  Sql() += Comparable(left) + " IN (";
  WriteList(membership.Items,
            [&](const Literal& item) { Sql() += LiteralSql(item, *left.Definition, LiteralUse::kCompared); });
  Sql() += ')';
}

void Translator::Write(const NullTest& test, const Scope& scope) {
  Sql() += QualifiedName(scope.Find(test.Left)) + (test.IsNegated ? " IS NOT NULL" : " IS NULL");
}

void Translator::Write(const Junction& junction, const Scope& scope) {
  if (junction.Joint == Junction::Kind::kNot) Sql() += "NOT ";
  const std::string_view joint = junction.Joint == Junction::Kind::kAnd ? " AND " : " OR ";
  std::string_view separator = "(";
  for (const Condition& term : junction.Terms) {
    Sql() += separator;
    WriteCondition(term, scope);
    separator = joint;
  }
  Sql() += ')';
}

std::string Translator::LiteralSql(const Literal& literal, const Column& column, LiteralUse use) {
  if (!literal.IsFixed()) {
    // A parameter of its own for each: SQLite would pull a comparison out of the branches of an OR that share
    // it, and then search one index with that alone instead of one for each branch.
    result_.Parameters.push_back({literal, column, use});
    return engine_.Parameter(result_.Parameters.size());
  }
  std::string scratch;
  return engine_.Fixed(Evaluate(literal, column, {}, regional_, scratch), column.Type, use);
}

void Translator::WriteAssigned(const Literal& literal, const Column& column) {
  const bool isNull = std::holds_alternative<Null>(literal.Content);
  Sql() += LiteralSql(isNull && column.Type == ColumnType::kYesNo ? Literal{false} : literal, column,
                      LiteralUse::kStored);
}

Translation Translator::operator()(const Insert& insert) {
  const Scope scope(catalogue_, insert.Into);
  NameTables(scope);
  std::vector<const Column*> columns;
  for (const std::string& name : insert.Columns) columns.push_back(scope.Find({{}, name}).Definition);
  Sql() = "INSERT INTO " + Quoted(scope.First().Name) + " (";
  WriteList(columns, [&](const Column* column) { Sql() += Quoted(column->Name); });
  Sql() += ") VALUES (";
  std::size_t position = 0;
  WriteList(insert.Values, [&](const Literal& content) { WriteAssigned(content, *columns[position++]); });
  Sql() += ')';
  const auto isCounter = [](const Column* column) { return column->Type == ColumnType::kCounter; };
  if (std::any_of(columns.begin(), columns.end(), isCounter))
    Sql() = engine_.InsertWithCounter(std::move(Sql()), scope.First());
  return std::move(result_);
}

Translation Translator::operator()(const Update& update) {
  const Scope scope(catalogue_, update.Changed);
  NameTables(scope);
  Sql() = "UPDATE " + Quoted(scope.First().Name) + " SET ";
  WriteList(update.Assignments, [&](const Assignment& assignment) {
    const Column& column = *scope.Find({{}, assignment.Target}).Definition;
    Sql() += Quoted(column.Name) + " = ";
    WriteAssigned(assignment.Content, column);
  });
  WriteWhere(update.Where, scope);
  return std::move(result_);
}

Translation Translator::operator()(const Delete& statement) {
  const Scope scope(catalogue_, statement.From);
  NameTables(scope);
  Sql() = "DELETE FROM " + Quoted(scope.First().Name);
  WriteWhere(statement.Where, scope);
  return std::move(result_);
}

Translation Translator::operator()(const CreateTable& create) {
  if (catalogue_.Find(create.Created) != nullptr) return Refuse("table " + create.Created + " exists");
  Sql() = "CREATE TABLE " + Quoted(create.Created) + " (";
  WriteList(create.Columns, [&](const ColumnDefinition& column) { Sql() += engine_.Declare(column, {}); });
  Sql() += ')';
  return std::move(*this).SchemaChange();
}

Translation Translator::operator()(const AddColumn& add) {
  const Table* table = catalogue_.Find(add.Changed);
  if (table == nullptr) return Refuse("no table " + add.Changed);
  const std::string& column = add.Added.Defined.Name;
  if (table->Find(column) != nullptr) return Refuse("column " + column + " exists");
  Sql() = "ALTER TABLE " + Quoted(table->Name) + " ADD COLUMN " + engine_.Declare(add.Added, {});
  return std::move(*this).SchemaChange();
}

Translation Translator::operator()(const DropColumn& drop) {
  const Table* table = catalogue_.Find(drop.Changed);
  if (table == nullptr) return Refuse("no table " + drop.Changed);
  const Column* column = table->Find(drop.Dropped);
  if (column == nullptr) return Refuse("no column " + drop.Dropped);
  Sql() = "ALTER TABLE " + Quoted(table->Name) + " DROP COLUMN " + Quoted(column->Name);
  return std::move(*this).SchemaChange();
}

Translation Translator::SchemaChange() && {
  result_.ChangesSchema = true;
  return std::move(result_);
}

Translation Translator::Refuse(std::string cause) {
  Translation refused;
  refused.Refusal = std::move(cause);
  return refused;
}

}  // namespace

Translation Translate(const Statement& statement, const Catalogue& catalogue, const EngineSql& engine,
                      const RegionalSettings& regional) {
  return std::visit(Translator(catalogue, engine, regional), statement);
}

int FindColumn(std::span<const ResultColumn> columns, std::string_view name) {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (SameName(columns[i].Name, name)) return static_cast<int>(i);
  }
  throw DatabaseError("no result column " + std::string(name));
}

}  // namespace orlune::dialect
