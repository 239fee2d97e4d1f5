#include "profiles/IniScreening.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

/// Finds values that begin with an "@" of QSettings' own, other than the ones without danger.
class ValueScanner
{
public:
    explicit ValueScanner(const QByteArray &content)
        : content(content)
    {
    }

    bool findsObject()
    {
        while (at < content.size()) {
            if (step())
                return true;
        }
        return false;
    }

private:
    bool startsWith(const char *text) const
    {
        return qstrncmp(content.constData() + at, text, static_cast<uint>(std::strlen(text))) == 0;
    }

    /// An "@" in front of a text of QSettings is doubled. Written as a number it is none of ours.
    bool isObjectHere() const
    {
        constexpr std::array<const char *, 4> Harmless{"@@", "@Invalid()", "@ByteArray(",
                                                       "@String("};
        if (content[at] == '@') {
            return std::none_of(Harmless.begin(), Harmless.end(),
                                [this](const char *text) { return startsWith(text); });
        }
        if (!startsWith("\\x"))
            return false;
        int digit = at + 2;
        while (digit < content.size() && content[digit] == '0')
            ++digit;
        return content.mid(digit, 2) == "40";
    }

    bool step()
    {
        const char here = content[at];
        if (startsValue && isObjectHere())
            return true;
        if (here == '\\') {
            // A line may go on below, and the value with it.
            const bool continues = at + 1 < content.size() && std::strchr("\r\n", content[at + 1]);
            startsValue = startsValue && continues;
            at += 2;
            return false;
        }
        if (here == '"')
            quoted = !quoted;
        else if (!quoted && (here == '=' || here == ','))
            startsValue = true;
        else if (here != ' ' && here != '\t')
            startsValue = false;
        ++at;
        return false;
    }

    const QByteArray &content;
    int at = 0;
    bool quoted = false;
    bool startsValue = false;
};

} // namespace

bool isHarmlessIni(const QString &path)
{
    if (!QFileInfo::exists(path))
        return true;
    QFile file(path);
    // Only a regular file: on a pipe an open would wait for ever.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = file.readAll();
    if (!content.contains('@') && !content.contains("40"))
        return true;
    return !ValueScanner(content).findsObject();
}
