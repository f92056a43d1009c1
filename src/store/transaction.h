#pragma once

#include "platform/database.h"

namespace orlune {

/// A transaction that is rolled back on destruction unless it was committed.
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
