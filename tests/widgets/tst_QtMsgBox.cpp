// The desktop program's real message boxes: every button of every button set gives its own answer.
#include "widgets/QtMsgBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <functional>

Q_DECLARE_METATYPE(MsgBox::Buttons)
Q_DECLARE_METATYPE(MsgBox::Answer)

namespace {

/// Runs `act` on the message box as soon as it is shown, while `show` waits in its event loop.
void whenBoxShows(std::function<void(QMessageBox *)> act)
{
    auto *poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, poll, [poll, act] {
        for (QWidget *w : QApplication::topLevelWidgets()) {
            auto *box = qobject_cast<QMessageBox *>(w);
            if (box && box->isVisible()) {
                poll->stop();
                poll->deleteLater();
                act(box);
                return;
            }
        }
    });
    poll->start(10);
}

} // namespace

class tst_QtMsgBox : public QObject
{
    Q_OBJECT

private slots:
    void clickingAButtonGivesItsAnswer_data()
    {
        QTest::addColumn<MsgBox::Buttons>("buttons");
        QTest::addColumn<int>("button");
        QTest::addColumn<MsgBox::Answer>("answer");
        QTest::newRow("OK of OK/Cancel")
            << MsgBox::Buttons::OkCancel << int(QMessageBox::Ok) << MsgBox::Answer::Ok;
    }

    void clickingAButtonGivesItsAnswer()
    {
        QFETCH(MsgBox::Buttons, buttons);
        QFETCH(int, button);
        QFETCH(MsgBox::Answer, answer);
        QString shownText;
        whenBoxShows([&](QMessageBox *box) {
            shownText = box->text();
            QAbstractButton *target = box->button(QMessageBox::StandardButton(button));
            QVERIFY(target);
            QTest::mouseClick(target, Qt::LeftButton);
        });
        QtMsgBox msgBox;
        QCOMPARE(msgBox.show(QStringLiteral("Write over the setting data"), buttons), answer);
        QCOMPARE(shownText, QStringLiteral("Write over the setting data"));
    }

    void keysGiveTheSafeOrDefaultAnswer_data()
    {
        QTest::addColumn<MsgBox::Buttons>("buttons");
        QTest::addColumn<int>("key");
        QTest::addColumn<MsgBox::Answer>("answer");
        QTest::newRow("Enter on OK/Cancel")
            << MsgBox::Buttons::OkCancel << int(Qt::Key_Return) << MsgBox::Answer::Ok;
        QTest::newRow("Escape on OK/Cancel")
            << MsgBox::Buttons::OkCancel << int(Qt::Key_Escape) << MsgBox::Answer::Cancel;
    }

    void keysGiveTheSafeOrDefaultAnswer()
    {
        QFETCH(MsgBox::Buttons, buttons);
        QFETCH(int, key);
        QFETCH(MsgBox::Answer, answer);
        whenBoxShows([key](QMessageBox *box) { QTest::keyClick(box, Qt::Key(key)); });
        QtMsgBox msgBox;
        QCOMPARE(msgBox.show(QStringLiteral("question"), buttons), answer);
    }

    // However long the text, the box fits the screen at once, so its OK button can be reached.
    void aLongTextStaysWithinTheScreen_data()
    {
        QTest::addColumn<QString>("text");
        QStringList lines;
        for (int i = 1; i <= 400; ++i)
            lines << QStringLiteral("PRGDATA,%1,3000,").arg(i, 4, 10, QLatin1Char('0'));
        QTest::newRow("400 lines") << lines.join(QLatin1Char('\n'));
        QTest::newRow("one line of 2 MiB") << QString(2 << 20, QLatin1Char('A'));
        QTest::newRow("2 MiB of words") << QStringLiteral("word ").repeated(400000);
    }
    void aLongTextStaysWithinTheScreen()
    {
        QFETCH(QString, text);
        QRect box;
        QString details;
        whenBoxShows([&](QMessageBox *shown) {
            box = shown->frameGeometry();
            details = shown->detailedText();
            QTest::keyClick(shown, Qt::Key_Return);
        });
        QtMsgBox msgBox;
        QCOMPARE(msgBox.show(text), MsgBox::Answer::Ok);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY2(box.height() <= screen.height(),
                 qPrintable(QStringLiteral("%1 pixels high on %2").arg(box.height()).arg(screen.height())));
        QVERIFY(text.startsWith(details.left(1000)) && !details.isEmpty());
    }

    // A box goes over the window in front: a progress window, even where the window manager left
    // the window under it active. Once answered, the window under it is active again, as without
    // a window manager nothing else makes it so.
    void boxGoesOverTheWindowInFront_data()
    {
        QTest::addColumn<bool>("progressShown");
        QTest::newRow("card write progress") << true;
        QTest::newRow("main window") << false;
    }
    void boxGoesOverTheWindowInFront()
    {
        QFETCH(bool, progressShown);
        QWidget main;
        main.show();
        QVERIFY(QTest::qWaitForWindowActive(&main));
        QProgressDialog progress(QStringLiteral("Card write"), QString(), 0, 3, &main);
        progress.setWindowModality(Qt::WindowModal);
        if (progressShown) {
            progress.show();
            QVERIFY(QTest::qWaitForWindowExposed(&progress));
            main.activateWindow();
            QTRY_VERIFY(main.isActiveWindow());
        }
        QWidget *front = progressShown ? static_cast<QWidget *>(&progress) : &main;
        QPointer<QWidget> under;
        whenBoxShows([&](QMessageBox *box) {
            under = box->parentWidget();
            box->activateWindow();
            QTRY_VERIFY(box->isActiveWindow());
            QTest::keyClick(box, Qt::Key_Return);
        });
        QtMsgBox msgBox;
        msgBox.show(QStringLiteral("Filesystem error :K160.MP2"));
        QCOMPARE(under.data(), front);
        QTRY_VERIFY(front->isActiveWindow());
    }
};

QTEST_MAIN(tst_QtMsgBox)
#include "tst_QtMsgBox.moc"
