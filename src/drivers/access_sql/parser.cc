#include "drivers/access_sql/parser.h"

#include <array>
#include <limits>
#include <string_view>
#include <utility>

#include "drivers/access_sql/dialect_error.h"
#include "drivers/access_sql/lexer.h"

namespace orlune::access_sql {

namespace {

/// How deep conditions may be nested; far above what a page needs, far below what the stack holds.
constexpr int kDeepestNesting = 64;

class Parser {
 public:
  explicit Parser(const StatementText& statement) : tokens_(Tokenize(statement)) {}

  Statement Parse() {
    Statement statement = AnyStatement();
    if (Current().Kind != TokenKind::kEnd) Fail("the end of the statement");
    return statement;
  }

 private:
  Statement AnyStatement() {
    if (TakeKeyword("SELECT")) return ParseSelect();
    if (TakeKeyword("INSERT")) return ParseInsert();
    if (TakeKeyword("UPDATE")) return ParseUpdate();
    if (TakeKeyword("DELETE")) return ParseDelete();
    if (TakeKeyword("CREATE")) return ParseCreateTable();
    if (TakeKeyword("ALTER")) return ParseAlterTable();
    Fail("a statement");
  }

  Select ParseSelect() {
    Select select;
    select.IsDistinct = TakeKeyword("DISTINCT");
    if (TakeKeyword("TOP")) select.Top = ParseFixedNumber();
    if (!TakeSymbol("*")) {
      ForEachListed([&] { select.Columns.push_back(ParseSelectedColumn()); });
    }
    ExpectKeyword("FROM");
    select.From = ExpectName();
    if (TakeKeyword("INNER")) select.Join = ParseJoin();
    select.Where = ParseWhere();
    if (TakeKeyword("ORDER")) {
      ExpectKeyword("BY");
      ForEachListed([&] { select.Order.push_back(ParseOrderKey()); });
    }
    return select;
  }

  SelectedColumn ParseSelectedColumn() {
    SelectedColumn column;
    column.Source = ParseColumnName();
    if (SameName(column.Source.Name, "Count") && TakeSymbol("(")) {
      column = {ParseColumnName(), {}, true};
      ExpectSymbol(")");
    }
    if (column.IsCount) {
      ExpectKeyword("AS");
      column.Alias = ExpectName();
    } else if (TakeKeyword("AS")) {
      column.Alias = ExpectName();
    }
    return column;
  }

  InnerJoin ParseJoin() {
    ExpectKeyword("JOIN");
    InnerJoin join;
    join.Table = ExpectName();
    ExpectKeyword("ON");
    join.Left = ParseColumnName();
    ExpectSymbol("=");
    join.Right = ParseColumnName();
    return join;
  }

  OrderKey ParseOrderKey() {
    OrderKey key{ParseColumnName()};
    key.IsDescending = TakeKeyword("DESC");
    if (!key.IsDescending) TakeKeyword("ASC");
    return key;
  }

  Insert ParseInsert() {
    ExpectKeyword("INTO");
    Insert insert;
    insert.Into = ExpectName();
    ExpectSymbol("(");
    ForEachListed([&] { insert.Columns.push_back(ExpectName()); });
    ExpectSymbol(")");
    ExpectKeyword("VALUES");
    insert.Values = ParseLiteralList();
    if (insert.Values.size() != insert.Columns.size()) Fail("as many values as columns");
    return insert;
  }

  Update ParseUpdate() {
    Update update;
    update.Changed = ExpectName();
    ExpectKeyword("SET");
    ForEachListed([&] {
      std::string target = ExpectName();
      ExpectSymbol("=");
      update.Assignments.push_back({std::move(target), ParseLiteral()});
    });
    update.Where = ParseWhere();
    return update;
  }

  Delete ParseDelete() {
    ExpectKeyword("FROM");
    Delete result;
    result.From = ExpectName();
    result.Where = ParseWhere();
    return result;
  }

  CreateTable ParseCreateTable() {
    ExpectKeyword("TABLE");
    CreateTable create;
    create.Created = ExpectName();
    ExpectSymbol("(");
    ForEachListed([&] { create.Columns.push_back(ParseColumnDefinition()); });
    ExpectSymbol(")");
    return create;
  }

  Statement ParseAlterTable() {
    ExpectKeyword("TABLE");
    std::string table = ExpectName();
    if (TakeKeyword("ADD")) {
      ExpectKeyword("COLUMN");
      return AddColumn{std::move(table), ParseColumnDefinition()};
    }
    ExpectKeyword("DROP");
    ExpectKeyword("COLUMN");
    return DropColumn{std::move(table), ExpectName()};
  }

  ColumnDefinition ParseColumnDefinition() {
    ColumnDefinition definition;
    definition.Defined = {ExpectName(), ParseColumnType()};
    if (TakeSymbol("(")) {
      if (definition.Defined.Type != ColumnType::kText) Fail("no length");
      definition.Length = ParseFixedNumber();
      ExpectSymbol(")");
    }
    if (TakeKeyword("CONSTRAINT")) {
      ExpectName();
      ExpectKeyword("PRIMARY");
      ExpectKeyword("KEY");
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
      if (TakeKeyword(name)) return type;
    }
    Fail("a column's type");
  }

  std::optional<Condition> ParseWhere() {
    if (!TakeKeyword("WHERE")) return std::nullopt;
    return ParseDisjunction();
  }

  Condition ParseDisjunction() {
    return ParseJunction(Junction::Kind::kOr, "OR", [this] { return ParseConjunction(); });
  }

  Condition ParseConjunction() {
    return ParseJunction(Junction::Kind::kAnd, "AND", [this] { return ParseTerm(); });
  }

  template <class ParseOperand>
  Condition ParseJunction(Junction::Kind kind, std::string_view keyword, ParseOperand parseOperand) {
    Condition first = parseOperand();
    if (!IsKeyword(keyword)) return first;
    Junction junction{kind, {}};
    junction.Terms.push_back(std::move(first));
    while (TakeKeyword(keyword)) junction.Terms.push_back(parseOperand());
    return {std::move(junction)};
  }

  Condition ParseTerm() {
    if (nesting_ == kDeepestNesting) Fail("a condition that is nested less deeply");
    ++nesting_;
    Condition term = ParseNestedTerm();
    --nesting_;
    return term;
  }

  Condition ParseNestedTerm() {
    if (TakeKeyword("NOT")) {
      Junction negation{Junction::Kind::kNot, {}};
      negation.Terms.push_back(ParseTerm());
      return {std::move(negation)};
    }
    if (!TakeSymbol("(")) return ParsePredicate();
    Condition inner = ParseDisjunction();
    ExpectSymbol(")");
    return inner;
  }

  Condition ParsePredicate() {
    ColumnName left = ParseColumnName();
    if (TakeKeyword("IS")) {
      const bool isNegated = TakeKeyword("NOT");
      ExpectKeyword("NULL");
      return {NullTest{std::move(left), isNegated}};
    }
    if (TakeKeyword("IN")) return {Membership{std::move(left), ParseLiteralList()}};
    if (TakeKeyword("LIKE")) return {Comparison{std::move(left), ComparisonOperator::kLike, ParseText()}};
    const ComparisonOperator comparison = ParseOperator();
    if (StartsLiteral()) return {Comparison{std::move(left), comparison, ParseLiteral()}};
    return {Comparison{std::move(left), comparison, ParseColumnName()}};
  }

  ComparisonOperator ParseOperator() {
    constexpr std::array<std::pair<std::string_view, ComparisonOperator>, 6> kOperators{
        {{"=", ComparisonOperator::kEqual},
         {"<>", ComparisonOperator::kNotEqual},
         {"<", ComparisonOperator::kLess},
         {"<=", ComparisonOperator::kLessOrEqual},
         {">", ComparisonOperator::kGreater},
         {">=", ComparisonOperator::kGreaterOrEqual}}};
    for (const auto& [symbol, comparison] : kOperators) {
      if (TakeSymbol(symbol)) return comparison;
    }
    Fail("a comparison");
  }

  ColumnName ParseColumnName() {
    ColumnName column{{}, ExpectName()};
    if (TakeSymbol(".")) {
      column.Table = std::move(column.Name);
      column.Name = ExpectName();
    }
    return column;
  }

  std::vector<Literal> ParseLiteralList() {
    std::vector<Literal> literals;
    ExpectSymbol("(");
    ForEachListed([&] {
      if (Current().Literals.size() > 1) {
        for (const Literal& item : Advance().Literals) literals.push_back(item);
      } else {
        literals.push_back(ParseLiteral());
      }
    });
    ExpectSymbol(")");
    return literals;
  }

  bool StartsLiteral() const {
    return Current().Kind == TokenKind::kLiteral || IsKeyword("yes") || IsKeyword("no") ||
           IsKeyword("Null") || IsKeyword("DateValue");
  }

  Literal ParseLiteral() {
    if (TakeKeyword("yes")) return {true};
    if (TakeKeyword("no")) return {false};
    if (TakeKeyword("Null")) return {Null{}};
    if (TakeKeyword("DateValue")) {
      ExpectSymbol("(");
      Literal date = ParseText();
      date.IsDate = true;
      ExpectSymbol(")");
      return date;
    }
    if (Current().Literals.size() != 1) Fail("a single value");
    return Advance().Literals.front();
  }

  Literal ParseText() {
    Literal literal = ParseLiteral();
    if (literal.IsDate || !std::holds_alternative<TextPieces>(literal.Content)) Fail("a text");
    return literal;
  }

  /// A positive number of the fixed text.
  int ParseFixedNumber() {
    const Literal literal = ParseLiteral();
    const auto* number = std::get_if<std::int64_t>(&literal.Content);
    if (number == nullptr || *number < 1 || *number > std::numeric_limits<int>::max())
      Fail("a positive number");
    return static_cast<int>(*number);
  }

  template <class ParseItem>
  void ForEachListed(ParseItem parseItem) {
    do {
      parseItem();
    } while (TakeSymbol(","));
  }

  const Token& Current() const { return tokens_[index_]; }
  const Token& Advance() { return tokens_[index_++]; }

  bool IsKeyword(std::string_view keyword) const {
    return Current().Kind == TokenKind::kName && SameName(Current().Text, keyword);
  }

  bool TakeKeyword(std::string_view keyword) {
    const bool isTaken = IsKeyword(keyword);
    if (isTaken) ++index_;
    return isTaken;
  }

  bool TakeSymbol(std::string_view symbol) {
    const bool isTaken = Current().Kind == TokenKind::kSymbol && Current().Text == symbol;
    if (isTaken) ++index_;
    return isTaken;
  }

  void ExpectKeyword(std::string_view keyword) {
    if (!TakeKeyword(keyword)) Fail(keyword);
  }

  void ExpectSymbol(std::string_view symbol) {
    if (!TakeSymbol(symbol)) Fail(symbol);
  }

  std::string ExpectName() {
    if (Current().Kind != TokenKind::kName) Fail("a name");
    return std::string(Advance().Text);
  }

  [[noreturn]] void Fail(std::string_view expected) const {
    throw DialectError(Current().Position, "expected " + std::string(expected));
  }

  std::vector<Token> tokens_;
  std::size_t index_ = 0;
  int nesting_ = 0;
};

}  // namespace

bool Literal::IsFixed() const {
  if (std::holds_alternative<SplicedInteger>(Content)) return false;
  const auto* pieces = std::get_if<TextPieces>(&Content);
  if (pieces == nullptr) return true;
  for (const auto& piece : *pieces) {
    if (std::holds_alternative<SplicedText>(piece)) return false;
  }
  return true;
}

Statement Parse(const StatementText& statement) {
  return Parser(statement).Parse();
}

}  // namespace orlune::access_sql
