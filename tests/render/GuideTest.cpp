#include "render/DashboardRenderer.h"
#include "support/DocumentFolder.h"
#include "views/DashboardFadeInOut.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QtTest>

namespace {

QString readGuide()
{
    QFile file(QStringLiteral(GAUGE_GUIDE));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", GAUGE_GUIDE, qPrintable(file.errorString()));
    return QString::fromUtf8(file.readAll());
}

/// The names in the guide's tables, twins and corners written out.
std::set<QString> namesInTables(const QString &guide)
{
    static const QRegularExpression row(QStringLiteral("^\\| `(dash_\\w+)(\\*?)` .*$"),
                                        QRegularExpression::MultilineOption);
    std::set<QString> names;
    for (auto match = row.globalMatch(guide); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        const QStringList corners = found.captured(2).isEmpty()
                                        ? QStringList{QString()}
                                        : QStringList{QStringLiteral("FL"), QStringLiteral("FR"),
                                                      QStringLiteral("RL"), QStringLiteral("RR")};
        for (const QString &corner : corners) {
            const QString name = found.captured(1) + corner;
            names.insert(name);
            if (found.captured().contains(QLatin1String("**twin**")))
                names.insert(name + QStringLiteral("_Available"));
        }
    }
    return names;
}

} // namespace

class GuideTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    static void initTestCase() { DashboardFadeInOut::registerType(); }

    void theTablesListWhatIsPublished()
    {
        DashboardRenderer renderer;
        renderer.load({}, 480, 272);
        const std::set<QString> listed = namesInTables(readGuide());
        const std::set<QString> published = renderer.publishedFields();
        for (const QString &name : published)
            QVERIFY2(listed.count(name) == 1, qPrintable(name + QStringLiteral(" is not listed")));
        QCOMPARE(listed.size(), published.size());
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
            DashboardRenderer renderer;
            const bool loaded = renderer.load(
                folder.write(QStringLiteral("Dash.qml"), document.toUtf8()), 480, 272);
            QVERIFY2(loaded, qPrintable(document + renderer.errors().join(QLatin1Char('\n'))));
        }
        QCOMPARE(documents, 2);
    }
};

QTEST_MAIN(GuideTest)
#include "GuideTest.moc"
