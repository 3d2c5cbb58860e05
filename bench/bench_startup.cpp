// How light the desktop program starts, against a bare Qt main window (menu, tool bar, MDI area,
// status bar) that this benchmark builds itself and starts in turn in the same run: peak memory at
// the main window and time to a visible window, as ratios of medians of several pairs, so that the
// machine's load counts for both alike. Needs Xvfb and xdotool.
//
//   build/default/bench/bench_startup [pairs] [dq480]
//
// Its X server is one of its own, on a display it picks free itself.

#include "support/Median.h"
#include "support/PrivateXServer.h"
#include "support/Xdotool.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenuBar>
#include <QProcess>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QThread>
#include <QToolBar>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

int showBareWindow(int argc, char **argv)
{
    QApplication app(argc, argv);
    QMainWindow window;
    QMenu *file = window.menuBar()->addMenu(QStringLiteral("&File"));
    file->addAction(QStringLiteral("&Open..."));
    file->addAction(QStringLiteral("E&xit"), &app, &QApplication::quit);
    window.menuBar()->addMenu(QStringLiteral("&Help"))->addAction(QStringLiteral("&About"));
    window.addToolBar(QStringLiteral("Tools"))->addAction(QStringLiteral("Open"));
    window.setCentralWidget(new QMdiArea);
    window.statusBar()->showMessage(QStringLiteral("Ready"));
    window.setWindowTitle(QStringLiteral("Bare"));
    window.resize(800, 600);
    window.show();
    return app.exec();
}

struct Start
{
    double msToWindow = 0; // from the start to the first visible window
    double peakMb = 0; // VmHWM once the program shows only its main window
};

int visibleWindows(const QString &display, qint64 pid)
{
    return int(xdotool(display,
                       {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--pid"),
                        QString::number(pid)})
                   .split(QLatin1Char('\n'), Qt::SkipEmptyParts)
                   .size());
}

double peakMb(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024.0;
    return 0;
}

/// Starts the program and waits for its main window: the only window left once a splash window,
/// if there is one, has gone. False when it does not show in 30 s.
bool measure(const QString &program, const QStringList &arguments, const QString &display, bool splash,
             Start &start)
{
    QTemporaryDir home;
    // A desktop session's runtime folder, where the single-instance lock lies, is in memory (tmpfs).
    const QString memory = QStringLiteral("/dev/shm");
    QTemporaryDir runtime((QFileInfo(memory).isWritable() ? memory : QDir::tempPath())
                          + QStringLiteral("/bench_startup-XXXXXX"));
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), display);
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    env.insert(QStringLiteral("DQ480_HOME"), home.path());
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
    QProcess app;
    app.setProcessEnvironment(env);
    app.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QElapsedTimer clock;
    clock.start();
    app.start(program, arguments);
    if (!app.waitForStarted(10000))
        return false;
    bool shown = false;
    bool splashSeen = !splash;
    QDeadlineTimer deadline(30000);
    while (!deadline.hasExpired()) {
        const int windows = visibleWindows(display, app.processId());
        if (windows > 0 && !shown) {
            start.msToWindow = double(clock.nsecsElapsed()) / 1e6;
            shown = true;
        }
        splashSeen = splashSeen || windows > 1;
        if (shown && splashSeen && windows == 1) {
            // A window is visible before its first picture is drawn, and on a busy machine the
            // bare window was sometimes read 1.6 MB short of its peak: both settle first.
            QThread::msleep(300);
            start.peakMb = peakMb(app.processId());
            break;
        }
        QThread::msleep(5);
    }
    app.kill();
    app.waitForFinished(5000);
    return start.peakMb > 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && QByteArray(argv[1]) == "--bare")
        return showBareWindow(argc, argv);
    QCoreApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    const int pairs = !arguments.isEmpty() ? std::max(1, arguments.at(0).toInt()) : 7;
    const QString dq480 = arguments.size() > 1 ? arguments.at(1) : QStringLiteral(DQ480_APP);

    const PrivateXServer x;
    const QString &display = x.display();
    if (display.isEmpty()) {
        std::fprintf(stderr, "Xvfb does not start (packages xvfb, xdotool)\n");
        return 1;
    }

    std::vector<double> msApp, msBare, mbApp, mbBare;
    for (int pair = 0; pair < pairs; ++pair) {
        Start a, b;
        // A start that meets a busy X server is tried again, up to three times.
        bool measured = false;
        for (int attempt = 0; attempt < 3 && !measured; ++attempt)
            measured = measure(dq480, {}, display, true, a)
                && measure(QCoreApplication::applicationFilePath(), {QStringLiteral("--bare")}, display,
                           false, b);
        if (!measured) {
            std::fprintf(stderr, "a window did not show\n");
            break;
        }
        msApp.push_back(a.msToWindow);
        msBare.push_back(b.msToWindow);
        mbApp.push_back(a.peakMb);
        mbBare.push_back(b.peakMb);
        std::printf("pair %d: dq480 %.0f ms %.1f MB, bare %.0f ms %.1f MB\n", pair + 1, a.msToWindow,
                    a.peakMb, b.msToWindow, b.peakMb);
    }
    if (msApp.size() < size_t(pairs))
        return 1;
    std::printf("dq480 against a bare Qt main window, medians of %d pairs:\n", pairs);
    std::printf("  peak memory at the main window: %.1f MB against %.1f MB = %.2fx (goal: at most 1.10x)\n",
                median(mbApp), median(mbBare), median(mbApp) / median(mbBare));
    std::printf("  time to a visible window: %.0f ms against %.0f ms = %.2fx (goal: at most 1.20x)\n",
                median(msApp), median(msBare), median(msApp) / median(msBare));
    return 0;
}
