#pragma once

#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>
#include <memory>
#include <optional>
#include <sys/prctl.h>

/// A PulseAudio daemon of the test's own, in a private runtime folder, started without any
/// configuration: its default source a 440 Hz sine (module-sine-source), its default sink a null
/// sink whose monitor a test records with parec. It runs as the user who runs the test (root in
/// CI too: the daemon warns but runs), never exits while idle, and ends with the object. The
/// process's own sound goes to it: `PULSE_SERVER` names its socket.
class PulseServer
{
public:
    static inline const QString Sink = QStringLiteral("dq480_test_out");
    static inline const QString Source = QStringLiteral("dq480_test_sine");
    static inline const QString SourceDescription = QStringLiteral("Sine source at 440 Hz");

    /// Null with `skipReason` when no daemon can start here.
    static std::unique_ptr<PulseServer> start(QString &skipReason)
    {
        if (QStandardPaths::findExecutable(QStringLiteral("pulseaudio")).isEmpty()
            || QStandardPaths::findExecutable(QStringLiteral("pactl")).isEmpty()) {
            skipReason = QStringLiteral("PulseAudio is not installed (pulseaudio, pulseaudio-utils)");
            return nullptr;
        }
        auto server = std::unique_ptr<PulseServer>(new PulseServer);
        const QString runtime = server->m_folder.filePath(QStringLiteral("run"));
        server->m_socket = runtime + QStringLiteral("/native");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime);
        environment.insert(QStringLiteral("PULSE_RUNTIME_PATH"), runtime);
        environment.insert(QStringLiteral("HOME"), server->m_folder.filePath(QStringLiteral("home")));
        environment.remove(QStringLiteral("PULSE_SERVER"));
        server->m_daemon.setProcessEnvironment(environment);
        server->m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        // A test that crashes or is killed takes its daemon with it.
        server->m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        server->m_daemon.start(
            QStringLiteral("pulseaudio"),
            {QStringLiteral("-n"), QStringLiteral("--daemonize=no"), QStringLiteral("--exit-idle-time=-1"),
             QStringLiteral("--use-pid-file=no"), QStringLiteral("--log-level=error"), QStringLiteral("-L"),
             QStringLiteral("module-native-protocol-unix auth-anonymous=1 socket=") + server->m_socket,
             QStringLiteral("-L"), QStringLiteral("module-null-sink sink_name=") + Sink});
        qputenv("PULSE_SERVER", QStringLiteral("unix:%1").arg(server->m_socket).toLocal8Bit());
        QElapsedTimer waited;
        waited.start();
        while (!server->pactl({QStringLiteral("info")})) {
            if (server->m_daemon.state() == QProcess::NotRunning || waited.elapsed() > 10000) {
                skipReason = QStringLiteral("PulseAudio does not start here");
                return nullptr;
            }
            QThread::msleep(100);
        }
        if (!server->loadSource() || !server->pactl({QStringLiteral("set-default-sink"), Sink})) {
            skipReason = QStringLiteral("PulseAudio started but its sine source or null sink did not load");
            return nullptr;
        }
        return server;
    }

    ~PulseServer()
    {
        m_daemon.kill();
        m_daemon.waitForFinished(5000);
        qunsetenv("PULSE_SERVER");
    }

    /// Runs pactl against the daemon; its output, or nothing when it failed.
    std::optional<QByteArray> pactl(const QStringList &arguments) const
    {
        QProcess process;
        process.start(QStringLiteral("pactl"), arguments);
        if (!process.waitForFinished(10000) || process.exitStatus() != QProcess::NormalExit
            || process.exitCode() != 0)
            return std::nullopt;
        return process.readAllStandardOutput();
    }

    /// The sine source, as the system's default input.
    bool loadSource()
    {
        const auto index = pactl({QStringLiteral("load-module"), QStringLiteral("module-sine-source"),
                                  QStringLiteral("source_name=") + Source, QStringLiteral("frequency=440")});
        if (!index)
            return false;
        m_sourceModule = QString::fromLatin1(index->trimmed());
        return bool(pactl({QStringLiteral("set-default-source"), Source}));
    }

    /// Takes the sine source away, as a microphone pulled out.
    bool unloadSource()
    {
        if (!pactl({QStringLiteral("unload-module"), m_sourceModule}))
            return false;
        m_sourceModule.clear();
        return true;
    }

    /// The sine source as it started, loaded and at full volume, whatever a failed test left, so
    /// that one failure does not become the next test's.
    bool restoreSource()
    {
        if (m_sourceModule.isEmpty() && !loadSource())
            return false;
        return bool(pactl({QStringLiteral("set-source-volume"), Source, QStringLiteral("100%")}));
    }

    /// Starts recording what the null sink plays, as 16-bit mono at `rate`, into `path`.
    bool startMonitor(QProcess &parec, const QString &path, int rate) const
    {
        parec.setStandardOutputFile(path);
        parec.start(QStringLiteral("parec"),
                    {QStringLiteral("--device=") + Sink + QStringLiteral(".monitor"), QStringLiteral("--raw"),
                     QStringLiteral("--format=s16le"), QStringLiteral("--channels=1"),
                     QStringLiteral("--rate=%1").arg(rate), QStringLiteral("--latency-msec=20")});
        return parec.waitForStarted(5000);
    }

    /// The streams now playing into the null sink.
    int playingStreams() const
    {
        const auto listed
            = pactl({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("sink-inputs")});
        return listed ? int(listed->count('\n')) : -1;
    }

private:
    PulseServer() = default;

    QTemporaryDir m_folder;
    QString m_socket;
    QProcess m_daemon;
    QString m_sourceModule;
};
