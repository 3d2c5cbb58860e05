#include "PathText.h"

#include <QTest>

Q_DECLARE_METATYPE(PathStyle)

class tst_PathText : public QObject
{
    Q_OBJECT

private slots:
    void join_data()
    {
        QTest::addColumn<PathStyle>("style");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("joined");
        const PathStyle win = PathStyle::Windows;
        const PathStyle posix = PathStyle::Posix;
        QTest::newRow("drive letter alone") << win << "E:"
                                            << "CONTENTS"
                                            << "E:\\CONTENTS";
        QTest::newRow("control file at the root") << win << "E:"
                                                  << "DQ480.CSV"
                                                  << "E:\\DQ480.CSV";
        QTest::newRow("mount point with slash") << posix << "/media/x/"
                                                << "CONTENTS"
                                                << "/media/x/CONTENTS";
        QTest::newRow("network share") << win << "\\\\pc\\voice"
                                       << "Station"
                                       << "\\\\pc\\voice\\Station";
        QTest::newRow("colon is a character") << posix << "/media/E:"
                                              << "CONTENTS"
                                              << "/media/E:/CONTENTS";
        QTest::newRow("backslash is a character") << posix << "/media/a\\"
                                                  << "b"
                                                  << "/media/a\\/b";
    }
    void join()
    {
        QFETCH(PathStyle, style);
        QFETCH(QString, folder);
        QFETCH(QString, name);
        QFETCH(QString, joined);
        QCOMPARE(joinPath(folder, name, style), joined);
    }

    void trailingSeparator_data()
    {
        QTest::addColumn<PathStyle>("style");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("with");
        QTest::addColumn<QString>("without");
        const PathStyle win = PathStyle::Windows;
        const PathStyle posix = PathStyle::Posix;
        QTest::newRow("drive letter alone") << win << "E:"
                                            << "E:\\"
                                            << "E:";
        QTest::newRow("drive root keeps its separator") << win << "E:\\"
                                                        << "E:\\"
                                                        << "E:\\";
        QTest::newRow("folder with two separators") << win << "C:\\Voice\\\\"
                                                    << "C:\\Voice\\\\"
                                                    << "C:\\Voice";
        QTest::newRow("posix folder") << posix << "/media/x//"
                                      << "/media/x//"
                                      << "/media/x";
        QTest::newRow("posix folder bare") << posix << "/media/x"
                                           << "/media/x/"
                                           << "/media/x";
    }
    void trailingSeparator()
    {
        QFETCH(PathStyle, style);
        QFETCH(QString, folder);
        QFETCH(QString, with);
        QFETCH(QString, without);
        QCOMPARE(withTrailingSeparator(folder, style), with);
        QCOMPARE(withoutTrailingSeparator(folder, style), without);
    }

    void split_data()
    {
        QTest::addColumn<PathStyle>("style");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("name");
        QTest::newRow("windows file") << PathStyle::Windows << "C:\\a\\b.stf"
                                      << "C:\\a\\"
                                      << "b.stf";
        QTest::newRow("drive-relative file") << PathStyle::Windows << "E:DQ480.CSV"
                                             << "E:"
                                             << "DQ480.CSV";
        QTest::newRow("posix colon") << PathStyle::Posix << "/a/E:b"
                                     << "/a/"
                                     << "E:b";
        QTest::newRow("name alone") << PathStyle::Posix << "b.stf"
                                    << ""
                                    << "b.stf";
    }
    void split()
    {
        QFETCH(PathStyle, style);
        QFETCH(QString, path);
        QFETCH(QString, folder);
        QFETCH(QString, name);
        const SplitPath split = splitAtLastSeparator(path, style);
        QCOMPARE(split.folder, folder);
        QCOMPARE(split.name, name);
    }
};

QTEST_GUILESS_MAIN(tst_PathText)
#include "tst_PathText.moc"
