#pragma once

class QJsonDocument;
class QString;

// Names come from the disk and from games: a question mark stands for every character that would
// steer a terminal, end a line or turn the reading direction.

/// Prints one line on standard output.
void printOutput(const QString &line);

/// Prints JSON on standard output, where escapes stand for such characters.
void printOutput(const QJsonDocument &json);

/// Prints one line on standard error, over whatever progress bar stands on the terminal.
/// The text may itself have line feeds and tabs.
void printLine(const QString &text);

/// Prints one line of the program's own on standard error.
void printError(const QString &text);

/// Takes the line that stands on the terminal off again. Nothing where standard error is no
/// terminal.
void clearLine();

/// Whether standard error is a terminal that a person looks at.
bool standardErrorIsTerminal();

/// Whether that terminal takes control sequences, as old consoles of Windows don't.
bool terminalTakesSequences();

/// Where the system gives a program with windows no terminal, takes that of the program which
/// started it, if there is one, for as long as the object lives. Output that goes elsewhere stays
/// there.
class ParentTerminal
{
public:
    ParentTerminal()
        : before(attach())
    {
    }
    ~ParentTerminal() { detach(before); }
    ParentTerminal(const ParentTerminal &) = delete;
    ParentTerminal &operator=(const ParentTerminal &) = delete;

private:
    /// What the terminal does by itself, put back at the end. Zeros stand for no terminal.
    struct State
    {
        unsigned codePage = 0;
        unsigned long mode = 0;
    };

    static State attach();
    static void detach(const State &before);

    const State before;
};

/// Whether a GUI can be shown as the environment stands.
bool hasDisplay();
