#pragma once

#include <QCoreApplication>
#include <QString>

/// "Path :" and a folder, as the sentence dialogs show it: past 38 characters, the first 35 and "...".
inline QString pathLabelText(const QString &folder)
{
    const QString text = QCoreApplication::translate("dlgPcCa", "Path :") + folder;
    return text.size() > 38 ? text.left(35) + QLatin1String("...") : text;
}
