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
    // The console's mode is for readers only. On failure there is no stream any more, and nothing
    // that could be done about it.
    static_cast<void>(std::freopen("CONOUT$", "w+", stream));
}

} // namespace

ParentTerminal::State ParentTerminal::attach()
{
    // All output is UTF-8. It fails where a person started the program by a double click.
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0)
        return {};
    openOnConsole(stdout);
    openOnConsole(stderr);
    State before{GetConsoleOutputCP(), 0};
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
