#pragma once

#include <string>

class QString;

namespace platform {

/// `path` as the system's calls take it. One whose absolute form is long gets that form, normalised
/// as the system does it, behind the prefix `\\?\`, which ends all parsing. Paths of devices, those
/// that have the prefix already and those relative to a drive's current directory never get it.
std::wstring nativePath(const QString &path);

} // namespace platform
