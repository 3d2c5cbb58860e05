#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

/// Writes a whole file for a test's set-up; a failure ends the test run, it is not what is tested.
inline void writeTestFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

/// The whole file, or nothing when it cannot be read.
inline QByteArray readTestFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
