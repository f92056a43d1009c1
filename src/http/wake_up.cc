#include "http/wake_up.h"

#include <cerrno>
#include <cstdint>
#include <system_error>

#include <sys/eventfd.h>
#include <unistd.h>

namespace orlune {

WakeUp::WakeUp() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (descriptor_ < 0) throw std::system_error(errno, std::generic_category(), "cannot start a thread");
}

WakeUp::~WakeUp() {
  close(descriptor_);
}

void WakeUp::Signal() const {
  const std::uint64_t one = 1;
  static_cast<void>(write(descriptor_, &one, sizeof one));
}

}  // namespace orlune
