#include "support/Paths.h"

#include "support/platform/FileSystem.h"

#include <QtCore/QDir>

std::wstring documentsDataPath(const wchar_t *subfolder)
{
    const auto separator = static_cast<wchar_t>(QDir::separator().unicode());
    std::wstring path = platform::documentsFolder();
    path += separator;
    path += L"Orvalentix";
    if (subfolder != nullptr && *subfolder != L'\0') {
        path += separator;
        path += subfolder;
    }
    return path;
}
