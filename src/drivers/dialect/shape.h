#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/database.h"

namespace orlune::dialect {

enum class SplicedKind { kIntegers, kYes, kNo, kNull };

/// The kind of a value outside apostrophes.
struct SplicedClass {
  SplicedKind Kind;
  std::size_t Count;  ///< of the whole numbers in the list
};

/// Recognises integers joined by ", ", yes, no and Null in any case; nothing for any other text.
std::optional<SplicedClass> Classify(std::string_view value);

/// The whole number at `item` of a value that `Classify` calls integers. Throws DatabaseError when it is too
/// large.
std::int64_t IntegerAt(std::string_view value, std::size_t item);

/// Replaces `key` by the statement's shape: equal for two statements exactly when they have the same fixed
/// text and values of the same kinds at the same places, so that one translation serves both. Throws
/// DialectError for a value that cannot stand where it does.
void WriteShapeKey(const StatementText& statement, std::string& key);

/// Replaces `key` by what identifies a query with its values: equal for two queries exactly when they have
/// the same text and values at the same places, so that they give the same rows.
void WriteResultKey(const StatementText& query, std::string& key);

/// The statement with "{}" in place of each value: what may be logged.
std::string MaskedText(const StatementText& statement);

}  // namespace orlune::dialect
