// freopen_s opens for exclusive use, and a console has other users.
#define _CRT_SECURE_NO_WARNINGS

#include "Terminal.h"

#include <windows.h>

#include <cstdio>
#include <io.h>

namespace {

/// The handle of a stream, invalid if it has none.
HANDLE handleOf(std::FILE *stream)
{
    const int descriptor = _fileno(stream);
    return descriptor < 0 ? INVALID_HANDLE_VALUE
                          : reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

/// Opens a stream on the console unless it is redirected. The system's standard handles don't tell:
/// attaching fills those that were empty and leaves the streams as they were.
void openOnConsole(std::FILE *stream)
{
    if (GetFileType(handleOf(stream)) != FILE_TYPE_UNKNOWN)
        return;
    // Only a handle that can be read gives the console's mode. On failure the stream is closed, and
    // nothing can be done about it.
    static_cast<void>(std::freopen("CONOUT$", "w+", stream));
}

} // namespace

ParentTerminal::State ParentTerminal::attach()
{
    // Fails if the program was started by a double click.
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0)
        return {};
    openOnConsole(stdout);
    openOnConsole(stderr);
    State before{GetConsoleOutputCP(), 0}; // All output is UTF-8.
    SetConsoleOutputCP(CP_UTF8);
    if (GetConsoleMode(handleOf(stderr), &before.mode) != 0)
        SetConsoleMode(handleOf(stderr), before.mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    return before;
}

void ParentTerminal::detach(const State &before)
{
    std::fflush(stdout);
    std::fflush(stderr);
    if (before.mode != 0)
        SetConsoleMode(handleOf(stderr), before.mode);
    if (before.codePage != 0)
        SetConsoleOutputCP(before.codePage);
}

bool terminalTakesSequences()
{
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stderr), &mode) != 0 &&
           (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

bool standardErrorIsTerminal()
{
    return _isatty(_fileno(stderr)) != 0;
}

bool hasDisplay()
{
    return true;
}
