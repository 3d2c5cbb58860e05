#pragma once

#include "platform/SingleInstance.h"

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QThread>

#include <cstdio>

/// Another copy of the program in a process of its own: the test program itself, started with
/// DQ480_OTHER_COPY_ON naming a program folder, takes the folder as the program does at start-up
/// and holds it until it is killed.
struct OtherCopy
{
    QProcess process;

    /// First thing in the test program (a test class's `initMain()`): when the program is the
    /// other copy, it runs as one and never returns.
    static void runWhenAsked()
    {
        const QString folder = qEnvironmentVariable(Variable);
        if (folder.isEmpty())
            return;
        SingleInstance instance;
        std::puts(instance.acquire(folder) ? "running" : "refused");
        std::fflush(stdout);
        for (;;)
            QThread::sleep(3600);
    }

    /// True once the copy runs on `folder`.
    bool start(const QString &folder)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QLatin1String(Variable), folder);
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {});
        return process.waitForReadyRead(60'000) && process.readAll().trimmed() == "running";
    }

    /// Ends it as the system ends a program that hangs or crashes: at once, with nothing tidied up.
    void kill()
    {
        process.kill();
        process.waitForFinished(60'000);
    }

    ~OtherCopy()
    {
        if (process.state() != QProcess::NotRunning)
            kill();
    }

    static constexpr char Variable[] = "DQ480_OTHER_COPY_ON";
};
