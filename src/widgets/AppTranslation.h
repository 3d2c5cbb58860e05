#pragma once

#include <QString>

class QCoreApplication;

/// The operator's language for the program's own texts and for Qt's standard dialogs. English is
/// the program's own wording; other languages come from translations built into the program.
namespace AppTranslation {

/// The languages the program speaks, as accepted by --language.
QStringList languages();

/// The language to use: the one asked for, or the system's when none is asked for and the program
/// speaks it, else English. Empty when the asked-for language is unknown.
QString choose(const QString &asked);

/// Installs the translations of the language into the application; English installs none.
/// Returns false when a translation the program should carry is missing.
bool install(QCoreApplication &app, const QString &language);

} // namespace AppTranslation
