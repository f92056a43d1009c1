#include "drivers/dialect/parser.h"

#include <array>
#include <string_view>
#include <utility>

#include "drivers/dialect/expressions.h"
#include "drivers/dialect/token_cursor.h"

namespace orlune::dialect {

namespace {

class Parser {
 public:
  explicit Parser(const StatementText& statement) : cursor_(statement) {}

  Statement Parse() {
    Statement statement = AnyStatement();
    cursor_.ExpectEnd();
    return statement;
  }

 private:
  Statement AnyStatement() {
    if (cursor_.TakeKeyword("SELECT")) return ParseSelect();
    if (cursor_.TakeKeyword("INSERT")) return ParseInsert();
    if (cursor_.TakeKeyword("UPDATE")) return ParseUpdate();
    if (cursor_.TakeKeyword("DELETE")) return ParseDelete();
    if (cursor_.TakeKeyword("CREATE")) return ParseCreateTable();
    if (cursor_.TakeKeyword("ALTER")) return ParseAlterTable();
    cursor_.Fail("a statement");
  }

  Select ParseSelect() {
    Select select;
    select.IsDistinct = cursor_.TakeKeyword("DISTINCT");
    if (cursor_.TakeKeyword("TOP")) select.Top = ParseFixedNumber(cursor_);
    if (!cursor_.TakeSymbol("*")) {
      cursor_.ForEachListed([&] { select.Columns.push_back(ParseSelectedColumn()); });
    }
    cursor_.ExpectKeyword("FROM");
    select.From = cursor_.ExpectName();
    if (cursor_.TakeKeyword("INNER")) select.Join = ParseJoin();
    select.Where = ParseWhere(cursor_);
    if (cursor_.TakeKeyword("ORDER")) {
      cursor_.ExpectKeyword("BY");
      cursor_.ForEachListed([&] { select.Order.push_back(ParseOrderKey()); });
    }
    return select;
  }

  SelectedColumn ParseSelectedColumn() {
    SelectedColumn column;
    column.Source = ParseColumnName(cursor_);
    if (SameName(column.Source.Name, "Count") && cursor_.TakeSymbol("(")) {
      column = {ParseColumnName(cursor_), {}, true};
      cursor_.ExpectSymbol(")");
    }
    if (column.IsCount) {
      cursor_.ExpectKeyword("AS");
      column.Alias = cursor_.ExpectName();
    } else if (cursor_.TakeKeyword("AS")) {
      column.Alias = cursor_.ExpectName();
    }
    return column;
  }

  InnerJoin ParseJoin() {
    cursor_.ExpectKeyword("JOIN");
    InnerJoin join;
    join.Table = cursor_.ExpectName();
    cursor_.ExpectKeyword("ON");
    join.Left = ParseColumnName(cursor_);
    cursor_.ExpectSymbol("=");
    join.Right = ParseColumnName(cursor_);
    return join;
  }

  OrderKey ParseOrderKey() {
    OrderKey key{ParseColumnName(cursor_)};
    key.IsDescending = cursor_.TakeKeyword("DESC");
    if (!key.IsDescending) cursor_.TakeKeyword("ASC");
    return key;
  }

  Insert ParseInsert() {
    cursor_.ExpectKeyword("INTO");
    Insert insert;
    insert.Into = cursor_.ExpectName();
    cursor_.ExpectSymbol("(");
    cursor_.ForEachListed([&] { insert.Columns.push_back(cursor_.ExpectName()); });
    cursor_.ExpectSymbol(")");
    cursor_.ExpectKeyword("VALUES");
    insert.Values = ParseLiteralList(cursor_);
    if (insert.Values.size() != insert.Columns.size()) cursor_.Fail("as many values as columns");
    return insert;
  }

  Update ParseUpdate() {
    Update update;
    update.Changed = cursor_.ExpectName();
    cursor_.ExpectKeyword("SET");
    cursor_.ForEachListed([&] {
      std::string target = cursor_.ExpectName();
      cursor_.ExpectSymbol("=");
      update.Assignments.push_back({std::move(target), ParseLiteral(cursor_)});
    });
    update.Where = ParseWhere(cursor_);
    return update;
  }

  Delete ParseDelete() {
    cursor_.ExpectKeyword("FROM");
    Delete result;
    result.From = cursor_.ExpectName();
    result.Where = ParseWhere(cursor_);
    return result;
  }

  CreateTable ParseCreateTable() {
    cursor_.ExpectKeyword("TABLE");
    CreateTable create;
    create.Created = cursor_.ExpectName();
    cursor_.ExpectSymbol("(");
    cursor_.ForEachListed([&] { create.Columns.push_back(ParseColumnDefinition()); });
    cursor_.ExpectSymbol(")");
    return create;
  }

  Statement ParseAlterTable() {
    cursor_.ExpectKeyword("TABLE");
    std::string table = cursor_.ExpectName();
    if (cursor_.TakeKeyword("ADD")) {
      cursor_.ExpectKeyword("COLUMN");
      return AddColumn{std::move(table), ParseColumnDefinition()};
    }
    cursor_.ExpectKeyword("DROP");
    cursor_.ExpectKeyword("COLUMN");
    return DropColumn{std::move(table), cursor_.ExpectName()};
  }

  ColumnDefinition ParseColumnDefinition() {
    ColumnDefinition definition;
    definition.Defined = {cursor_.ExpectName(), ParseColumnType()};
    if (cursor_.TakeSymbol("(")) {
      if (definition.Defined.Type != ColumnType::kText) cursor_.Fail("no length");
      definition.Length = ParseFixedNumber(cursor_);
      cursor_.ExpectSymbol(")");
    }
    if (cursor_.TakeKeyword("CONSTRAINT")) {
      cursor_.ExpectName();
      cursor_.ExpectKeyword("PRIMARY");
      cursor_.ExpectKeyword("KEY");
      definition.IsPrimaryKey = true;
    }
    return definition;
  }

  ColumnType ParseColumnType() {
    constexpr std::array<std::pair<std::string_view, ColumnType>, 6> kTypes{
        {{"COUNTER", ColumnType::kCounter},
         {"LONG", ColumnType::kLong},
         {"YESNO", ColumnType::kYesNo},
         {"TEXT", ColumnType::kText},
         {"MEMO", ColumnType::kMemo},
         {"DATETIME", ColumnType::kDateTime}}};
    for (const auto& [name, type] : kTypes) {
      if (cursor_.TakeKeyword(name)) return type;
    }
    cursor_.Fail("a column's type");
  }

  TokenCursor cursor_;
};

}  // namespace

Statement Parse(const StatementText& statement) {
  return Parser(statement).Parse();
}

}  // namespace orlune::dialect
