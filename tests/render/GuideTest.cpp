#include "render/DashboardRenderer.h"
#include "render/TelemetryPublisher.h"
#include "support/DocumentFolder.h"
#include "views/DashboardFadeInOut.h"

#include <QtCore/QDirIterator>
#include <QtCore/QRegularExpression>
#include <QtTest/QtTest>

#include <map>

namespace {

QString readGuide(const char *name = "dashboards.md")
{
    QFile file(QDir(QStringLiteral(GUIDES_DIRECTORY)).filePath(QLatin1String(name)));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", name, qPrintable(file.errorString()));
    return QString::fromUtf8(file.readAll());
}

/// What is the same in every language: headings' levels, code, addresses, and marks of twins. In
/// any order, since sentences have theirs.
QStringList skeletonOf(const QString &guide)
{
    static const QRegularExpression part(
        QStringLiteral("^```\n.*?^```|^    \\S.*?$|`[^`\n]+`|^#+ |\\]\\([^#)]+\\)|^\\| `\\S+` \\| "
                       "\\w+ \\||\\*\\*(twin|Zwilling)\\*\\*"),
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    QStringList parts;
    for (auto match = part.globalMatch(guide); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        parts += found.captured(1).isEmpty() ? found.captured() : QStringLiteral("twin");
    }
    parts.sort();
    return parts;
}

/// The names in the guide's tables with their types, twins and corners written out.
std::map<QString, QString> namesInTables(const QString &guide)
{
    static const QRegularExpression row(
        QStringLiteral("^\\| `(dash_\\w+)(\\*?)` \\| (\\w+) \\|.*$"),
        QRegularExpression::MultilineOption);
    std::map<QString, QString> names;
    for (auto match = row.globalMatch(guide); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        const QStringList corners = found.captured(2).isEmpty()
                                        ? QStringList{QString()}
                                        : QStringList{QStringLiteral("FL"), QStringLiteral("FR"),
                                                      QStringLiteral("RL"), QStringLiteral("RR")};
        for (const QString &corner : corners) {
            const QString name = found.captured(1) + corner;
            names[name] = found.captured(3);
            if (found.captured().contains(QLatin1String("**twin**")))
                names[name + QStringLiteral("_Available")] = QStringLiteral("bool");
        }
    }
    return names;
}

QString typeName(const QVariant &value)
{
    const QString name = QString::fromLatin1(value.typeName());
    return name == QLatin1String("QString") ? QStringLiteral("text") : name;
}

/// What the root of a part takes, by the order of its declaration.
QStringList propertiesOf(const QString &part)
{
    static const QRegularExpression declaration(
        QStringLiteral("^    property (?:alias|\\w+) (\\w+)"), QRegularExpression::MultilineOption);
    QFile file(part);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", qPrintable(part), qPrintable(file.errorString()));
    QStringList names;
    const QString source = QString::fromUtf8(file.readAll());
    for (auto match = declaration.globalMatch(source); match.hasNext();)
        names.append(match.next().captured(1));
    return names;
}

/// Puts the shared parts into a folder.
void copyParts(const QString &folder)
{
    const QDir source(QStringLiteral(PARTS_DIRECTORY));
    QDirIterator files(source.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        const QString copy = folder + QLatin1Char('/') + source.relativeFilePath(file);
        QVERIFY(QFileInfo(copy).dir().mkpath(QStringLiteral(".")));
        QVERIFY(QFile::copy(file, copy));
    }
}

} // namespace

class GuideTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    static void initTestCase() { DashboardFadeInOut::registerType(); }

    void theTablesListWhatIsPublished()
    {
        std::map<QString, QString> published;
        TelemetryPublisher publisher([&published](const QString &name, const QVariant &value) {
            published[name] = typeName(value);
        });
        publisher.publish({{}, {}, {}, {}, {}});
        const std::map<QString, QString> listed = namesInTables(readGuide());
        for (const auto &[name, type] : published) {
            QVERIFY2(listed.count(name) == 1, qPrintable(name + QStringLiteral(" is not listed")));
            QVERIFY2(listed.at(name) == type, qPrintable(name + QStringLiteral(" is ") + type));
        }
        QCOMPARE(listed.size(), published.size());
    }

    void theTableOfPartsListsWhatTheyTake()
    {
        const QString guide = readGuide();
        const QStringList parts =
            QDir(QStringLiteral(PARTS_DIRECTORY)).entryList({QStringLiteral("*.qml")});
        QVERIFY(!parts.isEmpty());
        for (const QString &file : parts) {
            const QStringList properties = propertiesOf(QStringLiteral(PARTS_DIRECTORY "/") + file);
            const QString row = QStringLiteral("| `%1` |").arg(QFileInfo(file).baseName());
            const QString cell =
                QStringLiteral(" | `%1` |\n").arg(properties.join(QStringLiteral("`, `")));
            const QString line = guide.mid(guide.indexOf(row)).section(QLatin1Char('\n'), 0, 0);
            QVERIFY2(line.startsWith(row), qPrintable(file));
            QVERIFY2((line + QLatin1Char('\n')).endsWith(cell), qPrintable(file + cell));
        }
    }

    void theTranslationSaysTheSame()
    {
        const QStringList original = skeletonOf(readGuide());
        QVERIFY(original.size() > 300);
        QCOMPARE(skeletonOf(readGuide("dashboards.de.md")), original);
    }

    void itsDocumentsLoad()
    {
        static const QRegularExpression block(QStringLiteral("^```\n(import .*?)^```"),
                                              QRegularExpression::MultilineOption |
                                                  QRegularExpression::DotMatchesEverythingOption);
        int documents = 0;
        const QString guide = readGuide();
        for (auto match = block.globalMatch(guide); match.hasNext();) {
            const QString document = match.next().captured(1);
            if (!document.contains(QLatin1Char('{')))
                continue;
            ++documents;
            const DocumentFolder folder;
            if (document.contains(QLatin1String("import \"Gauges\"")))
                copyParts(folder.path(QStringLiteral("Gauges")));
            DashboardRenderer renderer;
            const bool loaded = renderer.load(
                folder.write(QStringLiteral("Dash.qml"), document.toUtf8()), 480, 272);
            QVERIFY2(loaded, qPrintable(document + renderer.errors().join(QLatin1Char('\n'))));
        }
        QCOMPARE(documents, 3);
    }
};

QTEST_MAIN(GuideTest)
#include "GuideTest.moc"
