#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "drivers/dialect/translation.h"
#include "drivers/postgresql/link.h"

namespace orlune::postgresql {

/// The rows of a query as they are in one state of the database. Never changed.
struct KeptReply {
  std::uint64_t State;
  std::shared_ptr<const dialect::Translation> Translation;
  std::shared_ptr<const Reply> Rows;
};
using KeptReplyPtr = std::shared_ptr<const KeptReply>;

/// What decides whether two connections read the same rows.
struct SeenSnapshot {
  std::shared_ptr<const std::string> Source;  ///< the server, its database and tables; see `Schema::Source`
  std::uint64_t Connections = 0;              ///< how many had been opened before it was asked for
  std::string_view Text;                      ///< of pg_current_snapshot(): "xmin:xmax:xip,xip"
};

/// Replies to the queries of one pool's connections, valid while nobody commits. Shared by threads.
///
/// **Equal snapshots mean equal rows.** A repeatable read sees what its snapshot says: of the transactions
/// below xmax all that have ended, except those listed, which were running; of the others none. Numbers are
/// given in ascending order, with 64 bits, and never again while the server runs. A transaction that ends
/// either leaves the list or raises xmax. So two snapshots with the same text have no end of a transaction
/// between them, by whichever program, and every row that can be read is the same. In particular:
/// - The list has no subtransactions, but these are seen only when the transaction around them has ended.
/// - A prepared transaction is running, and listed, until it is committed.
/// - One that was running when rows were read is listed, or not below xmax. Its commit changes that.
/// - One that rolls back changes the text as well: a lost entry, not a wrong one. So does a write to another
///   database of the server. VACUUM is not listed, but changes no rows.
/// - Sequences are outside of transactions; no query reads one, nor anything else that is not a row: the
///   dialect has no clock, no random number and no function with side effects.
/// - TRUNCATE and an ALTER TABLE that copies the table also affect readers whose snapshot is older. These may
///   be given the rows from before: those of their snapshot. Later ones have another snapshot.
/// - A change of tables or columns is a transaction, too. But a connection may still translate for the tables
///   before. So its tables are part of `Source`: two share replies only when they know the same tables.
///
/// **But only on the same running server.** After a crash numbers are given again, of transactions that were
/// rolled back or, with synchronous_commit off, lost; unlogged tables are empty. The server may even keep its
/// process and start time. But a crash ends all connections. So an opened connection empties the store, and
/// what was asked for before is not kept. Then whatever is kept, and whatever is compared with it, was asked
/// for when all connections concerned had been opened, and they still answered; no crash can lie between.
/// Another server, as after a fail-over that lost the last commits while the old one still runs, has another
/// start time, which is part of `Source`.
///
/// **Not on a standby**, where the list is empty although transactions are running: there is no `Source`, and
/// nothing is kept.
///
/// Only one state is kept, the newest: no older one is asked for by a request that begins later.
class KeptReplies {
 public:
  /// Keeps up to `mostBytes` of memory.
  explicit KeptReplies(std::size_t mostBytes) : mostBytes_(mostBytes) {}

  /// To be called after a connection was opened, before anything is asked through it.
  void AddConnection();
  std::uint64_t Connections() const;

  /// The number of the state that `snapshot` sees; 0 when its rows must not be kept.
  std::uint64_t StateOf(const SeenSnapshot& snapshot);
  /// The reply to the query `key` in the newest state, or null.
  KeptReplyPtr Find(std::string_view key);
  /// Keeps the reply to the query `key` if its state is the newest.
  void Keep(std::string_view key, KeptReplyPtr reply);
  /// Somebody has written: expects another state.
  void Forget();

  /// The memory that is used.
  std::size_t Bytes() const;

 private:
  struct Entry {
    std::string Key;
    KeptReplyPtr Reply;
  };
  using Entries = std::list<Entry>;

  static std::size_t BytesOf(const Entry& entry);
  void Clear();
  void RemoveLast();

  const std::size_t mostBytes_;
  mutable std::mutex mutex_;
  std::uint64_t connections_ = 0;
  std::shared_ptr<const std::string> source_;  // of the newest state; null when none is known
  std::string snapshot_;
  std::uint64_t state_ = 0;
  Entries entries_;  // the one used last first
  std::unordered_map<std::string_view, Entries::iterator> byKey_;
  std::size_t bytes_ = 0;
};

}  // namespace orlune::postgresql
