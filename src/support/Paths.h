#pragma once

#include <string>

/// The folder of the application's per-user data under the user's documents, with `subfolder`
/// behind it unless that is null or empty; separators are the platform's. Neither tested nor made.
/// Without a documents folder the path begins with the separator. Any thread.
std::wstring documentsDataPath(const wchar_t *subfolder);
