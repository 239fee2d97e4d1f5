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

/// Sets the language of the program, its library and Qt by installing translators. Windows get a
/// QEvent::LanguageChange. GUI thread; must be destroyed before the application object.
class Translations final
{
public:
    Translations();

    /// `systemLanguages` are the user's, like "de-AT", the preferred one first.
    explicit Translations(QStringList systemLanguages);

    ~Translations();

    Translations(const Translations &) = delete;
    Translations &operator=(const Translations &) = delete;

    /// The code of a language, or empty for the first of the system's languages that is known, or
    /// English.
    void use(const QString &language);

    /// The code of the language in use.
    QString language() const { return used; }

private:
    QString systemLanguage() const;
    void removeAll();
    void install(const QString &name, const QString &folder);

    const QStringList systemLanguages;
    QString used;
    std::vector<std::unique_ptr<QTranslator>> translators;
};
