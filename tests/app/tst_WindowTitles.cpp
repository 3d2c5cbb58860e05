// The titles the window system shows for the desktop program's windows: read back from a real X
// server, because the platform layer may add to a title after the widget has set it.

#include "support/PrivateXServer.h"
#include "support/Xdotool.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

const QString AppProgram = QStringLiteral(DQ480_APP);
const QString Example = QStringLiteral(DQ480_TEST_DATA "/example-two-sentences.stf");

QByteArray readExample()
{
    QFile file(Example);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_WindowTitles : public QObject
{
    Q_OBJECT

    std::unique_ptr<PrivateXServer> m_x;
    QString m_display;
    std::unique_ptr<QTemporaryDir> m_home;
    QList<QProcess *> m_apps;

    QProcessEnvironment appEnvironment() const
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DISPLAY"), m_display);
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        env.insert(QStringLiteral("DQ480_HOME"), m_home->filePath(QStringLiteral("home")));
        // Qt's runtime folder: each test has its own.
        env.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_home->filePath(QStringLiteral("run")));
        return env;
    }

    QString xdotool(const QStringList &arguments) const { return ::xdotool(m_display, arguments); }

    QProcess *startApp(const QStringList &arguments = {}, const QString &folder = {})
    {
        auto *app = new QProcess(this);
        app->setWorkingDirectory(folder);
        app->setProcessEnvironment(appEnvironment());
        app->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        app->start(AppProgram, arguments);
        m_apps.append(app);
        return app;
    }

    /// The titles of the program's mapped windows, sorted.
    QStringList titles(const QProcess *app) const
    {
        QStringList found;
        const QString ids = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                     QStringLiteral("--pid"), QString::number(app->processId())});
        for (const QString &id : ids.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            found << xdotool({QStringLiteral("getwindowname"), id});
        found.sort();
        return found;
    }

    /// Waits until the program shows exactly these window titles; the titles last seen otherwise.
    QStringList waitForTitles(const QProcess *app, const QStringList &expected) const
    {
        QDeadlineTimer deadline(15000);
        QStringList seen;
        do {
            seen = titles(app);
            if (seen == expected)
                break;
            QTest::qWait(100);
        } while (!deadline.hasExpired());
        return seen;
    }

    /// Whether the program is stuck in the kernel on a FUSE mount that does not answer: it looks
    /// at every mounted volume at start, and a hung mount of another program stops it there.
    static bool stuckOnAMount(const QProcess *app)
    {
        QFile wchan(QStringLiteral("/proc/%1/wchan").arg(app->processId()));
        if (wchan.open(QIODevice::ReadOnly) && wchan.readAll().contains("request_wait_answer"))
            return true;
        QFile stack(QStringLiteral("/proc/%1/stack").arg(app->processId()));
        return stack.open(QIODevice::ReadOnly) && stack.readAll().contains("fuse_");
    }

private slots:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty()
            || QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty())
            QSKIP("needs Xvfb and xdotool (packages xvfb, xdotool)");
        m_x = std::make_unique<PrivateXServer>(QStringLiteral("1024x768x24"));
        m_display = m_x->display();
        QVERIFY2(!m_display.isEmpty(), "Xvfb did not report its display");
    }
    void cleanupTestCase() { m_x.reset(); }
    void init()
    {
        m_home = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_home->path()).mkpath(QStringLiteral("home")));
        QVERIFY(QDir(m_home->path()).mkpath(QStringLiteral("run")));
        QFile::setPermissions(m_home->filePath(QStringLiteral("run")),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    void cleanup()
    {
        for (QProcess *app : std::as_const(m_apps)) {
            app->kill();
            // A program stuck in the kernel cannot end yet; deleting it would wait for it.
            if (app->waitForFinished(5000))
                delete app;
            else
                app->setParent(nullptr);
        }
        m_apps.clear();
        m_home.reset();
    }

    void titlesAreTheProgramsOwn_data()
    {
        QTest::addColumn<QString>("step");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("main window") << "" << QStringList {"Arvon DQ-480"};
        QTest::newRow("new project") << "ctrl+n" << QStringList {"DQ-480 Setting Software : New File"};
        // The second copy only says that the first one runs, in a message box; a file
        // double-clicked while the program runs opens nothing in either copy.
        QTest::newRow("second copy with a file") << "second copy with a file" << QStringList {"DQ-480"};
    }
    void titlesAreTheProgramsOwn()
    {
        QFETCH(QString, step);
        QFETCH(QStringList, expected);
        QProcess *first = startApp();
        QVERIFY(first->waitForStarted(10000));
        // Once the splash window has gone, the main window is the program's only window. The
        // main window is mapped just before the splash, so the splash is first waited for.
        waitForTitles(first, {QStringLiteral("Arvon DQ-480"), QStringLiteral("Arvon DQ-480")});
        const QStringList started = waitForTitles(first, {QStringLiteral("Arvon DQ-480")});
        if (started.isEmpty() && stuckOnAMount(first))
            QSKIP("the program waits on a FUSE mount of this machine that does not answer");
        QCOMPARE(started, QStringList {"Arvon DQ-480"});

        const QProcess *shown = first;
        if (step == QLatin1String("second copy with a file")) {
            shown = startApp({Example});
        } else if (!step.isEmpty()) {
            xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"),
                     xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                              QStringLiteral("--pid"), QString::number(first->processId())})});
            xdotool({QStringLiteral("key"), step});
        }
        const QStringList seen = waitForTitles(shown, expected);
        if (seen.isEmpty() && stuckOnAMount(shown))
            QSKIP("the program waits on a FUSE mount of this machine that does not answer");
        QCOMPARE(seen, expected);
        if (step.startsWith(QLatin1String("second copy"))) {
            const QStringList after = titles(first);
            QVERIFY2(after == QStringList {"Arvon DQ-480"}, qPrintable(after.join(QLatin1String(" | "))));
        }
    }

    // What a file manager's double-click runs: the program with the file's path. A shell's relative
    // name: the project remembers where the file is, for Save.
    void fileGivenOnTheCommandLine()
    {
        const QByteArray content = readExample();
        QFile file(m_home->filePath(QStringLiteral("station.stf")));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        file.close();
        const QStringList expected {
            QStringLiteral("DQ-480 Setting Software : %1/station.stf").arg(m_home->path())};
        const QProcess *app = startApp({QStringLiteral("station.stf")}, m_home->path());
        const QStringList seen = waitForTitles(app, expected);
        if (seen.isEmpty() && stuckOnAMount(app))
            QSKIP("the program waits on a FUSE mount of this machine that does not answer");
        QCOMPARE(seen, expected);
    }
};

QTEST_GUILESS_MAIN(tst_WindowTitles)
#include "tst_WindowTitles.moc"
