#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "drivers/dialect/catalogue.h"

/// A statement as its parts. Spliced-in values appear as their position among the statement's values, so that
/// the same tree serves every statement of the same shape.
namespace orlune::dialect {

/// A column as it is written; `Table` is empty where the name is not qualified.
struct ColumnName {
  std::string Table;
  std::string Name;

  friend bool operator==(const ColumnName&, const ColumnName&) = default;
};

struct Null {
  friend bool operator==(const Null&, const Null&) = default;
};

/// One whole number of the spliced-in value number `Value`, which may be a list of them.
struct SplicedInteger {
  std::size_t Value;
  std::size_t Item;

  friend bool operator==(const SplicedInteger&, const SplicedInteger&) = default;
};

/// The whole text of a spliced-in value.
struct SplicedText {
  std::size_t Value;

  friend bool operator==(const SplicedText&, const SplicedText&) = default;
};

/// What stands between two apostrophes, fixed and spliced-in pieces in their order; none for an empty text.
using TextPieces = std::vector<std::variant<std::string, SplicedText>>;

struct Literal {
  std::variant<Null, bool, std::int64_t, SplicedInteger, TextPieces> Content;
  bool IsDate = false;  ///< stands in DateValue(...)

  /// Whether no part of it was spliced in.
  bool IsFixed() const;
  friend bool operator==(const Literal&, const Literal&) = default;
};

enum class ComparisonOperator { kEqual, kNotEqual, kLess, kLessOrEqual, kGreater, kGreaterOrEqual, kLike };

struct Comparison {
  ColumnName Left;
  ComparisonOperator Operator = ComparisonOperator::kEqual;
  std::variant<Literal, ColumnName> Right;

  friend bool operator==(const Comparison&, const Comparison&) = default;
};

struct Membership {
  ColumnName Left;
  std::vector<Literal> Items;

  friend bool operator==(const Membership&, const Membership&) = default;
};

struct NullTest {
  ColumnName Left;
  bool IsNegated = false;

  friend bool operator==(const NullTest&, const NullTest&) = default;
};

struct Condition;

/// Terms of which all have to hold, one has to hold, or the only one must not.
struct Junction {
  enum class Kind { kAnd, kOr, kNot };
  Kind Joint;
  std::vector<Condition> Terms;

  friend bool operator==(const Junction&, const Junction&) = default;
};

struct Condition {
  std::variant<Comparison, Membership, NullTest, Junction> Node;

  friend bool operator==(const Condition&, const Condition&) = default;
};

struct SelectedColumn {
  ColumnName Source;
  std::string Alias;  ///< empty without AS
  bool IsCount = false;

  friend bool operator==(const SelectedColumn&, const SelectedColumn&) = default;
};

struct InnerJoin {
  std::string Table;
  ColumnName Left;
  ColumnName Right;

  friend bool operator==(const InnerJoin&, const InnerJoin&) = default;
};

struct OrderKey {
  ColumnName Source;
  bool IsDescending = false;

  friend bool operator==(const OrderKey&, const OrderKey&) = default;
};

struct Select {
  bool IsDistinct = false;
  std::optional<int> Top;
  std::vector<SelectedColumn> Columns;  ///< none for *
  std::string From;
  std::optional<InnerJoin> Join;
  std::optional<Condition> Where;
  std::vector<OrderKey> Order;

  friend bool operator==(const Select&, const Select&) = default;
};

struct Insert {
  std::string Into;
  std::vector<std::string> Columns;
  std::vector<Literal> Values;  ///< one for each column

  friend bool operator==(const Insert&, const Insert&) = default;
};

struct Assignment {
  std::string Target;
  Literal Content;

  friend bool operator==(const Assignment&, const Assignment&) = default;
};

struct Update {
  std::string Changed;
  std::vector<Assignment> Assignments;
  std::optional<Condition> Where;

  friend bool operator==(const Update&, const Update&) = default;
};

struct Delete {
  std::string From;
  std::optional<Condition> Where;

  friend bool operator==(const Delete&, const Delete&) = default;
};

struct ColumnDefinition {
  Column Defined;
  int Length = 0;  ///< of a TEXT, in characters; 0 when none is given
  bool IsPrimaryKey = false;

  friend bool operator==(const ColumnDefinition&, const ColumnDefinition&) = default;
};

struct CreateTable {
  std::string Created;
  std::vector<ColumnDefinition> Columns;

  friend bool operator==(const CreateTable&, const CreateTable&) = default;
};

struct AddColumn {
  std::string Changed;
  ColumnDefinition Added;

  friend bool operator==(const AddColumn&, const AddColumn&) = default;
};

struct DropColumn {
  std::string Changed;
  std::string Dropped;

  friend bool operator==(const DropColumn&, const DropColumn&) = default;
};

using Statement = std::variant<Select, Insert, Update, Delete, CreateTable, AddColumn, DropColumn>;

}  // namespace orlune::dialect
