#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <microhttpd.h>

#include "http/http_message.h"

namespace orlune {

/// One request on its way in. Belongs to its connection.
class Exchange {
 public:
  /// `target` is the address as it was sent; one that is too long or has too many parameters makes the
  /// exchange hopeless. A form of more than `largestBody` bytes is refused.
  Exchange(const char* target, std::size_t largestBody);

  bool HasBegun() const { return hasBegun_; }
  /// Takes over what stands before the body. `version` stands where the request has it, behind the address.
  void Begin(MHD_Connection* connection, std::string_view method, const char* version);
  /// Takes a piece of the body. One that is too large is heard out for a while, so that the browser comes to
  /// read the refusal; false when that has been long enough.
  bool TakeBody(std::string_view piece);
  /// The body has ended.
  void End();

  /// The status of the refusal that the request has earned, or 0.
  unsigned RefusalStatus() const { return refusal_; }
  /// Whether the rest of the request is not worth hearing out.
  bool IsHopeless() const { return isHopeless_; }
  const RequestMessage& Message() const { return message_; }

 private:
  void Refuse(unsigned status) { refusal_ = refusal_ == 0 ? status : refusal_; }
  void RefuseHopeless(unsigned status);
  void ExpectForm(MHD_Connection* connection);
  void CommitField();
  static MHD_Result TakePart(void* self, MHD_ValueKind kind, const char* name, const char* fileName,
                             const char* contentType, const char* encoding, const char* piece,
                             std::uint64_t offset, std::size_t size);

  const char* targetEnd_;
  RequestMessage message_;
  std::unique_ptr<MHD_PostProcessor, decltype(&MHD_destroy_post_processor)> partsReader_;
  bool isQueryForm_ = false;
  std::string queryForm_;
  std::string fieldName_;
  std::string fieldValue_;
  bool hasField_ = false;
  std::size_t largestBody_;
  std::size_t bodyBytes_ = 0;
  unsigned refusal_ = 0;
  bool hasBegun_ = false;
  bool isHopeless_ = false;
};

}  // namespace orlune
