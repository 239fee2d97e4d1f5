#pragma once

#include <QtCore/QString>

#include <vector>

/// A word, a string or a punctuation mark of a QML or JavaScript source.
struct SourceToken
{
    enum class Kind { Word, String, Mark };

    Kind kind = Kind::Mark;
    QString text; ///< For a string, the text between its quotes, escapes included.
    int line = 1;
};

/// Splits a source; comments and regular expressions are left out. Takes any text. Any thread.
std::vector<SourceToken> sourceTokens(const QString &source);
