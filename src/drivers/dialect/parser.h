#pragma once

#include "drivers/dialect/ast.h"
#include "platform/database.h"

namespace orlune::dialect {

/// Reads a statement of the dialect: SELECT [DISTINCT] [TOP n], INSERT, UPDATE, DELETE, CREATE TABLE, ALTER
/// TABLE ADD COLUMN and DROP COLUMN. Keywords are known whatever their case. The tree serves every statement
/// with the same shape key. Throws DialectError.
Statement Parse(const StatementText& statement);

}  // namespace orlune::dialect
