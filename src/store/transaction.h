#pragma once

#include "platform/database.h"

namespace orlune {

/// A transaction of the request's connection: what is executed while it lives happens together at `Commit`,
/// or not at all.
class Transaction {
 public:
  /// Throws DatabaseError.
  explicit Transaction(Connection& database) : database_(database) { database_.Begin(); }
  ~Transaction() {
    if (!isCommitted_) database_.Rollback();
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Durable on return. Throws DatabaseError.
  void Commit() {
    database_.Commit();
    isCommitted_ = true;
  }

 private:
  Connection& database_;
  bool isCommitted_ = false;
};

}  // namespace orlune
