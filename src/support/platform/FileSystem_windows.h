#pragma once

#include <string>

class QString;

namespace platform {

/// `path` for the system's calls. If its absolute form is long, it is that form, normalised as the
/// system does it, behind the prefix `\\?\`, which turns off all parsing. Never so for devices,
/// paths with the prefix, and paths relative to a drive's current directory. Any thread.
std::wstring nativePath(const QString &path);

} // namespace platform
