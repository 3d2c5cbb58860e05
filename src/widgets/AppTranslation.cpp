#include "widgets/AppTranslation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QStringList>
#include <QTranslator>

namespace AppTranslation {

QStringList languages()
{
    return {QStringLiteral("en"), QStringLiteral("ja")};
}

QString choose(const QString &asked)
{
    if (!asked.isEmpty())
        return languages().contains(asked) ? asked : QString();
    for (const QString &name : QLocale::system().uiLanguages()) {
        const QString language = QLocale(name).name().section(QLatin1Char('_'), 0, 0);
        if (languages().contains(language))
            return language;
    }
    return QStringLiteral("en");
}

bool install(QCoreApplication &app, const QString &language)
{
    if (language == QLatin1String("en"))
        return true;
    auto *own = new QTranslator(&app);
    if (!own->load(QStringLiteral(":/i18n/dq480_") + language)) {
        delete own;
        return false;
    }
    QCoreApplication::installTranslator(own);
    // Qt's own dialogs (file dialogs, message box buttons, print preview); without the system's
    // translation they stay English, which the operator can still use.
    auto *qt = new QTranslator(&app);
    if (qt->load(QStringLiteral("qtbase_") + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(qt);
    else
        delete qt;
    QLocale::setDefault(QLocale(language));
    return true;
}

} // namespace AppTranslation
