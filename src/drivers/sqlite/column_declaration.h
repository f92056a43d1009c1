#pragma once

#include <string>
#include <string_view>

#include "drivers/dialect/ast.h"

namespace orlune::sqlite {

/// How a column without a default is declared in the file, its name first, such as
/// `"Name" TEXT(50) COLLATE NOCASE`. Texts compare ignoring case. Throws DatabaseError for a primary key that
/// is not a counter.
std::string DeclareColumn(const dialect::ColumnDefinition& definition);

/// The type of a declaration in the file; a text for an unknown one.
dialect::ColumnType TypeOfDeclaration(std::string_view declared, bool isPrimaryKey);

}  // namespace orlune::sqlite
