#include "support/IniFile.h"

#include "support/Files.h"
#include "support/IniSyntax.h"

#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>

namespace {

constexpr char Utf8Mark[] = "\xef\xbb\xbf";

#ifdef Q_OS_WIN
constexpr char LineEnd[] = "\r\n";
#else
constexpr char LineEnd[] = "\n";
#endif

bool isGeneral(const QByteArray &name)
{
    return name.compare("general", Qt::CaseInsensitive) == 0;
}

/// Prefix of the keys below a section's head, a line that begins with "[".
QString prefixOf(const QByteArray &line)
{
    const QByteArray name = line.mid(1, line.indexOf(']') - 1).trimmed();
    // "General" has the keys without a section; a section of that name has a mark.
    if (isGeneral(name))
        return {};
    const bool marked = name.startsWith('%') && isGeneral(name.mid(1));
    return IniSyntax::keyFromFile(marked ? name.mid(1) : name) + QLatin1Char('/');
}

QByteArray headOf(const QString &section)
{
    const QByteArray name = IniSyntax::keyToFile(section);
    if (name.isEmpty())
        return "[General]";
    return isGeneral(name) ? "[%General]" : '[' + name + ']';
}

/// Moves the file at `path` to a free name beside it.
bool moveAside(const QString &path)
{
    constexpr int Most = 100;
    // A directory holds no settings, but perhaps much else.
    if (QFileInfo(path).isDir())
        return false;
    for (int i = 1; i <= Most; ++i) {
        const QString aside = path + QStringLiteral(".damaged-%1").arg(i);
        if (QFileInfo::exists(aside) || !moveFile(path, aside, false))
            continue;
        qCritical().noquote() << "Dashboard: Can't read" << QDir::toNativeSeparators(path)
                              << "and kept it as" << QDir::toNativeSeparators(aside);
        return true;
    }
    return false;
}

/// QLockFile would wait forever on a pipe in the lock's place, and read a device forever.
bool canBeLock(const QString &path)
{
    const QFileInfo info(path);
    return !info.isSymLink() && (!info.exists() || info.isFile());
}

} // namespace

std::optional<IniFile> IniFile::read(const QString &path, const QByteArray &begin)
{
    const QFileInfo info(path);
    if (!info.exists())
        return IniFile();
    // Only a regular file: opening a pipe would wait forever.
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly) || file.size() > MaxSize)
        return std::nullopt;
    const QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    if (content.startsWith("\xff\xfe") || content.startsWith("\xfe\xff"))
        return std::nullopt; // UTF-16, garbage if read as Latin-1.
    IniFile result(content, begin);
    return result.makesSense ? std::make_optional(std::move(result)) : std::nullopt;
}

std::optional<IniFile> IniFile::readToReplace(const QString &path, const QByteArray &begin)
{
    std::optional<IniFile> file = read(path, begin);
    if (!file && moveAside(path))
        file.emplace();
    return file;
}

std::unique_ptr<QLockFile> IniFile::lock(const QString &path)
{
    // A living process gives it back at once.
    constexpr int LongestUseMs = 500;
    constexpr int LongestWaitMs = 900;
    const QString name = path + QStringLiteral(".lock");
    auto lock = std::make_unique<QLockFile>(name);
    lock->setStaleLockTime(LongestUseMs);
    if (!canBeLock(name) && !(QFile::remove(name) && canBeLock(name)))
        return lock;
    // A lock file from the future never gets stale, so it is removed after all that time.
    if (!lock->tryLock(LongestWaitMs) && lock->removeStaleLockFile())
        lock->tryLock(0);
    return lock;
}

IniFile::IniFile(const QByteArray &content, const QByteArray &begin)
    : utf8(content.startsWith(Utf8Mark))
{
    IniSyntax::LineReader lines(content, utf8 ? static_cast<int>(sizeof Utf8Mark - 1) : 0);
    bool anyLine = false;
    bool anySense = false;
    QString prefix;
    while (lines.next()) {
        anyLine = true;
        if (lines.first() == '[') {
            prefix = prefixOf(lines.line());
            anySense = true;
        } else if (lines.hasValue()) {
            anySense = true;
            const QByteArray key = lines.key();
            // Keys are mostly sorted, so each goes to the end.
            if (key.startsWith(begin)) {
                values.insert(values.cend(), prefix + IniSyntax::keyFromFile(key), lines.value());
            }
        }
    }
    makesSense = !anyLine || anySense;
}

std::optional<QString> IniFile::text(const QString &key) const
{
    const auto found = values.constFind(key);
    return found != values.cend() ? textOf(*found) : std::nullopt;
}

std::optional<QString> IniFile::textOf(const QByteArray &written) const
{
    return IniSyntax::textFromFile(written, utf8);
}

void IniFile::setText(const QString &key, const QString &text)
{
    values.insert(key, IniSyntax::textToFile(text));
}

QByteArray IniFile::toBytes() const
{
    QMap<QString, QByteArray> sections;
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        const int slash = value.key().indexOf(QLatin1Char('/'));
        const QString section = value.key().left(qMax(slash, 0));
        sections[section] +=
            IniSyntax::keyToFile(value.key().mid(slash + 1)) + '=' + *value + LineEnd;
    }
    QByteArray result = utf8 ? Utf8Mark : "";
    for (auto section = sections.cbegin(); section != sections.cend(); ++section) {
        if (section != sections.cbegin())
            result += LineEnd;
        result += headOf(section.key()) + LineEnd + *section;
    }
    return result;
}
