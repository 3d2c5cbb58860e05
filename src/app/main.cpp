// dq480: the DQ-480 setting software's desktop program.

#include "AppContext.h"
#include "AppVersion.h"
#include "FileDialogs.h"
#include "ProgramFolder.h"
#include "QtMsgBox.h"
#include "SharedState.h"
#include "SingleInstance.h"
#include "SystemDrives.h"
#include "ToolbarIcons.h"
#include "frmMain.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("dq480"));
    QApplication::setApplicationDisplayName(QStringLiteral("Arvon DQ-480"));
    QApplication::setApplicationVersion(appVersionText());
    QApplication::setWindowIcon(ToolbarIcons::application());

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Setting software for the DQ-480 voice-message announcer: builds projects (sentence table,\n"
        "programs, steps), saves them as setting files (*.stf) and writes them to the memory card.\n\n"
        "Environment:\n"
        "  DQ480_HOME       the program folder (sentence folders, test tone)\n"
        "  DQ480_ENCODING   code page of setting files when --encoding is not given"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption encodingOption(QStringLiteral("encoding"),
                                            QStringLiteral("Code page of setting files (default CP932)."),
                                            QStringLiteral("NAME"));
    parser.addOption(encodingOption);
    parser.process(app);

    const TextEncoding encoding = parser.isSet(encodingOption) ? TextEncoding(parser.value(encodingOption))
                                                               : TextEncoding::platformDefault();
    if (!encoding.isValid()) {
        QTextStream(stderr) << "Unknown encoding: " << encoding.name() << "\n";
        return 2;
    }

    SharedState state(resolveProgramFolder(), encoding);
    QtMsgBox msgBox;
    QtFileDialogs fileDialogs;
    const std::unique_ptr<DriveSource> drives = makeSystemDriveSource();
    AppContext context {state, msgBox, fileDialogs, *drives};
    SingleInstance instance;

    frmMain mainWindow(context);
    if (!mainWindow.MDIForm_Load(instance))
        return 0;
    DeviceWatcher watcher;
    QObject::connect(&watcher, &DeviceWatcher::devicesChanged, &mainWindow, &frmMain::SysInfo1_DeviceChange);
    return QApplication::exec();
}
