// dq480-cli: reads, checks and converts DQ-480 setting files and card control files without a
// display, for operators' scripts and for checking what the desktop program writes.

#include "cli/CliCommands.h"
#include "setting/ProgramFolder.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QGuiApplication>

#include <cstdio>
#include <functional>
#include <map>
#include <memory>

namespace {

const char HelpText[] = R"(Usage: dq480-cli [options] COMMAND [ARGS]

Reads and writes DQ-480 setting files (*.stf) and card control files (DQ480.CSV).

Commands:
  new FILE              write a new, empty project as a setting file
                        (refuses an existing FILE unless --force is given)
  check FILE            read a setting file or card control file and print a summary:
                        project name, card capacity, used sentences, programs with steps
  convert IN OUT        read IN and write OUT: a card control file when OUT is named
                        DQ480.CSV (any case) or --card-control is given, else a setting file
  show FILE --json      print the project as JSON, one key per setting field
  write-card PROJECT --card MOUNTPOINT [--yes|--no]
                        write a project to the card mounted there: control file, test tone and
                        sentences, with every question answered yes or no (else asked here until
                        the answer is y or n; with no terminal to answer on, the answer is no)
  print FILE --kind KIND --pdf OUT.pdf [--pages FROM-TO]
                        print a project to a PDF: KIND is info, all, programs or program=N
  drives [--watch]      list the PC's drives as the program sees them: path, type, readiness,
                        file system, sizes, media check, and whether it can be the card slot;
                        with --watch, print each change until stopped (Ctrl+C)
  import IN... --to FOLDER [--name NAME] [--quality standard|high] [--loudness LUFS|off] [--trim]
                        make a sentence the device plays from each recording (WAV, AIFF, FLAC,
                        OGG, Opus, MP3, MP2): mono MPEG-1 Layer II, standard = 32 kHz 64 kbit/s
                        (default), high = 44.1 kHz 128 kbit/s, at -16 LUFS unless --loudness
                        says otherwise (off keeps the recording's level); a limiter holds the
                        peaks so that the written file's true peak stays at most -1 dBTP;
                        --trim cuts silence under -50 dBFS at both ends. The sentence is named
                        after the recording, upper case; a name longer than 8 characters or
                        holding a blank, a full stop or \ / : * ? < > | , " ;, or a Windows
                        device name (CON, NUL, COM1...), is refused unless --name gives one. An existing sentence is replaced only with --force. Prints name,
                        duration and the loudness the written file plays at.
                        A recording that cannot be read, is not a regular file, is truncated
                        or damaged, has a sample rate outside 1000 to 768000 Hz, is silent or
                        longer than 30 minutes is refused with the reason; nothing is written
                        for it.
  info FILE...          print an audio file's format, duration, integrated loudness (LUFS),
                        true peak (dBTP), and whether the device plays it as it is
  play PROJECT --program N [--passes K] [--render FILE.wav]
                        play program N (1 to 64) as the device will: its sentences back to
                        back, each wait as silence, repeated with its interval as its method
                        says; Endless and Repeat with count 0 play until stopped (Ctrl+C), or
                        K passes; --passes K plays at most K. A step whose sentence file is
                        missing is named and skipped. --render writes exactly that sound to
                        FILE.wav (16-bit mono) instead of playing it

Options:
  --encoding NAME       code page of the files (default CP932; also DQ480_ENCODING)
  --card-control        with convert: write a card control file whatever OUT is named
  --json                with show: print JSON
  --force               with new and import: replace an existing file
  --watch               with drives: keep watching
  --card MOUNTPOINT     with write-card: where the card is mounted
  --yes, --no           with write-card: the answer to every question
  --kind, --pdf, --pages  with print: what to print, where, and which pages
  --to, --name, --quality, --loudness, --trim  with import: see above
  --program, --passes, --render  with play: see above
  -h, --help            show this help
  -v, --version         show the version

Environment:
  DQ480_HOME            the program folder (sentence folders, test tone)
  DQ480_ENCODING        the code page, when --encoding is not given

Exit status:
  0  done; for write-card: every file is on the card
  1  "Setting file error!" (not a valid setting file, or a name that cannot be used), or a text
     that the code page cannot hold, or bytes it cannot read back as they are
  2  wrong arguments, or a file that cannot be read or written; from play: a step skipped or
     no sound output
  3  write-card went through, but a sentence (or the test tone) was missing, refused by the
     MP2 check, too large, or a read-only copy kept with --no; the files are named
  4  write-card stopped: slot not ready, a card mounted read-only, a read-only or kept control
     file, not enough room, or a write that failed
)";

} // namespace

int main(int argc, char *argv[])
{
    // Only printing needs fonts and a paint engine; it draws without a display.
    const bool printing = argc > 1 && qstrcmp(argv[1], "print") == 0;
    if (printing && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const std::unique_ptr<QCoreApplication> application = printing
        ? std::make_unique<QGuiApplication>(argc, argv)
        : std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("dq480"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.01"));

    QTextStream out(stdout);
    QTextStream err(stderr);

    QCommandLineParser parser;
    const QCommandLineOption encodingOption(QStringLiteral("encoding"), QString(), QStringLiteral("NAME"));
    const QCommandLineOption cardControlOption(QStringLiteral("card-control"));
    const QCommandLineOption jsonOption(QStringLiteral("json"));
    const QCommandLineOption forceOption(QStringLiteral("force"));
    const QCommandLineOption watchOption(QStringLiteral("watch"));
    const QCommandLineOption cardOption(QStringLiteral("card"), QString(), QStringLiteral("MOUNTPOINT"));
    const QCommandLineOption yesOption(QStringLiteral("yes"));
    const QCommandLineOption noOption(QStringLiteral("no"));
    const QCommandLineOption kindOption(QStringLiteral("kind"), QString(), QStringLiteral("KIND"));
    const QCommandLineOption pdfOption(QStringLiteral("pdf"), QString(), QStringLiteral("FILE"));
    const QCommandLineOption pagesOption(QStringLiteral("pages"), QString(), QStringLiteral("RANGE"));
    const QCommandLineOption toOption(QStringLiteral("to"), QString(), QStringLiteral("FOLDER"));
    const QCommandLineOption nameOption(QStringLiteral("name"), QString(), QStringLiteral("NAME"));
    const QCommandLineOption qualityOption(QStringLiteral("quality"), QString(), QStringLiteral("QUALITY"));
    const QCommandLineOption loudnessOption(QStringLiteral("loudness"), QString(), QStringLiteral("LUFS"));
    const QCommandLineOption trimOption(QStringLiteral("trim"));
    const QCommandLineOption programOption(QStringLiteral("program"), QString(), QStringLiteral("N"));
    const QCommandLineOption passesOption(QStringLiteral("passes"), QString(), QStringLiteral("K"));
    const QCommandLineOption renderOption(QStringLiteral("render"), QString(), QStringLiteral("FILE"));
    const QCommandLineOption helpOption(QStringList {QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption versionOption(QStringList {QStringLiteral("v"), QStringLiteral("version")});
    parser.addOptions({encodingOption, cardControlOption, jsonOption,   forceOption,   watchOption,
                       cardOption,     yesOption,         noOption,     kindOption,    pdfOption,
                       pagesOption,    toOption,          nameOption,   qualityOption, loudnessOption,
                       trimOption,     programOption,     passesOption, renderOption,  helpOption,
                       versionOption});

    if (!parser.parse(QCoreApplication::arguments())) {
        err << parser.errorText() << "\nTry 'dq480-cli --help'.\n";
        return ExitCode::UsageOrFileError;
    }
    if (parser.isSet(helpOption)) {
        out << HelpText;
        return ExitCode::Ok;
    }
    if (parser.isSet(versionOption)) {
        out << "dq480-cli " << QCoreApplication::applicationVersion() << "\n";
        return ExitCode::Ok;
    }

    QStringList args = parser.positionalArguments();
    if (args.isEmpty()) {
        err << HelpText;
        return ExitCode::UsageOrFileError;
    }
    const QString command = args.takeFirst();

    TextEncoding encoding = parser.isSet(encodingOption) ? TextEncoding(parser.value(encodingOption))
                                                         : TextEncoding::platformDefault();
    if (!encoding.isValid()) {
        err << "Unknown encoding: " << encoding.name() << "\n";
        return ExitCode::UsageOrFileError;
    }

    CliContext cli {out, err, resolveProgramFolder(), encoding};
    cli.force = parser.isSet(forceOption);
    cli.cardControl = parser.isSet(cardControlOption);
    cli.json = parser.isSet(jsonOption);

    const std::map<QString, std::function<int(CliContext &, const QStringList &)>> commands {
        {QStringLiteral("new"), runNew},
        {QStringLiteral("check"), runCheck},
        {QStringLiteral("convert"), runConvert},
        {QStringLiteral("show"), runShow},
        {QStringLiteral("write-card"),
         [&](CliContext &c, const QStringList &a) {
             const auto answers = parser.isSet(yesOption) ? TerminalMsgBox::Preset::Yes
                 : parser.isSet(noOption)                 ? TerminalMsgBox::Preset::No
                                                          : TerminalMsgBox::Preset::Ask;
             return runWriteCard(c, a, parser.value(cardOption), answers);
         }},
        {QStringLiteral("print"),
         [&](CliContext &c, const QStringList &a) {
             return runPrint(c, a, parser.value(kindOption), parser.value(pdfOption),
                             parser.value(pagesOption));
         }},
        {QStringLiteral("import"),
         [&](CliContext &c, const QStringList &a) {
             return runImport(c, a,
                              AudioOptions {parser.value(toOption), parser.value(nameOption),
                                            parser.value(qualityOption), parser.value(loudnessOption),
                                            parser.isSet(trimOption)});
         }},
        {QStringLiteral("info"), runInfo},
        {QStringLiteral("play"),
         [&](CliContext &c, const QStringList &a) {
             return runPlay(c, a, parser.value(programOption), parser.value(passesOption),
                            parser.value(renderOption));
         }},
        {QStringLiteral("drives"),
         [&](CliContext &c, const QStringList &a) {
             return runDrives(c, a, parser.isSet(watchOption));
         }},
    };
    const auto found = commands.find(command);
    if (found == commands.end()) {
        err << "Unknown command: " << command << "\nTry 'dq480-cli --help'.\n";
        return ExitCode::UsageOrFileError;
    }
    return found->second(cli, args);
}
