#pragma once

#include <QCoreApplication>
#include <QString>

/// The project's file name as windows show it. A project never saved is named "New File" in the
/// shared state, where that name is also compared; only what the operator sees is translated.
inline QString shownFileName(const QString &projectFileName)
{
    return projectFileName == QLatin1String("New File") ? QCoreApplication::translate("frmMain", "New File")
                                                        : projectFileName;
}
