#include "drivers/sqlite/translation.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "drivers/access_sql/evaluation.h"
#include "drivers/access_sql/scope.h"
#include "drivers/sqlite/column_declaration.h"
#include "platform/database.h"

namespace orlune::sqlite {

using access_sql::ColumnType;
using access_sql::FoundColumn;
using access_sql::Literal;

namespace {

std::string_view SqlOperator(access_sql::ComparisonOperator comparison) {
  switch (comparison) {
    case access_sql::ComparisonOperator::kEqual:
      return " = ";
    case access_sql::ComparisonOperator::kNotEqual:
      return " <> ";
    case access_sql::ComparisonOperator::kLess:
      return " < ";
    case access_sql::ComparisonOperator::kLessOrEqual:
      return " <= ";
    case access_sql::ComparisonOperator::kGreater:
      return " > ";
    case access_sql::ComparisonOperator::kGreaterOrEqual:
      return " >= ";
    case access_sql::ComparisonOperator::kLike:
      break;
  }
  return " LIKE ";
}

std::string TextLiteral(std::string_view text) {
  std::string literal = "'";
  for (const char c : text) literal.append(c == '\'' ? 2 : 1, c);
  return literal += '\'';
}

/// The column that numbers a table's rows, or SQLite's own number where there is none.
std::string CounterOf(const access_sql::Table& table) {
  const access_sql::Column* counter = table.Counter();
  return Quoted(table.Name) + '.' + (counter == nullptr ? "rowid" : Quoted(counter->Name));
}

std::string QualifiedName(const FoundColumn& column) {
  return Quoted(column.Holder->Name) + '.' + Quoted(column.Definition->Name);
}

/// Writes one statement. Serves once.
class Translator {
 public:
  Translator(const access_sql::Catalogue& catalogue, const RegionalSettings& regional)
      : catalogue_(catalogue), regional_(regional) {}

  Translation operator()(const access_sql::Select& select);
  Translation operator()(const access_sql::Insert& insert);
  Translation operator()(const access_sql::Update& update);
  Translation operator()(const access_sql::Delete& statement);
  Translation operator()(const access_sql::CreateTable& create);
  Translation operator()(const access_sql::AddColumn& add);
  Translation operator()(const access_sql::DropColumn& drop);

 private:
  void WriteSelectedColumns(const access_sql::Select& select, const access_sql::Scope& scope);
  void WriteColumn(const FoundColumn& column, std::string_view alias);
  void WriteOrder(const access_sql::Select& select, const access_sql::Scope& scope);
  void WriteWhere(const std::optional<access_sql::Condition>& where, const access_sql::Scope& scope);
  void WriteCondition(const access_sql::Condition& condition, const access_sql::Scope& scope);
  void Write(const access_sql::Comparison& comparison, const access_sql::Scope& scope);
  void Write(const access_sql::Membership& membership, const access_sql::Scope& scope);
  void Write(const access_sql::NullTest& test, const access_sql::Scope& scope);
  void Write(const access_sql::Junction& junction, const access_sql::Scope& scope);
  void WriteLiteral(const Literal& literal, const access_sql::Column& column);
  void WriteAssigned(const Literal& literal, const access_sql::Column& column);
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

  const access_sql::Catalogue& catalogue_;
  const RegionalSettings& regional_;
  Translation result_;
};

Translation Translator::operator()(const access_sql::Select& select) {
  access_sql::Scope scope(catalogue_, select.From);
  if (select.Join) scope.Join(select.Join->Table);
  Sql() = "SELECT ";
  WriteSelectedColumns(select, scope);
  Sql() += " FROM " + Quoted(scope.First().Name);
  if (select.Join) {
    Sql() += " INNER JOIN " + Quoted(scope.Tables().back()->Name) + " ON " +
             QualifiedName(scope.Find(select.Join->Left)) + " = " +
             QualifiedName(scope.Find(select.Join->Right));
  }
  WriteWhere(select.Where, scope);
  WriteOrder(select, scope);
  if (select.Top) Sql() += " LIMIT " + std::to_string(*select.Top);
  return std::move(result_);
}

void Translator::WriteSelectedColumns(const access_sql::Select& select, const access_sql::Scope& scope) {
  for (const access_sql::SelectedColumn& column : select.Columns) {
    const FoundColumn found = scope.Find(column.Source);
    if (!result_.Columns.empty()) Sql() += ", ";
    if (column.IsCount) {
      Sql() += "count(" + QualifiedName(found) + ')';
      result_.Columns.push_back({column.Alias, ColumnType::kLong});
    } else {
      WriteColumn(found, column.Alias);
    }
  }
  if (!select.Columns.empty()) return;
  for (const access_sql::Table* table : scope.Tables()) {
    for (const access_sql::Column& column : table->Columns) {
      if (!result_.Columns.empty()) Sql() += ", ";
      WriteColumn({table, &column}, {});
    }
  }
}

void Translator::WriteColumn(const FoundColumn& column, std::string_view alias) {
  Sql() += QualifiedName(column);
  result_.Columns.push_back(
      {alias.empty() ? column.Definition->Name : std::string(alias), column.Definition->Type});
}

void Translator::WriteOrder(const access_sql::Select& select, const access_sql::Scope& scope) {
  const auto isCount = [](const access_sql::SelectedColumn& column) { return column.IsCount; };
  const auto counts = std::count_if(select.Columns.begin(), select.Columns.end(), isCount);
  if (counts > 0) {
    const bool isAlone = select.Columns.size() == 1 && select.Order.empty() && !select.IsDistinct;
    if (!isAlone) throw DatabaseError("Count stands beside something else");
    return;
  }
  std::string counter = CounterOf(scope.First());
  if (select.IsDistinct) {
    if (select.Columns.empty()) throw DatabaseError("DISTINCT needs columns");
    Sql() += " GROUP BY ";
    WriteList(select.Columns, [&](const auto& column) { Sql() += QualifiedName(scope.Find(column.Source)); });
    counter = "min(" + counter + ')';
  }
  Sql() += " ORDER BY ";
  bool isUnique = false;
  for (const access_sql::OrderKey& key : select.Order) {
    const std::string name = QualifiedName(scope.Find(key.Source));
    Sql() += name + (key.IsDescending ? " DESC, " : ", ");
    isUnique = isUnique || name == counter;
  }
  if (isUnique) {
    Sql().resize(Sql().size() - 2);
  } else {
    Sql() += counter;
  }
}

void Translator::WriteWhere(const std::optional<access_sql::Condition>& where,
                            const access_sql::Scope& scope) {
  if (!where) return;
  Sql() += " WHERE ";
  WriteCondition(*where, scope);
}

void Translator::WriteCondition(const access_sql::Condition& condition, const access_sql::Scope& scope) {
  std::visit([&](const auto& node) { Write(node, scope); }, condition.Node);
}

void Translator::Write(const access_sql::Comparison& comparison, const access_sql::Scope& scope) {
  const FoundColumn left = scope.Find(comparison.Left);
  const ColumnType type = left.Definition->Type;
  const bool isText = type == ColumnType::kText || type == ColumnType::kMemo;
  if (comparison.Operator == access_sql::ComparisonOperator::kLike && !isText) {
    throw DatabaseError("LIKE needs a text, which the column " + left.Definition->Name + " is not");
  }
  Sql().append(QualifiedName(left)).append(SqlOperator(comparison.Operator));
  if (const auto* right = std::get_if<access_sql::ColumnName>(&comparison.Right)) {
    Sql() += QualifiedName(scope.Find(*right));
  } else {
    WriteLiteral(std::get<Literal>(comparison.Right), *left.Definition);
  }
}

void Translator::Write(const access_sql::Membership& membership, const access_sql::Scope& scope) {
  const FoundColumn left = scope.Find(membership.Left);
  Sql() += QualifiedName(left) + " IN (";
  WriteList(membership.Items, [&](const Literal& item) { WriteLiteral(item, *left.Definition); });
  Sql() += ')';
}

void Translator::Write(const access_sql::NullTest& test, const access_sql::Scope& scope) {
  Sql() += QualifiedName(scope.Find(test.Left)) + (test.IsNegated ? " IS NOT NULL" : " IS NULL");
}

void Translator::Write(const access_sql::Junction& junction, const access_sql::Scope& scope) {
  if (junction.Joint == access_sql::Junction::Kind::kNot) Sql() += "NOT ";
  const std::string_view joint = junction.Joint == access_sql::Junction::Kind::kAnd ? " AND " : " OR ";
  std::string_view separator = "(";
  for (const access_sql::Condition& term : junction.Terms) {
    Sql() += separator;
    WriteCondition(term, scope);
    separator = joint;
  }
  Sql() += ')';
}

void Translator::WriteLiteral(const Literal& literal, const access_sql::Column& column) {
  if (!literal.IsFixed()) {
    // A "?" of its own for each: SQLite would pull a comparison out of the branches of an OR that share it,
    // and then search one index with that alone instead of one for each branch.
    result_.Parameters.push_back({literal, column});
    Sql() += '?';
    return;
  }
  std::string scratch;
  const access_sql::StoredValue stored = Evaluate(literal, column, {}, regional_, scratch);
  if (const auto* number = std::get_if<std::int64_t>(&stored)) {
    Sql() += std::to_string(*number);
  } else if (const auto* text = std::get_if<std::string_view>(&stored)) {
    Sql() += TextLiteral(*text);
  } else {
    Sql() += "NULL";
  }
}

void Translator::WriteAssigned(const Literal& literal, const access_sql::Column& column) {
  const bool isNull = std::holds_alternative<access_sql::Null>(literal.Content);
  WriteLiteral(isNull && column.Type == ColumnType::kYesNo ? Literal{false} : literal, column);
}

Translation Translator::operator()(const access_sql::Insert& insert) {
  const access_sql::Scope scope(catalogue_, insert.Into);
  std::vector<const access_sql::Column*> columns;
  for (const std::string& name : insert.Columns) columns.push_back(scope.Find({{}, name}).Definition);
  Sql() = "INSERT INTO " + Quoted(scope.First().Name) + " (";
  WriteList(columns, [&](const access_sql::Column* column) { Sql() += Quoted(column->Name); });
  Sql() += ") VALUES (";
  std::size_t position = 0;
  WriteList(insert.Values, [&](const Literal& content) { WriteAssigned(content, *columns[position++]); });
  Sql() += ')';
  return std::move(result_);
}

Translation Translator::operator()(const access_sql::Update& update) {
  const access_sql::Scope scope(catalogue_, update.Changed);
  Sql() = "UPDATE " + Quoted(scope.First().Name) + " SET ";
  WriteList(update.Assignments, [&](const access_sql::Assignment& assignment) {
    const access_sql::Column& column = *scope.Find({{}, assignment.Target}).Definition;
    Sql() += Quoted(column.Name) + " = ";
    WriteAssigned(assignment.Content, column);
  });
  WriteWhere(update.Where, scope);
  return std::move(result_);
}

Translation Translator::operator()(const access_sql::Delete& statement) {
  const access_sql::Scope scope(catalogue_, statement.From);
  Sql() = "DELETE FROM " + Quoted(scope.First().Name);
  WriteWhere(statement.Where, scope);
  return std::move(result_);
}

Translation Translator::operator()(const access_sql::CreateTable& create) {
  if (catalogue_.Find(create.Created) != nullptr) return Refuse("the table " + create.Created + " exists");
  Sql() = "CREATE TABLE " + Quoted(create.Created) + " (";
  WriteList(create.Columns,
            [&](const access_sql::ColumnDefinition& column) { Sql() += DeclareColumn(column); });
  Sql() += ')';
  return std::move(*this).SchemaChange();
}

Translation Translator::operator()(const access_sql::AddColumn& add) {
  const access_sql::Table* table = catalogue_.Find(add.Changed);
  if (table == nullptr) return Refuse("there is no table " + add.Changed);
  const std::string& column = add.Added.Defined.Name;
  if (table->Find(column) != nullptr) return Refuse("the column " + column + " exists");
  Sql() = "ALTER TABLE " + Quoted(table->Name) + " ADD COLUMN " + DeclareColumn(add.Added);
  return std::move(*this).SchemaChange();
}

Translation Translator::operator()(const access_sql::DropColumn& drop) {
  const access_sql::Table* table = catalogue_.Find(drop.Changed);
  if (table == nullptr) return Refuse("there is no table " + drop.Changed);
  const access_sql::Column* column = table->Find(drop.Dropped);
  if (column == nullptr) return Refuse("there is no column " + drop.Dropped);
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

Translation Translate(const access_sql::Statement& statement, const access_sql::Catalogue& catalogue,
                      const RegionalSettings& regional) {
  return std::visit(Translator(catalogue, regional), statement);
}

}  // namespace orlune::sqlite
