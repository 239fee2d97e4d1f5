// The safe variant of freopen opens for nobody else, and a console has others.
#define _CRT_SECURE_NO_WARNINGS

#include "Terminal.h"

#include <windows.h>

#include <cstdio>
#include <io.h>

namespace {

/// What stands behind a stream, invalid where nothing does.
HANDLE handleOf(std::FILE *stream)
{
    const int descriptor = _fileno(stream);
    return descriptor < 0 ? INVALID_HANDLE_VALUE
                          : reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

/// A stream that was redirected has its place already. The system's standard handles don't tell:
/// attaching fills those that were empty, and the streams stay as they were.
void openOnConsole(std::FILE *stream)
{
    if (GetFileType(handleOf(stream)) != FILE_TYPE_UNKNOWN)
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
    openOnConsole(stdout);
    openOnConsole(stderr);
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
