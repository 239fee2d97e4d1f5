#include "Translations.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>

#include <algorithm>
#include <utility>

/// The linker drops a static library's resources unless this is called, outside of namespaces.
static void initResources()
{
    Q_INIT_RESOURCE(i18n);
}

const std::vector<Language> &knownLanguages()
{
    static const std::vector<Language> known{
        {QStringLiteral("de"), QStringLiteral("Deutsch")},
        {QStringLiteral("en"), QStringLiteral("English")},
    };
    return known;
}

bool isLanguage(const QString &code)
{
    return std::any_of(knownLanguages().begin(), knownLanguages().end(),
                       [&code](const Language &language) { return language.code == code; });
}

Translations::Translations()
    : Translations(QLocale::system().uiLanguages())
{
}

Translations::Translations(QStringList systemLanguages)
    : systemLanguages(std::move(systemLanguages))
{
    initResources();
}

Translations::~Translations()
{
    removeAll();
}

void Translations::use(const QString &language)
{
    const QString wanted = isLanguage(language) ? language : systemLanguage();
    if (wanted == used)
        return;
    used = wanted;
    removeAll();
    const QString qtFolder = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
    for (const char *name : {"qtbase", "qtdeclarative"})
        install(QLatin1String(name), qtFolder);
    install(QStringLiteral("gauge-host"), QStringLiteral(":/i18n"));
}

void Translations::removeAll()
{
    for (const std::unique_ptr<QTranslator> &translator : translators)
        QCoreApplication::removeTranslator(translator.get());
    translators.clear();
}

QString Translations::systemLanguage() const
{
    for (const QString &name : systemLanguages) {
        // A language, perhaps followed by a script and a country.
        QString language = name.section(QLatin1Char('-'), 0, 0);
        if (isLanguage(language))
            return language;
    }
    return QStringLiteral("en");
}

/// Does without a translation that is missing: Qt's come in a package of their own.
void Translations::install(const QString &name, const QString &folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(name + QLatin1Char('_') + used, folder))
        return;
    QCoreApplication::installTranslator(translator.get());
    translators.push_back(std::move(translator));
}
