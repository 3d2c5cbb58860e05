#include "platform/CardFormatter.h"

#include "platform/win/WinFormat.h"
#include "platform/win/WindowsFormatLaunch.h"

#include <QCoreApplication>
#include <QTimer>

namespace {

// The system's format command in a hidden command processor, waited for by polling so the
// format dialog stays drawn. The format reports nothing itself: card write afterwards tells.
class WinCardFormatter : public CardFormatter
{
public:
    explicit WinCardFormatter(QObject *parent)
        : CardFormatter(parent)
    { }

    bool start(const DriveInfo &drive, QString &error) override
    {
        const WindowsFormatLaunch launch = windowsFormatLaunch(drive);
        if (!writeFormatAnswers(launch, error))
            return false;
        std::wstring reason;
        void *process = winStartHidden(launch.commandLine.toStdWString(), reason);
        if (!process) {
            error = QCoreApplication::translate("CardFormatter", "%1 could not be started: %2")
                        .arg(launch.program, QString::fromStdWString(reason));
            return false;
        }
        auto *poll = new QTimer(this);
        connect(poll, &QTimer::timeout, this, [this, poll, process] {
            if (!winProcessEnded(process, 100))
                return;
            poll->deleteLater();
            winCloseProcess(process);
            emit finished(true, QString());
        });
        poll->start(100);
        return true;
    }
};

} // namespace

CardFormatter *CardFormatter::create(QObject *parent)
{
    return new WinCardFormatter(parent);
}
