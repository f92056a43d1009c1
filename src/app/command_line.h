#pragma once

namespace orlune {

/// Runs the program and returns its exit code: 0 when all went well, 1 when it failed, 2 when the command
/// line or the configuration is wrong.
int RunCommandLine(int argc, const char* const* argv);

}  // namespace orlune
