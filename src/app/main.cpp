// dq480: the DQ-480 setting software's desktop program.

#include "mainwindow/ToolbarIcons.h"
#include "mainwindow/frmMain.h"
#include "platform/SingleInstance.h"
#include "platform/SystemDrives.h"
#include "setting/ProgramFolder.h"
#include "setting/SharedState.h"
#include "widgets/AppContext.h"
#include "widgets/AppTranslation.h"
#include "widgets/AppVersion.h"
#include "widgets/FileDialogs.h"
#include "widgets/QtMsgBox.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QTextStream>

namespace {

QCommandLineOption languageOption()
{
    return QCommandLineOption(QStringLiteral("language"),
                              QStringLiteral("Language of the windows: en or ja (default: the system's)."),
                              QStringLiteral("LANG"));
}

void describeOptions(QCommandLineParser &parser, const QCommandLineOption &encodingOption)
{
    parser.setApplicationDescription(QStringLiteral(
        "Setting software for the DQ-480 voice-message announcer: builds projects (sentence table,\n"
        "programs, steps), saves them as setting files (*.stf) and writes them to the memory card.\n\n"
        "Environment:\n"
        "  DQ480_HOME       the program folder (sentence folders, test tone)\n"
        "  DQ480_ENCODING   code page of setting files when --encoding is not given"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(encodingOption);
    parser.addPositionalArgument(
        QStringLiteral("FILE"),
        QStringLiteral("A setting file (*.stf) or card control file (DQ480.CSV) to open."),
        QStringLiteral("[FILE]"));
    parser.addOption(languageOption());
}

// Help and version are text only: they must work without a display.
bool asksForTextOnly(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (arg == "-h" || arg == "--help" || arg == "--help-all" || arg == "-v" || arg == "--version"
            || arg == "-?")
            return true;
    }
    return false;
}

void nameApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("dq480"));
    QCoreApplication::setApplicationVersion(appVersionText());
}

} // namespace

int main(int argc, char *argv[])
{
    const QCommandLineOption encodingOption(QStringLiteral("encoding"),
                                            QStringLiteral("Code page of setting files (default CP932)."),
                                            QStringLiteral("NAME"));
    if (asksForTextOnly(argc, argv)) {
        QCoreApplication app(argc, argv);
        nameApplication();
        QCommandLineParser parser;
        describeOptions(parser, encodingOption);
        parser.process(app); // prints and ends the program
        return 0;
    }

    QApplication app(argc, argv);
    nameApplication();
    // No application display name: the window system would add it to every window's and message
    // box's title, and the captions are the program's own.
    QApplication::setWindowIcon(ToolbarIcons::application());
    // Ties the windows to the installed menu entry, whose icon Wayland desktops show for them.
    QGuiApplication::setDesktopFileName(QStringLiteral("com.arvon.dq480"));
    QCommandLineParser parser;
    describeOptions(parser, encodingOption);
    parser.process(app);

    const TextEncoding encoding = parser.isSet(encodingOption) ? TextEncoding(parser.value(encodingOption))
                                                               : TextEncoding::platformDefault();
    if (!encoding.isValid()) {
        QTextStream(stderr) << "Unknown encoding: " << encoding.name() << "\n";
        return 2;
    }

    const QString language = AppTranslation::choose(parser.value(languageOption()));
    if (language.isEmpty() || !AppTranslation::install(app, language)) {
        QTextStream(stderr) << "Unknown language: " << parser.value(languageOption()) << "\n";
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
    // As File > Open would: a file manager's double-click or "dq480 FILE".
    if (const QStringList files = parser.positionalArguments(); !files.isEmpty())
        mainWindow.openProjectFile(QFileInfo(files.first()).absoluteFilePath());
    DeviceWatcher watcher;
    QObject::connect(&watcher, &DeviceWatcher::devicesChanged, &mainWindow, &frmMain::SysInfo1_DeviceChange);
    return QApplication::exec();
}
