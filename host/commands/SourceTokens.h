#pragma once

#include <QtCore/QString>

#include <vector>

/// A word, a string or a mark of a QML or JavaScript source.
struct SourceToken
{
    enum class Kind { Word, String, Mark };

    Kind kind = Kind::Mark;
    QString text; ///< Of a string what is between its quotes, as it stands there.
    int line = 1;
};

/// Splits a source, comments left out. Anything at all may be given.
std::vector<SourceToken> sourceTokens(const QString &source);
