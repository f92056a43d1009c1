#pragma once

#include <cstdint>

namespace orlune {

/// What the kernel knows of a connected TCP socket that is open; what it does not know reads as false and 0.

/// The other side has closed its direction, or the whole connection.
bool HasHungUp(int socket);
/// Something has arrived and nobody has read it yet.
bool HasUnreadBytes(int socket);
/// Something was written that the other side has not acknowledged.
bool HasUnacknowledgedBytes(int socket);

/// How much the other side has sent and received so far. What its kernel keeps for a reader counts as
/// received.
struct MovedBytes {
  std::uint64_t FromPeer = 0;
  std::uint64_t ToPeer = 0;
};
MovedBytes BytesMoved(int socket);

}  // namespace orlune
