#pragma once

#include <string>

/// The folder of the application's per-user data under the user's documents, or its `subfolder`
/// unless that is null or empty, with the platform's separators. Makes nothing. Without a documents
/// folder the path begins with the separator. Any thread.
std::wstring documentsDataPath(const wchar_t *subfolder);
