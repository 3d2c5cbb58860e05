#include "GuiFixture.h"
#include "SingleInstance.h"
#include "dlgCaPc.h"
#include "dlgErrLog.h"
#include "dlgFMT.h"
#include "dlgPcCa.h"
#include "frmAbout.h"
#include "frmEdit.h"
#include "frmMain.h"
#include "frmPjName.h"
#include "frmPrintPage.h"
#include "frmProg.h"
#include "frmSetPath.h"
#include "frmStep.h"

#include <QAccessible>
#include <QAction>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>

#include <functional>

namespace {

/// What a screen reader is told about one window: every element of its accessibility tree.
struct AccessibleElement
{
    QAccessible::Role role;
    QString name;
    QObject *object;
};

void collect(QAccessibleInterface *iface, QList<AccessibleElement> &into, int depth = 0)
{
    if (!iface || depth > 40)
        return;
    into.append({iface->role(), iface->text(QAccessible::Name), iface->object()});
    for (int i = 0; i < iface->childCount(); ++i)
        collect(iface->child(i), into, depth + 1);
}

QList<AccessibleElement> accessibilityTree(QObject *window)
{
    QList<AccessibleElement> elements;
    collect(QAccessible::queryAccessibleInterface(window), elements);
    return elements;
}

bool isInput(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::ScrollBar:
    case QAccessible::Slider:
    case QAccessible::ComboBox:
    case QAccessible::List:
    case QAccessible::Table:
    case QAccessible::Tree:
        return true;
    default:
        return false;
    }
}

// A scroll area's own scroll bars and a combo box's drop-down list are parts of a control that
// carries the name itself.
bool isPartOfNamedControl(const QObject *object)
{
    for (const QObject *up = object ? object->parent() : nullptr; up; up = up->parent()) {
        if (up->objectName().startsWith(QLatin1String("qt_scrollarea_")) || up->inherits("QComboBox"))
            return true;
    }
    return false;
}

QString describe(const AccessibleElement &element)
{
    const QObject *o = element.object;
    return (o ? o->objectName() + QLatin1Char('/') + QLatin1String(o->metaObject()->className())
                    + (o->parent() ? QLatin1Char('<') + QLatin1String(o->parent()->metaObject()->className())
                                   : QString())
              : QStringLiteral("?"))
        + QLatin1Char('(') + QString::number(element.role) + QLatin1Char(')');
}

using WindowMaker = std::function<QWidget *()>;

} // namespace

Q_DECLARE_METATYPE(WindowMaker)

class tst_Accessibility : public QObject
{
    Q_OBJECT

    std::unique_ptr<GuiFixture> f;
    std::unique_ptr<SingleInstance> instance;
    std::unique_ptr<frmMain> main;
    std::vector<std::unique_ptr<QWidget>> dialogs;

    frmMain *startMain()
    {
        instance = std::make_unique<SingleInstance>(f->home.filePath(QStringLiteral("dq480.lock")));
        main = std::make_unique<frmMain>(f->context);
        if (!main->MDIForm_Load(*instance))
            qFatal("main window did not start");
        return main.get();
    }
    frmEdit *startProject()
    {
        startMain()->mnuNew_Click();
        return main->editWindow();
    }
    frmProg *openProgram()
    {
        frmEdit *edit = startProject();
        edit->cmdTPrgNo_Click();
        return qobject_cast<frmProg *>(edit->programWindows().ProgramWindows[1].data());
    }
    template<typename T>
    QWidget *dialog(std::unique_ptr<T> made)
    {
        made->show();
        dialogs.push_back(std::move(made));
        return dialogs.back().get();
    }

private slots:
    void init()
    {
        f = std::make_unique<GuiFixture>();
        f->msgBox.answerOkBoxes = true;
    }
    void cleanup()
    {
        dialogs.clear();
        if (main) {
            f->msgBox.script({MsgBox::Answer::Ok, MsgBox::Answer::Ok});
            main->close();
        }
        main.reset();
        instance.reset();
        f.reset();
    }

    void everyInputIsNamedAndNoTwoButtonsShareAName_data()
    {
        QTest::addColumn<WindowMaker>("make");
        QTest::newRow("frmMain") << WindowMaker([this] { return static_cast<QWidget *>(startMain()); });
        QTest::newRow("frmEdit") << WindowMaker([this] { return static_cast<QWidget *>(startProject()); });
        QTest::newRow("frmProg") << WindowMaker([this] { return static_cast<QWidget *>(openProgram()); });
        QTest::newRow("frmStep") << WindowMaker([this] {
            frmProg *program = openProgram();
            program->cmdProgStep_Click();
            return static_cast<QWidget *>(program->stepWindow());
        });
        QTest::newRow("dlgPcCa") << WindowMaker(
            [this] { return dialog(std::make_unique<dlgPcCa>(f->context, nullptr)); });
        QTest::newRow("dlgPcCa 512") << WindowMaker([this] {
            f->state->SettingBuffer.CardAttribute = SettingData::Attribute512Sentences;
            return dialog(std::make_unique<dlgPcCa>(f->context, nullptr));
        });
        QTest::newRow("dlgCaPc") << WindowMaker(
            [this] { return dialog(std::make_unique<dlgCaPc>(f->context, nullptr)); });
        QTest::newRow("dlgFMT") << WindowMaker([this] {
            auto format = std::make_unique<dlgFMT>(f->context, nullptr);
            dialogs.push_back(std::move(format)); // shown, it would start formatting
            return dialogs.back().get();
        });
        QTest::newRow("frmPjName") << WindowMaker(
            [this] { return dialog(std::make_unique<frmPjName>(f->context, nullptr)); });
        QTest::newRow("frmSetPath") << WindowMaker(
            [this] { return dialog(std::make_unique<frmSetPath>(f->home.path(), nullptr)); });
        QTest::newRow("print dialog") << WindowMaker([this] {
            return dialog(std::make_unique<frmPrintPage>(f->context, PrintKind::AllSettingData, 1, nullptr));
        });
        QTest::newRow("about box") << WindowMaker([this] {
            return dialog(
                std::make_unique<frmAbout>(f->msgBox, nullptr, QStringLiteral("/usr/bin/hardinfo")));
        });
        QTest::newRow("error list") << WindowMaker([this] {
            f->state->SettingBuffer.SentenceFileName[0] = QStringLiteral("GONE.MP2");
            f->state->Setting.SentenceFileName[0] = QStringLiteral("GONE.MP2");
            return dialog(std::make_unique<dlgErrLog>(*f->state, nullptr));
        });
    }
    void everyInputIsNamedAndNoTwoButtonsShareAName()
    {
        QFETCH(WindowMaker, make);
        QWidget *window = make();
        QVERIFY(window);
        QStringList faults;
        QMap<QString, QStringList> buttonsByName;
        for (const AccessibleElement &element : accessibilityTree(window)) {
            if (isInput(element.role) && !isPartOfNamedControl(element.object)
                && element.name.trimmed().isEmpty())
                faults << QStringLiteral("unnamed ") + describe(element);
            if (element.role == QAccessible::PushButton)
                buttonsByName[element.name] << describe(element);
            if (auto *action = qobject_cast<QAction *>(element.object); action && !action->isVisible())
                faults << QStringLiteral("hidden entry ") + action->objectName();
        }
        for (auto it = buttonsByName.cbegin(); it != buttonsByName.cend(); ++it) {
            if (it.value().size() > 1)
                faults << QStringLiteral("buttons named '%1': %2")
                              .arg(it.key(), it.value().join(QLatin1Char(' ')));
        }
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QStringLiteral("; "))));
    }

    void statusFieldsSayWhatTheyShow_data()
    {
        QTest::addColumn<bool>("project");
        QTest::newRow("at start") << false;
        QTest::newRow("new project") << true;
    }
    void statusFieldsSayWhatTheyShow()
    {
        QFETCH(bool, project);
        startMain();
        if (project)
            main->mnuNew_Click();
        const QList<QPair<const char *, QString>> fields {{"lblCardSlot", QStringLiteral("Card slot")},
                                                          {"lblFileName", QStringLiteral("Filename")},
                                                          {"lblFileFolder", QStringLiteral("File location")}};
        for (const auto &[objectName, caption] : fields) {
            auto *field = findControl<QLabel>(main->statusBar(), QLatin1String(objectName));
            const QString name = QAccessible::queryAccessibleInterface(field)->text(QAccessible::Name);
            QVERIFY2(name.startsWith(caption) && name.endsWith(field->text()), qPrintable(name));
        }
        if (project) {
            auto *fileName = findControl<QLabel>(main->statusBar(), QStringLiteral("lblFileName"));
            QCOMPARE(QAccessible::queryAccessibleInterface(fileName)->text(QAccessible::Name),
                     QStringLiteral("Filename: New File"));
        }
    }

    void closedProgramWindowsLeaveTheTree_data()
    {
        QTest::addColumn<QString>("closeBy");
        QTest::newRow("program Cancel") << "cmdProgClose";
        QTest::newRow("program OK") << "cmdProgOk";
        QTest::newRow("program frame") << "frame";
        QTest::newRow("step OK, then program Cancel") << "cmdStepOk";
        QTest::newRow("project Exit") << "cmdClose";
    }
    void closedProgramWindowsLeaveTheTree()
    {
        QFETCH(QString, closeBy);
        frmProg *program = openProgram();
        program->cmdProgStep_Click();
        QPointer<frmStep> steps = program->stepWindow();
        QVERIFY(steps);
        if (closeBy == QLatin1String("frame")) {
            program->parentWidget()->close();
        } else if (closeBy == QLatin1String("cmdStepOk")) {
            findControl<QPushButton>(steps, closeBy)->click();
            findControl<QPushButton>(program, QStringLiteral("cmdProgClose"))->click();
        } else if (closeBy == QLatin1String("cmdClose")) {
            findControl<QPushButton>(main->editWindow(), closeBy)->click();
        } else {
            findControl<QPushButton>(program, closeBy)->click();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QStringList left;
        for (const AccessibleElement &element : accessibilityTree(main.get())) {
            if (qobject_cast<frmProg *>(element.object) || qobject_cast<frmStep *>(element.object)
                || qobject_cast<QMdiSubWindow *>(element.object))
                left << describe(element);
        }
        const int projectFrames = closeBy == QLatin1String("cmdClose") ? 0 : 1;
        QVERIFY2(left.size() == projectFrames, qPrintable(left.join(QLatin1Char(' '))));
        QCOMPARE(main->mdiArea()->subWindowList().size(), projectFrames);
    }
};

QTEST_MAIN(tst_Accessibility)
#include "tst_Accessibility.moc"
