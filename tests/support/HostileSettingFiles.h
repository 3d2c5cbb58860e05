#pragma once

// Setting files the program did not write, as another program, another code page or a hostile
// hand leaves them, with what opening each must end in. File > Open and dq480-cli run the same
// table; the pipe, the device and the huge value are made at test time.

#include "setting/ProjectFile.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/stat.h>

Q_DECLARE_METATYPE(LoadOutcome)

namespace HostileSettingFiles {

inline QString corpus(const char *name)
{
    return QStringLiteral(DQ480_TEST_DATA "/hostile/") + QLatin1String(name);
}

/// Adds the columns "path", "outcome" and "reason" (its "%1" stands for the path; empty for a file
/// that is read) and the rows; made files go into `folder`.
inline void addRows(const QString &folder)
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<LoadOutcome>("outcome");
    QTest::addColumn<QString>("reason");
    const auto changed = [](const char *where, const char *bytes) {
        return QStringLiteral("Line %1 holds bytes that the code page CP932 cannot read as they are: \"%2\". "
                              "Saved again, they would change. Start the program with --encoding and the "
                              "code page the file was written in, for example --encoding windows-1252 or "
                              "--encoding UTF-8.")
            .arg(QLatin1String(where), QLatin1String(bytes));
    };
    QTest::newRow("Latin-1 letter") << corpus("latin1-creator.stf") << LoadOutcome::WrongCodePage
                                    << changed("2 of %1 (CREATOR)", R"(M\xFCller)");
    QTest::newRow("UTF-8 emoji") << corpus("utf8-emoji-name.stf") << LoadOutcome::WrongCodePage
                                 << changed("1 of %1 (PJNAME)", R"(Station \xF0\x9F\x98\x80)");
    QTest::newRow("lead byte before a comma, in a continued explanation")
        << corpus("cp932-lead-byte-before-comma.stf") << LoadOutcome::WrongCodePage
        << changed("4 of %1 (EXPLE)", R"(messages\x82,)");
    QTest::newRow("lead byte at a line end, kanji below")
        << corpus("cp932-lead-byte-at-line-end.stf") << LoadOutcome::WrongCodePage
        << changed("2 of %1 (CREATOR)", R"(Ann\x82)");
    QTest::newRow("CR-only line ends")
        << corpus("cr-line-ends.stf") << LoadOutcome::Rejected
        << "The lines of %1 end with CR alone, as on old Macintosh computers, but setting files end each "
           "line with CR LF. Save it again with CR LF line ends.";
    QTest::newRow("UTF-8 byte order mark")
        << corpus("utf8-bom.stf") << LoadOutcome::Rejected
        << "%1 begins with a UTF-8 byte order mark, which setting files do not have. Save it again without "
           "the mark, in the code page CP932.";
    const QString utf16 = QStringLiteral(
        "%1 is UTF-16 text (two bytes a character), but setting files have one byte a character, in the code "
        "page CP932. Save it again in that code page.");
    QTest::newRow("UTF-16 with a mark") << corpus("utf16le.stf") << LoadOutcome::Rejected << utf16;
    QTest::newRow("UTF-16 without a mark")
        << corpus("utf16be-without-mark.stf") << LoadOutcome::Rejected << utf16;
    QTest::newRow("NUL in a name") << corpus("nul-in-project-name.stf") << LoadOutcome::Rejected
                                   << R"(PJNAME "Sta\x00tion" cannot be used as a name in %1.)";

    const QString huge = QDir(folder).filePath(QStringLiteral("huge-name.stf"));
    writeTestFile(huge, "PJNAME,/" + QByteArray(2 << 20, 'A') + ",\r\n");
    QTest::newRow("project name of 2 MiB")
        << huge << LoadOutcome::Rejected
        << QStringLiteral("PJNAME \"/%1\u2026\" (2097153 characters) cannot be used as a name in %2.")
               .arg(QString(39, QLatin1Char('A')), QStringLiteral("%1"));
    const QString pipe = QDir(folder).filePath(QStringLiteral("pipe.stf"));
    QFile::remove(pipe);
    if (::mkfifo(QFile::encodeName(pipe).constData(), 0600) != 0)
        qFatal("cannot make a named pipe");
    const QString notAFile = QStringLiteral("%1 is a pipe or a device, not a file: only files are read.");
    QTest::newRow("named pipe") << pipe << LoadOutcome::Unreadable << notAFile;
    QTest::newRow("endless device") << QStringLiteral("/dev/zero") << LoadOutcome::Unreadable << notAFile;

    QTest::newRow("NUL and kanji in the body, kept")
        << corpus("nul-and-kanji-in-body.stf") << LoadOutcome::Read << QString();
}

} // namespace HostileSettingFiles
