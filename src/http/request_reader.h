#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <microhttpd.h>

#include "http/body_rules.h"
#include "http/http_message.h"

namespace orlune {

/// Reads one request as libmicrohttpd hands it over, piece by piece.
class RequestReader {
 public:
  /// `target` is the address as it was sent, and outlives the reader. Refuses a form that has more than
  /// `maxForm` bytes beside a file. Without `rulesAt` all bodies are alike.
  RequestReader(std::string_view target, std::size_t maxForm, const BodyRulesAt& rulesAt);

  bool HasHeaders() const { return hasHeaders_; }
  /// Reads what stands before the body. `version` points into the request, behind the target.
  void ReadHeaders(MHD_Connection* connection, std::string_view method, const char* version);
  /// Reads a piece of the body, and discards one that is too large, up to a limit: a browser shows a refusal
  /// only after it has sent everything. False when the limit is exceeded.
  bool ReadBody(std::string_view piece);
  /// How much of the body is kept.
  std::size_t KeptBytes() const { return refusal_ == 0 ? bodyBytes_ : 0; }
  /// There is no memory for the body.
  void RefuseBody(unsigned status);
  /// The body is complete.
  void End();

  /// The status to refuse the request with, or 0.
  unsigned RefusalStatus() const { return refusal_; }
  /// Whether the rest of the request cannot be read, or is too large to be discarded.
  bool MustClose() const { return mustClose_; }
  const RequestMessage& Message() const { return message_; }

 private:
  void Refuse(unsigned status) { refusal_ = refusal_ == 0 ? status : refusal_; }
  void RefuseAndClose(unsigned status);
  void ReadAllHeaders(MHD_Connection* connection, std::string_view version);
  void ExpectForm(MHD_Connection* connection);
  void CommitField();
  static MHD_Result ReadPart(void* self, MHD_ValueKind kind, const char* name, const char* fileName,
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
  bool isFile_ = false;
  BodyRules rules_;
  std::size_t maxBody_;
  std::size_t bodyBytes_ = 0;
  unsigned refusal_ = 0;
  bool hasHeaders_ = false;
  bool mustClose_ = false;
};

}  // namespace orlune
