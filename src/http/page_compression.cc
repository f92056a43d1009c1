#include "http/page_compression.h"

#include <optional>
#include <string>
#include <utility>

#include "http/request_guard.h"

namespace orlune {
namespace {

// Smaller ones fit a packet as they are.
constexpr std::size_t kSmallestPage = 1024;

}  // namespace

void PageCompression::Apply(const RequestMessage& request, bool isOverHttps, ReplyMessage& reply) {
  const auto* page = std::get_if<std::string>(&reply.Body);
  if (page == nullptr || page->empty()) return;
  reply.Headers.emplace_back("Vary", "Accept-Encoding");
  if (page->size() < kSmallestPage || !AcceptsGzip(request.Headers.Find("Accept-Encoding")) ||
      ComesFromAnotherSite(request, isOverHttps))
    return;
  std::optional<std::string> compressed = gzip_.Compress(*page);
  if (!compressed) return;
  reply.Headers.emplace_back("Content-Encoding", "gzip");
  reply.Body = *std::move(compressed);
}

}  // namespace orlune
