#include "LintCommand.h"

#include "OffscreenDashboard.h"
#include "SourceFindings.h"
#include "system/DocumentMessage.h"
#include "system/Terminal.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

Finding findingOf(const QString &warning)
{
    if (const auto message = DocumentMessage::fromWarning(warning))
        return {message->file, message->line, message->text};
    return {{}, 0, warning};
}

void print(const Finding &finding, const QDir &folder)
{
    QString place = finding.file.isEmpty() ? QString() : folder.relativeFilePath(finding.file);
    if (finding.line > 0)
        place += QStringLiteral(":%1").arg(finding.line);
    const QString text =
        place.isEmpty() ? finding.text : place + QLatin1String(": ") + finding.text;
    printOutput(text);
}

/// Keeps warnings off the terminal while it lives, since they are printed as findings. What scripts
/// log is passed on.
class QuietWarnings
{
public:
    QuietWarnings() { previous = qInstallMessageHandler(handle); }
    ~QuietWarnings() { qInstallMessageHandler(previous); }
    QuietWarnings(const QuietWarnings &) = delete;
    QuietWarnings &operator=(const QuietWarnings &) = delete;

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        const auto message = DocumentMessage::fromLog(context, text);
        if (message && message->ofScript)
            previous(type, context, text);
    }

    static inline QtMessageHandler previous = nullptr;
};

std::vector<Finding> findingsInRun(OffscreenDashboard &dashboard, const QString &document)
{
    std::vector<Finding> findings;
    const auto collect = [&](const QString &circumstance) {
        const QStringList errors = dashboard.errors();
        for (int i = int(findings.size()); i < errors.size(); ++i) {
            findings.push_back(findingOf(errors.at(i)));
            if (!circumstance.isEmpty())
                findings.back().text += QStringLiteral(" (%1)").arg(circumstance);
        }
    };
    if (!dashboard.load(document)) {
        collect({});
        return findings;
    }
    const std::vector<TelemetryState> states = telemetryStates();
    bool standsStill = true;
    for (const TelemetryState &state : states) {
        // A fault may lie in the change itself, in either direction.
        for (const TelemetryState *shown : {&state, &states.front()}) {
            standsStill = !dashboard.settled(*shown).isNull() && standsStill;
            collect(state.name);
        }
        if (!standsStill)
            break;
    }
    if (!standsStill)
        findings.push_back({document, 0, QStringLiteral("The picture keeps changing.")});
    return findings;
}

} // namespace

int lintDashboard(const QString &document, IDashboardEngine &engine)
{
    const QFileInfo info(document);
    if (!info.isFile()) {
        printError(
            QStringLiteral("No such dashboard: '%1'.").arg(QDir::toNativeSeparators(document)));
        return 1;
    }
    const QuietWarnings quiet;
    OffscreenDashboard dashboard(engine);
    std::vector<Finding> findings = findingsInRun(dashboard, info.absoluteFilePath());
    const QStringList names = dashboard.publishedFields();
    const std::vector<Finding> inSources =
        findingsInSources(document, QSet<QString>(names.begin(), names.end()));
    findings.insert(findings.end(), inSources.begin(), inSources.end());
    for (const Finding &finding : findings)
        print(finding, info.absoluteDir());
    if (findings.empty())
        printOutput(QStringLiteral("No findings in '%1'.").arg(QDir::toNativeSeparators(document)));
    return findings.empty() ? 0 : 1;
}
