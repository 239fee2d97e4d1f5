#include "Terminal.h"

#include <windows.h>

#include <cstdio>
#include <io.h>

namespace {

/// A stream that was redirected has its place already.
void openOnConsole(std::FILE *stream, DWORD handle)
{
    const HANDLE place = GetStdHandle(handle);
    if (place != nullptr && place != INVALID_HANDLE_VALUE &&
        GetFileType(place) != FILE_TYPE_UNKNOWN)
        return;
    // On failure there is no stream any more, and nothing that could be done about it.
    static_cast<void>(std::freopen("CONOUT$", "w", stream));
}

} // namespace

unsigned ParentTerminal::attach()
{
    // All output is UTF-8. It fails where a person started the program by a double click.
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0)
        return 0;
    openOnConsole(stdout, STD_OUTPUT_HANDLE);
    openOnConsole(stderr, STD_ERROR_HANDLE);
    const unsigned codePage = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    return codePage;
}

void ParentTerminal::detach(unsigned codePage)
{
    std::fflush(stdout);
    std::fflush(stderr);
    if (codePage != 0)
        SetConsoleOutputCP(codePage);
}

bool standardErrorIsTerminal()
{
    return _isatty(_fileno(stderr)) != 0;
}

bool hasDisplay()
{
    return true;
}
