#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>

#include <memory>
#include <optional>

class QLockFile;

/// The content of an INI file as QSettings writes it. Reads texts as QSettings does, but never
/// unpacks lists and serialised objects, whoever wrote the file: those are written back unchanged.
/// Comments are lost. One thread at a time.
///
/// A key is its section, a slash and its name there, or the name alone.
class IniFile
{
public:
    /// Bytes of the largest file that is read.
    static constexpr qint64 MaxSize = qint64{64} * 1024 * 1024;

    /// Nothing for a file that can't be read: no permission, too large, a pipe or a device, UTF-16,
    /// or no line that makes sense. A missing file is empty. Skips keys whose name doesn't begin
    /// with `begin`.
    static std::optional<IniFile> read(const QString &path, const QByteArray &begin = {});

    /// Reads the file in order to replace it. One that can't be read is moved aside, which is
    /// logged, and counts as empty; nothing if it can't be moved either, then leave it alone.
    static std::optional<IniFile> readToReplace(const QString &path, const QByteArray &begin = {});

    /// Keeps other writers, QSettings among them, from replacing the file at `path` while the
    /// result lives. Waits less than a second, then goes on without: a lock that nobody gives back
    /// must not keep anything from being saved. Never null.
    static std::unique_ptr<QLockFile> lock(const QString &path);

    explicit IniFile(const QByteArray &content = {}, const QByteArray &begin = {});

    /// Nothing if there is no such key, or its value isn't a single text.
    std::optional<QString> text(const QString &key) const;
    void setText(const QString &key, const QString &text);
    void remove(const QString &key) { values.remove(key); }

    /// Values as written in the file, by key.
    using Values = QMap<QString, QByteArray>;
    const Values &written() const { return values; }

    /// The text of such a value, unless it is a list or an object.
    std::optional<QString> textOf(const QByteArray &written) const;

    /// As QSettings would write it, with the line ends of the platform.
    QByteArray toBytes() const;

private:
    bool utf8 = false;      ///< As the byte order mark says; else bytes are Latin-1.
    bool makesSense = true; ///< A line could be read, or there is none.
    Values values;
};
