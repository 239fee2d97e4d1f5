#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>

#include <memory>
#include <optional>

class QLockFile;

/// The content of a settings file in the syntax that QSettings gives INI files. Texts come out as
/// QSettings would give them. What else a value may hold, serialised objects among it, is never
/// unpacked, whoever wrote the file, and goes back into a file as it was. Comments are lost.
///
/// A key is the name of its section, a slash and its name there, or the name alone.
class IniFile
{
public:
    /// In bytes. A larger file is not read.
    static constexpr qint64 MaxSize = qint64{64} * 1024 * 1024;

    /// Nothing for a file that can't be read as a whole: one without permission, one that is too
    /// large, a pipe or a device, UTF-16, and one in which no line makes sense. A missing file is
    /// empty. Keys whose name doesn't begin with `begin` are passed over.
    static std::optional<IniFile> read(const QString &path, const QByteArray &begin = {});

    /// Reads the file in order to replace it. One that can't be read is moved aside, logged, and
    /// counts as empty; nothing if that fails too, and the file should be left alone.
    static std::optional<IniFile> readToReplace(const QString &path, const QByteArray &begin = {});

    /// Keeps others, and QSettings too, from replacing the file at `path` while the result lives.
    /// Waits less than a second: a lock that nobody gives back must not keep anything from being
    /// saved.
    static std::unique_ptr<QLockFile> lock(const QString &path);

    explicit IniFile(const QByteArray &content = {}, const QByteArray &begin = {});

    /// Nothing where there is no such key, or something else than one text at it.
    std::optional<QString> text(const QString &key) const;
    void setText(const QString &key, const QString &text);
    void remove(const QString &key) { values.remove(key); }

    /// Values as they stand in the file, by their keys.
    using Values = QMap<QString, QByteArray>;
    const Values &written() const { return values; }

    /// The one text that such a value is, if it is one.
    std::optional<QString> textOf(const QByteArray &written) const;

    /// As QSettings would write it, with the line ends of the platform.
    QByteArray toBytes() const;

private:
    bool utf8 = false;      ///< By the mark at the beginning; otherwise bytes are Latin-1.
    bool makesSense = true; ///< There is a line that could be read, or there is none.
    Values values;
};
