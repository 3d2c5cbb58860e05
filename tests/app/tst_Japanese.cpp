// The program in Japanese: no caption is cut off (also at twice the pixel density), the project's
// window still fits in the main window, and nothing written to a setting file or a card depends
// on the language of the windows.
#include "support/TypeText.h"
#include "support/WindowBench.h"
#include "widgets/AppTranslation.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <QTranslator>

namespace {

/// Takes every translator out again, so each test starts in English.
void removeTranslators()
{
    for (QTranslator *t : qApp->findChildren<QTranslator *>()) {
        QCoreApplication::removeTranslator(t);
        delete t;
    }
}

/// The controls of a window whose caption is wider than the room it got.
QStringList clippedCaptions(QWidget *window)
{
    QStringList clipped;
    const auto report = [&clipped](QWidget *w, const QString &text, int need, int have) {
        if (need > have)
            clipped << QStringLiteral("%1 '%2' needs %3 px, has %4")
                           .arg(w->objectName(), text)
                           .arg(need)
                           .arg(have);
    };
    for (QWidget *w : window->findChildren<QWidget *>()) {
        if (!w->isVisibleTo(window) || w->inherits("QMenu"))
            continue;
        if (auto *label = qobject_cast<QLabel *>(w); label && !label->wordWrap() && !label->text().isEmpty())
            report(w, label->text(), label->minimumSizeHint().width(), label->width());
        else if (auto *button = qobject_cast<QAbstractButton *>(w); button && !button->text().isEmpty())
            report(w, button->text(), button->minimumSizeHint().width(), button->width());
        else if (auto *group = qobject_cast<QGroupBox *>(w); group && !group->title().isEmpty())
            report(w, group->title(), group->fontMetrics().horizontalAdvance(group->title()) + 16,
                   group->width());
    }
    if (window->minimumSizeHint().isValid())
        report(window, window->windowTitle(), window->minimumSizeHint().width(), window->width());
    return clipped;
}

/// Shows what the window looks like, for a person checking the layout by eye.
void keepScreenshot(QWidget *window, const QString &name)
{
    const QString folder = qEnvironmentVariable("DQ480_SCREENSHOTS");
    if (folder.isEmpty())
        return;
    QDir().mkpath(folder);
    window->grab().save(QDir(folder).filePath(name + QStringLiteral(".png")));
}

} // namespace

class tst_Japanese : public QObject, public WindowBench
{
    Q_OBJECT

private slots:
    void init()
    {
        openBench();
        showMain = true;
    }
    void cleanup()
    {
        closeWindows();
        f.reset();
        removeTranslators();
    }

    // The device reads the card control file and the operator's other PCs read the setting file:
    // the bytes must be the same whichever language the windows speak.
    void writtenFilesDoNotDependOnTheLanguage()
    {
        const auto writeProject = [this](const QString &language) {
            cleanup();
            init();
            if (!AppTranslation::install(*qApp, language))
                return QList<QByteArray>();
            const QString card = f->home.filePath(QStringLiteral("card"));
            QDir().mkpath(card);
            f->drives.list = {{card, DriveInfo::Removable, true, QStringLiteral("FAT"), 64 << 20, 32 << 20,
                               32 << 20, QString()}};
            frmEdit *edit = startProject();
            // Texts typed by the operator, in the code page's own characters.
            typeText(findControl<QLineEdit>(edit, QStringLiteral("txtNo")), QStringLiteral("山田"));
            typeText(findControl<QPlainTextEdit>(edit, QStringLiteral("txtExp")), QStringLiteral("駅 案内"));
            findControl<QPushButton>(edit, QStringLiteral("cmdEditApp"))->click();
            // A program whose settings the window shows in words: method, repeat and busy output.
            edit->cmdTPrgNo_Click();
            auto *program = qobject_cast<frmProg *>(edit->programWindows().ProgramWindows[1].data());
            auto *method = findControl<QComboBox>(program, QStringLiteral("cmbPrgMethod"));
            method->setCurrentIndex(2);
            emit method->activated(2);
            findControl<QRadioButton>(program, QStringLiteral("optPrgBusy_0"))->click();
            findControl<QPushButton>(program, QStringLiteral("cmdProgOk"))->click();

            const QString file = f->home.filePath(QStringLiteral("project.stf"));
            f->fileDialogs.answers << file;
            main->mnuSave_as_Click();
            f->state->CardSlot = card;
            f->state->CardSlotValid = true;
            f->msgBox.script({MsgBox::Answer::Ok});
            edit->cmdCaWrite_Click();

            QList<QByteArray> written;
            for (const QString &path : {file, card + QStringLiteral("/CONTENTS/DQ480.CSV")}) {
                QFile in(path);
                written << (in.open(QIODevice::ReadOnly)
                                ? in.readAll().replace(f->home.path().toUtf8(), "HOME")
                                : QByteArray("missing"));
            }
            if (!f->msgBox.unexpected.isEmpty())
                written << f->msgBox.unexpected.join(QLatin1Char('|')).toUtf8();
            return written;
        };
        const QList<QByteArray> english = writeProject(QStringLiteral("en"));
        QCOMPARE(english.size(), 2);
        QVERIFY(!english[0].startsWith("missing"));
        QVERIFY(!english[1].startsWith("missing"));
        QVERIFY(english[0].contains(QByteArray::fromHex("8e52 9363").replace(' ', ""))); // 山田 in CP932
        const QList<QByteArray> japanese = writeProject(QStringLiteral("ja"));
        QCOMPARE(japanese.size(), 2);
        QCOMPARE(japanese[0], english[0]);
        QCOMPARE(japanese[1], english[1]);
    }

    // A project never saved is "New File" inside, but the operator reads it in Japanese: in the
    // main window's caption and in the question before saving it.
    void newProjectIsNamedInJapanese()
    {
        QVERIFY(AppTranslation::install(*qApp, QStringLiteral("ja")));
        frmEdit *edit = startProject();
        QCOMPARE(main->windowTitle(), QStringLiteral("DQ-480 設定ソフト : 新規ファイル"));
        typeText(findControl<QLineEdit>(edit, QStringLiteral("txtNo")), QStringLiteral("山田"));
        f->msgBox.script({MsgBox::Answer::Cancel});
        findControl<QPushButton>(edit, QStringLiteral("cmdSave"))->click();
        QCOMPARE(f->msgBox.shown.size(), 1);
        QVERIFY2(f->msgBox.shown[0].endsWith(QStringLiteral("新規ファイル")), qPrintable(f->msgBox.shown[0]));
    }

    // On a small or HiDPI-scaled screen the project's window must still fit in the main window, or
    // its Card write, Save, Exit and Apply buttons fall below the bottom edge.
    void projectWindowFitsInTheMainWindow_data()
    {
        QTest::addColumn<QString>("language");
        QTest::newRow("en") << "en";
        QTest::newRow("ja") << "ja";
    }
    void projectWindowFitsInTheMainWindow()
    {
        QFETCH(QString, language);
        QVERIFY(AppTranslation::install(*qApp, language));
        startMain();
        // A small screen's worth of room: 1366 x 768 at 1.5 times the pixels, less the task bar.
        main->resize(900, 480);
        QCoreApplication::processEvents();
        main->mnuNew_Click();
        frmEdit *edit = main->editWindow();
        QCoreApplication::processEvents();
        auto *area = findControl<QMdiArea>(main.get(), QStringLiteral("MDIClient"));
        const QRect frame = edit->parentWidget()->geometry();
        QVERIFY(area->viewport()->rect().contains(frame));
        for (const char *name : {"cmdCaWrite", "cmdSave", "cmdClose", "cmdEditApp"}) {
            auto *button = findControl<QPushButton>(edit, QLatin1String(name));
            const QRect onArea(button->mapTo(area->viewport(), QPoint(0, 0)), button->size());
            QVERIFY2(area->viewport()->rect().contains(onArea), name);
        }
    }

    void noCaptionIsCutOff_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<WindowMaker>("make");
        for (const QString &language : {QStringLiteral("en"), QStringLiteral("ja")}) {
            const auto row = [&language](const char *name) -> QTestData & {
                return QTest::newRow(qPrintable(language + QLatin1Char(' ') + QLatin1String(name)))
                    << language;
            };
            addWindowRows(row);
            for (int tab : {1, 2}) {
                row(tab == 1 ? "frmEdit card tab" : "frmEdit data tab") << WindowMaker([this, tab] {
                    frmEdit *edit = startProject();
                    edit->findChild<QTabWidget *>()->setCurrentIndex(tab);
                    return static_cast<QWidget *>(edit);
                });
            }
            for (int method : {2, 3}) {
                // Repeat shows every box; Endless words its interval its own way.
                row(method == 2 ? "frmProg repeat" : "frmProg endless") << WindowMaker([this, method] {
                    frmProg *program = openProgram();
                    auto *methods = findControl<QComboBox>(program, QStringLiteral("cmbPrgMethod"));
                    methods->setCurrentIndex(method);
                    emit methods->activated(method);
                    return static_cast<QWidget *>(program);
                });
            }
        }
    }
    void noCaptionIsCutOff()
    {
        QFETCH(QString, language);
        QFETCH(WindowMaker, make);
        QVERIFY(AppTranslation::install(*qApp, language));
        QWidget *window = make();
        QVERIFY(window);
        QCoreApplication::processEvents();
        const QString scale = qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1"));
        keepScreenshot(
            window,
            QString::fromLatin1(QTest::currentDataTag()).replace(QLatin1Char(' '), QLatin1Char('-'))
                + QStringLiteral("-x") + scale);
        const QStringList clipped = clippedCaptions(window);
        QVERIFY2(clipped.isEmpty(), qPrintable(clipped.join(QStringLiteral("; "))));
    }
};

QTEST_MAIN(tst_Japanese)
#include "tst_Japanese.moc"
