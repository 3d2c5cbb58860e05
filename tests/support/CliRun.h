#pragma once

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// What one run of dq480-cli left: its exit code and what it printed on each channel.
struct CliRun
{
    int code = -1;
    QString out;
    QString err;
};

/// Runs the tests' dq480-cli (DQ480_CLI) to its end, with `input` on its standard input and no
/// terminal behind it, so a question it asks gets the input's answer or none; a run that hangs
/// ends the test.
inline CliRun runCli(const QStringList &args,
                     const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment(),
                     const QByteArray &input = {})
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(DQ480_CLI), args);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60000))
        qFatal("dq480-cli did not finish");
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}
