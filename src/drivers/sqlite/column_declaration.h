#pragma once

#include <string>
#include <string_view>

#include "drivers/access_sql/ast.h"

namespace orlune::sqlite {

/// How a column without a default is declared in the file, its name first, such as
/// `"Name" TEXT(50) COLLATE NOCASE`. Texts compare ignoring case. Throws DatabaseError for a primary key that
/// is not a counter.
std::string DeclareColumn(const access_sql::ColumnDefinition& definition);

/// The type that a declaration in the file tells; a text for an unknown one.
access_sql::ColumnType TypeOfDeclaration(std::string_view declared, bool isPrimaryKey);

}  // namespace orlune::sqlite
