#pragma once

namespace orlune {

/// Runs the program and returns its exit code: 0 for success, 1 for a failure, 2 for an invalid command
/// line or configuration.
int RunCommandLine(int argc, const char* const* argv);

}  // namespace orlune
