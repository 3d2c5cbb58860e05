#pragma once

#include <QDeadlineTimer>
#include <QProcess>
#include <QString>

/// An X server of one's own (Xvfb) on a display it picks free itself, ended with the object. It
/// does not reset when its last client leaves: a program started at once after another finds it.
class PrivateXServer
{
public:
    explicit PrivateXServer(const QString &screen = QStringLiteral("1280x1024x24"))
    {
        // Xvfb writes its display number to our end of the pipe once it takes clients.
        m_xvfb.start(QStringLiteral("Xvfb"),
                     {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                      QStringLiteral("0"), screen, QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                      QStringLiteral("-noreset")});
        if (!m_xvfb.waitForStarted(10000))
            return;
        QDeadlineTimer deadline(15000);
        while (!m_xvfb.canReadLine() && !deadline.hasExpired())
            m_xvfb.waitForReadyRead(200);
        const QString number = QString::fromLatin1(m_xvfb.readLine()).trimmed();
        if (!number.isEmpty())
            m_display = QLatin1Char(':') + number;
    }
    ~PrivateXServer()
    {
        if (m_xvfb.state() != QProcess::NotRunning) {
            m_xvfb.terminate();
            m_xvfb.waitForFinished(5000);
        }
    }
    PrivateXServer(const PrivateXServer &) = delete;
    PrivateXServer &operator=(const PrivateXServer &) = delete;

    /// ":N", or empty when the server did not start.
    const QString &display() const { return m_display; }

private:
    QProcess m_xvfb;
    QString m_display;
};
