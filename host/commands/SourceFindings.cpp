#include "SourceFindings.h"

#include "OffscreenDashboard.h"
#include "SourceTokens.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtGui/QFontDatabase>

namespace {

using Kind = SourceToken::Kind;
using Tokens = std::vector<SourceToken>;

constexpr qint64 LargestSource = 4'000'000; // bytes

/// Looks through one folder.
class Scan
{
public:
    Scan(const QString &document, const QSet<QString> &published)
        : document(QFileInfo(document).absoluteFilePath())
        , folder(QFileInfo(document).absolutePath())
        , published(published)
    {
    }

    std::vector<Finding> run()
    {
        loadFonts();
        QStringList sources;
        QDirIterator files(folder.path(), {QStringLiteral("*.qml"), QStringLiteral("*.js")},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            sources.append(files.next());
        sources.sort();
        for (const QString &source : qAsConst(sources))
            look(source);
        if (!folder.exists(QStringLiteral("preview.png"))) {
            report(folder.filePath(QStringLiteral("preview.png")), 0,
                   QStringLiteral("Missing: galleries list only dashboards that have it."));
        }
        if (writesText && !ownsFonts)
            report(document, 0,
                   QStringLiteral("Text uses whatever font the computer has, as no font lies in "
                                  "the folder."));
        return findings;
    }

private:
    void report(const QString &file, int line, const QString &text)
    {
        findings.push_back({file, line, text});
    }

    void loadFonts()
    {
        QDirIterator files(folder.path(), {QStringLiteral("*.ttf"), QStringLiteral("*.otf")},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            const int id = QFontDatabase::addApplicationFont(path);
            if (id < 0)
                report(path, 0, QStringLiteral("Not a font file."));
            else
                families += QFontDatabase::applicationFontFamilies(id);
            ownsFonts = true;
        }
    }

    void look(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly) || file.size() > LargestSource) {
            report(path, 0, QStringLiteral("Can't be read."));
            return;
        }
        const Tokens tokens = sourceTokens(QString::fromUtf8(file.readAll()));
        for (std::size_t i = 0; i < tokens.size(); ++i) {
            const SourceToken &token = tokens[i];
            const bool opensObject =
                i + 1 < tokens.size() && tokens[i + 1].text == QLatin1String("{");
            if (token.kind == Kind::String)
                lookAtString(path, tokens, i);
            else if (token.kind == Kind::Word)
                lookAtWord(path, token, opensObject);
        }
        if (path == document)
            lookAtSize(path, tokens);
    }

    void lookAtWord(const QString &path, const SourceToken &token, bool opensObject)
    {
        static const QRegularExpression moving(QStringLiteral(
            "^(Timer|[A-Z]\\w*Animation|SpringAnimation|Animat(ed\\w+|or\\w*)|[A-Z]\\w*Animator|"
            "Transition|ParticleSystem)$"));
        static const QRegularExpression text(QStringLiteral("^(Text|TextEdit|TextInput|Label)$"));
        if (token.text.startsWith(QLatin1String("dash_")) && !published.contains(token.text)) {
            report(path, token.line, QStringLiteral("%1 is not published.").arg(token.text));
        } else if (token.text == QLatin1String("Behavior") ||
                   (opensObject && moving.match(token.text).hasMatch())) {
            report(path, token.line,
                   QStringLiteral("%1 animates by itself, but nothing is drawn until telemetry "
                                  "comes.")
                       .arg(token.text));
        }
        writesText = writesText || (opensObject && text.match(token.text).hasMatch());
    }

    void lookAtString(const QString &path, const Tokens &tokens, std::size_t i)
    {
        const SourceToken &token = tokens[i];
        const auto word = [&tokens, i](std::size_t back) {
            return i >= back ? tokens[i - back].text : QString();
        };
        if (word(1) == QLatin1String(":") && word(2) == QLatin1String("family") &&
            !families.contains(token.text, Qt::CaseInsensitive)) {
            report(path, token.line,
                   QStringLiteral("No font '%1' lies in the folder.").arg(token.text));
        }
        static const QRegularExpression file(
            QStringLiteral(
                "^[^*<>|\"]*[^/\\\\.*<>|\"]\\.(qml|js|png|jpe?g|gif|webp|svg|bmp|ttf|otf)$"),
            QRegularExpression::CaseInsensitiveOption);
        if (file.match(token.text).hasMatch())
            lookAtFile(path, token);
    }

    void lookAtFile(const QString &path, const SourceToken &token)
    {
        const QDir here = QFileInfo(path).absoluteDir();
        const QString target = QDir::cleanPath(here.absoluteFilePath(token.text));
        const bool within = target.startsWith(folder.path() + QLatin1Char('/'));
        if (token.text.contains(QLatin1String(":")) || !within) {
            report(
                path, token.line,
                QStringLiteral("'%1' lies outside the folder, so copies of the dashboard lack it.")
                    .arg(token.text));
        } else if (!QFileInfo::exists(target)) {
            report(path, token.line, QStringLiteral("'%1' is missing.").arg(token.text));
        }
    }

    void lookAtSize(const QString &path, const Tokens &tokens)
    {
        for (const auto &[side, wanted] : {std::pair(QStringLiteral("width"), DashboardWidth),
                                           std::pair(QStringLiteral("height"), DashboardHeight)}) {
            const SourceToken *value = rootValue(tokens, side);
            if (value == nullptr) {
                report(path, 0,
                       QStringLiteral("The root has no %1; it should be %2.")
                           .arg(side, QString::number(wanted)));
                continue;
            }
            bool isNumber = false;
            const double size = value->text.toDouble(&isNumber);
            if (isNumber && size != wanted) {
                report(path, value->line,
                       QStringLiteral("The root's %1 is %2, not %3.")
                           .arg(side, value->text, QString::number(wanted)));
            }
        }
    }

    /// The first token of the root's value for a property.
    static const SourceToken *rootValue(const Tokens &tokens, const QString &property)
    {
        int depth = 0;
        for (std::size_t i = 0; i + 2 < tokens.size(); ++i) {
            const QString &text = tokens[i].text;
            if (tokens[i].kind == Kind::Mark)
                depth += text == QLatin1String("{") ? 1 : text == QLatin1String("}") ? -1 : 0;
            else if (depth == 1 && text == property && tokens[i + 1].text == QLatin1String(":"))
                return &tokens[i + 2];
        }
        return nullptr;
    }

    const QString document;
    const QDir folder;
    const QSet<QString> &published;
    QStringList families;
    bool ownsFonts = false;
    bool writesText = false;
    std::vector<Finding> findings;
};

} // namespace

std::vector<Finding> findingsInSources(const QString &document, const QSet<QString> &published)
{
    return Scan(document, published).run();
}
