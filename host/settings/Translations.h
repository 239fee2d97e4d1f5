#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTranslator>

#include <memory>
#include <vector>

/// A language that the program speaks.
struct Language
{
    QString code; ///< As in "de"; settings keep it.
    QString name; ///< In the language itself, for whoever can't read the current one.
};

/// The languages there are, by name. Any thread.
const std::vector<Language> &knownLanguages();

/// Whether `code` is one of them.
bool isLanguage(const QString &code);

/// The language of the program, its library and Qt's own texts: installs and takes out translators
/// on the application object. Windows hear of a change by QEvent::LanguageChange. GUI thread; must
/// end before the application object.
class Translations final
{
public:
    Translations();

    /// `systemLanguages` holds what the system's user wants, like "de-AT", the best first.
    explicit Translations(QStringList systemLanguages);

    ~Translations();

    Translations(const Translations &) = delete;
    Translations &operator=(const Translations &) = delete;

    /// "en", "de", or empty for the first language of the system's that there is; else English.
    void use(const QString &language);

    /// What is in use: "en" or "de".
    QString language() const { return used; }

private:
    QString systemLanguage() const;
    void removeAll();
    void install(const QString &name, const QString &folder);

    const QStringList systemLanguages;
    QString used;
    std::vector<std::unique_ptr<QTranslator>> translators;
};
