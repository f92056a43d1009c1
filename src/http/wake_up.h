#pragma once

namespace orlune {

/// Wakes a thread that polls; once and for good.
class WakeUp {
 public:
  /// Throws std::system_error.
  WakeUp();
  ~WakeUp();
  WakeUp(const WakeUp&) = delete;
  WakeUp& operator=(const WakeUp&) = delete;

  /// Is readable from `Signal` on.
  int Descriptor() const { return descriptor_; }
  void Signal() const;

 private:
  int descriptor_;
};

}  // namespace orlune
