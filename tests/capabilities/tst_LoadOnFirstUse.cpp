// The desktop program loads sound, the codecs, the test-tone encoder and printing only when the
// operator first uses them: the real program at its main window holds none of their libraries, and
// this test, built as the program is, finds each one loaded after its first use.

#include "audio/AudioImport.h"
#include "audio/SentencePlayer.h"
#include "audio/SoundDevices.h"
#include "print/PrintSetting.h"
#include "setting/TestToneEncoder.h"
#include "support/GuiFixture.h"
#include "support/PrivateXServer.h"
#include "support/Xdotool.h"

#include <QApplication>
#include <QTimer>

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString AppProgram = QStringLiteral(DQ480_APP);

QString mapsOf(qint64 pid)
{
    QFile maps(QStringLiteral("/proc/%1/maps").arg(pid));
    return maps.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(maps.readAll()) : QString();
}

/// The libraries whose file name starts with one of `names` and that `maps` holds.
QStringList loaded(const QString &maps, const QStringList &names)
{
    QStringList found;
    for (const QString &name : names)
        if (maps.contains(QLatin1Char('/') + name))
            found << name;
    return found;
}

} // namespace

class tst_LoadOnFirstUse : public QObject
{
    Q_OBJECT

    QTemporaryDir m_work;
    QString m_ownMapsAtStart;
    QString m_appMaps; // the real program's, read once

    QString path(const char *name) const { return m_work.filePath(QString::fromLatin1(name)); }

private slots:
    void initTestCase()
    {
        m_ownMapsAtStart = mapsOf(QCoreApplication::applicationPid());
        QVERIFY(m_work.isValid());
    }

    // Before any plugin is found: each use says which part is not installed, and nothing crashes.
    void missingPluginIsNamed()
    {
        QString error;
        QVERIFY(encodeTestTone(error).isEmpty());
        QVERIFY2(error.startsWith(
                     QLatin1String("The test-tone encoder is not installed: dq480-testtone is missing")),
                 qPrintable(error));
        QFile sentence(path("A.MP2"));
        QVERIFY(sentence.open(QIODevice::WriteOnly));
        sentence.close();
        SentencePlayer player;
        QVERIFY(!player.play(sentence.fileName(), error));
        QVERIFY2(
            error.contains(QLatin1String("Sound file conversion is not installed: dq480-codecs is missing")),
            qPrintable(error));
        // The recorder and the program window reach the sound system through the same plugin.
        const QLatin1String noSound("Sound playback is not installed: dq480-playback is missing");
        error.clear();
        QVERIFY(soundInputs(error).isEmpty());
        QVERIFY2(error.startsWith(noSound), qPrintable(error));
        error.clear();
        QVERIFY(!openSoundStream(32000, error));
        QVERIFY2(error.startsWith(noSound), qPrintable(error));
        GuiFixture f;
        showPrintSetting(f.context, PrintKind::AllSettingData, 1, nullptr);
        QCOMPARE(f.msgBox.shown.size(), 1);
        QVERIFY2(f.msgBox.shown.first().startsWith(
                     QLatin1String("Printing is not installed: dq480-print is missing")),
                 qPrintable(f.msgBox.shown.first()));
    }

    void realProgramAtItsMainWindow_data()
    {
        QTest::addColumn<QString>("library");
        QTest::newRow("Qt Multimedia") << "libQt6Multimedia";
        QTest::newRow("PortAudio") << "libportaudio";
        QTest::newRow("Qt DBus") << "libQt6DBus";
        QTest::newRow("libsndfile") << "libsndfile";
        QTest::newRow("mpg123") << "libmpg123";
        QTest::newRow("libsamplerate") << "libsamplerate";
        QTest::newRow("libebur128") << "libebur128";
        QTest::newRow("twolame") << "libtwolame";
        QTest::newRow("Qt Print Support") << "libQt6PrintSupport";
    }
    void realProgramAtItsMainWindow()
    {
        QFETCH(QString, library);
        if (loaded(m_ownMapsAtStart, {library}) == QStringList {library})
            QSKIP("Qt Gui on this system loads it itself, in every Qt program");
        if (QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty()
            || QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty())
            QSKIP("needs Xvfb and xdotool (packages xvfb, xdotool)");
        if (m_appMaps.isEmpty())
            m_appMaps = mainWindowMaps();
        QVERIFY2(!m_appMaps.isEmpty(), "the program did not show its main window");
        QCOMPARE(loaded(m_appMaps, {library}), QStringList());
    }

    // In the order an operator meets them: a card write makes the test tone, a recording is
    // imported, the sentence plays.
    void firstUseLoads_data()
    {
        QTest::addColumn<QString>("use");
        QTest::addColumn<QStringList>("nowLoaded");
        QTest::addColumn<QStringList>("notYet");
        QTest::newRow("test tone") << "test tone" << QStringList {"libtwolame"}
                                   << QStringList {"libsndfile", "libmpg123", "libQt6Multimedia"};
        QTest::newRow("importing") << "importing"
                                   << QStringList {"libsndfile", "libmpg123", "libsamplerate", "libebur128"}
                                   << QStringList {"libQt6Multimedia", "libportaudio"};
        QTest::newRow("playing") << "playing" << QStringList {SoundSystemLibrary}
                                 << QStringList {"libQt6PrintSupport"};
        QTest::newRow("printing") << "printing" << QStringList {"libQt6PrintSupport"} << QStringList {};
    }
    void firstUseLoads()
    {
        QFETCH(QString, use);
        QFETCH(QStringList, nowLoaded);
        QFETCH(QStringList, notYet);
        qputenv("DQ480_PLUGINS", QFileInfo(AppProgram).absolutePath().toLocal8Bit());
        QString error;
        if (use == QLatin1String("test tone")) {
            const QByteArray tone = encodeTestTone(error);
            QVERIFY2(!tone.isEmpty(), qPrintable(error));
            QFile file(path("SIN1KHZ.MP2"));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(tone) == tone.size());
        } else if (use == QLatin1String("importing")) {
            ImportResult result;
            QVERIFY2(importRecording(path("SIN1KHZ.MP2"), path("B.MP2"), ImportOptions(), result, error),
                     qPrintable(error));
        } else if (use == QLatin1String("playing")) {
            SentencePlayer player;
            // A machine without a sound card refuses to play, after the sound system is loaded.
            player.play(path("B.MP2"), error);
        } else {
            GuiFixture f;
            // The print setting dialog shows; the operator cancels it.
            QTimer::singleShot(0, [] {
                if (QWidget *dialog = QApplication::activeModalWidget())
                    dialog->close();
            });
            showPrintSetting(f.context, PrintKind::AllSettingData, 1, nullptr);
            QCOMPARE(f.msgBox.shown, QStringList());
        }
        const QString maps = mapsOf(QCoreApplication::applicationPid());
        QCOMPARE(loaded(maps, nowLoaded), nowLoaded);
        QCOMPARE(loaded(maps, notYet), QStringList());
    }

    // Once loaded, a plugin stays for the process: later uses look in no folder again.
    void keptOnceLoaded()
    {
        qputenv("DQ480_PLUGINS", m_work.path().toLocal8Bit());
        QString error;
        QVERIFY2(!encodeTestTone(error).isEmpty(), qPrintable(error));
        ImportResult result;
        QVERIFY2(importRecording(path("SIN1KHZ.MP2"), path("C.MP2"), ImportOptions(), result, error),
                 qPrintable(error));
    }

private:
    static constexpr const char *SoundSystemLibrary = DQ480_SOUND_SYSTEM_LIBRARY;

    /// The memory map of the real program once its main window shows, on a private X server; empty
    /// when it does not show.
    static QString mainWindowMaps()
    {
        const PrivateXServer x;
        const QString &display = x.display();
        if (display.isEmpty())
            return {};
        QTemporaryDir home;
        QDir(home.path()).mkpath(QStringLiteral("home"));
        QDir(home.path()).mkpath(QStringLiteral("run"));
        QFile::setPermissions(home.filePath(QStringLiteral("run")),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DISPLAY"), display);
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        env.insert(QStringLiteral("DQ480_HOME"), home.filePath(QStringLiteral("home")));
        env.insert(QStringLiteral("XDG_RUNTIME_DIR"), home.filePath(QStringLiteral("run")));
        env.remove(QStringLiteral("DQ480_PLUGINS"));
        QProcess app;
        app.setProcessEnvironment(env);
        app.start(AppProgram);
        QString maps;
        // The main window shows just before the splash window, which closes a moment later: the
        // program's only window after two is its main window, ready for the operator.
        bool splashSeen = false;
        QDeadlineTimer deadline(20000);
        while (app.waitForStarted(10000) && !deadline.hasExpired()) {
            const int windows = xdotool(display,
                                        {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                         QStringLiteral("--pid"), QString::number(app.processId())})
                                    .split(QLatin1Char('\n'), Qt::SkipEmptyParts)
                                    .size();
            splashSeen = splashSeen || windows == 2;
            if (splashSeen && windows == 1) {
                maps = mapsOf(app.processId());
                break;
            }
            QTest::qWait(50);
        }
        app.kill();
        app.waitForFinished(5000);
        return maps;
    }
};

QTEST_MAIN(tst_LoadOnFirstUse)
#include "tst_LoadOnFirstUse.moc"
