#pragma once

class QString;

/// Prints one line on standard error, over whatever progress bar stands on the terminal.
void printLine(const QString &text);

/// Prints one line of the program's own on standard error.
void printError(const QString &text);

/// Takes the line that stands on the terminal off again. Nothing where standard error is no
/// terminal.
void clearLine();

/// Whether standard error is a terminal that a person looks at.
bool standardErrorIsTerminal();

/// Where the system gives a program with windows no terminal, takes that of the program which
/// started it, if there is one, for as long as the object lives. Output that goes elsewhere stays
/// there.
class ParentTerminal
{
public:
    ParentTerminal()
        : codePage(attach())
    {
    }
    ~ParentTerminal() { detach(codePage); }
    ParentTerminal(const ParentTerminal &) = delete;
    ParentTerminal &operator=(const ParentTerminal &) = delete;

private:
    static unsigned attach();
    static void detach(unsigned codePage);

    const unsigned codePage; ///< The terminal's own, put back at the end; 0 is none.
};

/// Whether a GUI can be shown as the environment stands.
bool hasDisplay();
