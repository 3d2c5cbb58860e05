#include "setting/PathText.h"

#include <QTest>

Q_DECLARE_METATYPE(PathStyle)

namespace {

void row(const char *name, PathStyle style, const QString &a, const QString &b, const QString &c)
{
    QTest::newRow(name) << style << a << b << c;
}

} // namespace

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
        row("drive letter alone", win, "E:", "CONTENTS", "E:\\CONTENTS");
        row("mount point with slash", posix, "/media/x/", "CONTENTS", "/media/x/CONTENTS");
        row("network share", win, "\\\\pc\\voice", "Station", "\\\\pc\\voice\\Station");
        row("colon is a character", posix, "/media/E:", "CONTENTS", "/media/E:/CONTENTS");
        row("backslash is a character", posix, "/media/a\\", "b", "/media/a\\/b");
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
        row("drive letter alone", win, "E:", "E:\\", "E:");
        row("drive root keeps its separator", win, "E:\\", "E:\\", "E:\\");
        row("folder with two separators", win, "C:\\Voice\\\\", "C:\\Voice\\\\", "C:\\Voice");
        row("posix folder", posix, "/media/x//", "/media/x//", "/media/x");
        row("posix folder bare", posix, "/media/x", "/media/x/", "/media/x");
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
        row("windows file", PathStyle::Windows, "C:\\a\\b.stf", "C:\\a\\", "b.stf");
        row("drive-relative file", PathStyle::Windows, "E:DQ480.CSV", "E:", "DQ480.CSV");
        row("posix colon", PathStyle::Posix, "/a/E:b", "/a/", "E:b");
        row("name alone", PathStyle::Posix, "b.stf", "", "b.stf");
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
