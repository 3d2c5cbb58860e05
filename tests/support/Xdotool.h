#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// Runs xdotool against the X server `display` and gives what it printed, trimmed: how the tests
/// that start the real program find and drive its windows.
inline QString xdotool(const QString &display, const QStringList &arguments)
{
    QProcess tool;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), display);
    tool.setProcessEnvironment(env);
    tool.start(QStringLiteral("xdotool"), arguments);
    tool.waitForFinished(10000);
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}
