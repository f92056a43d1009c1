#pragma once

namespace orlune {

/// Has large pieces of memory go back to the system as soon as they are free, for all of the process.
void ReturnLargeMemory();

}  // namespace orlune
