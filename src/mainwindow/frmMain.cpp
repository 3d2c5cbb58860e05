#include "mainwindow/frmMain.h"

#include "cardedit/frmEdit.h"
#include "mainwindow/ToolbarIcons.h"
#include "platform/SingleInstance.h"
#include "print/PrintSetting.h"
#include "setting/MsgBox.h"
#include "setting/ProgramFolder.h"
#include "setting/ProjectFile.h"
#include "setting/SentenceFolders.h"
#include "setting/SharedState.h"
#include "widgets/ProjectCommands.h"
#include "widgets/ShownFileName.h"
#include "widgets/frmAbout.h"
#include "widgets/frmSplash.h"

#include <QAction>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

namespace {

constexpr int SplashMilliseconds = 3000;

} // namespace

frmMain::frmMain(AppContext &context)
    : m_context(context)
    , m_projectCommands(new ProjectCommands(context, this))
    , m_mdiArea(new QMdiArea(this))
    , m_timer1(new QTimer(this))
    , m_detection(context.state, context.drives)
{
    setObjectName(QStringLiteral("frmMain"));
    m_projectCommands->setParent(this); // the window owns its commands and ends them with it
    m_mdiArea->setObjectName(QStringLiteral("MDIClient"));
    m_mdiArea->viewport()->installEventFilter(this);
    // A document window larger than the main window stays reachable: its buttons scroll into view.
    m_mdiArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_mdiArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(m_mdiArea);
    m_timer1->setObjectName(QStringLiteral("Timer1"));
    m_timer1->setInterval(SplashMilliseconds);
    connect(m_timer1, &QTimer::timeout, this, &frmMain::Timer1_Timer);
    connect(m_projectCommands, &ProjectCommands::fileDisplaysChanged, this, &frmMain::refreshFileDisplays);
    connect(m_projectCommands, &ProjectCommands::captionChanged, this, &QWidget::setWindowTitle);
    createMenus();
    createToolbar();
    createStatusBar();
    setProjectMenusVisible(false);

    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    // Room for the menus, the toolbar, the status bar and a corner of a document window.
    setMinimumSize(qMin(480, screen.width()), qMin(360, screen.height()));
    // Room for the card edit window with a program window and its step window over it. Every pixel
    // more is held twice (here and by the window system) from the first start on.
    resize(qMin(800, screen.width() - 40), qMin(600, screen.height() - 40));
    move(screen.center() - rect().center());
}

frmMain::~frmMain() = default;

QAction *frmMain::addAction(QMenu *menu, const char *objectName, const QString &caption,
                            void (frmMain::*slot)())
{
    QAction *action = menu->addAction(caption);
    action->setObjectName(QLatin1String(objectName));
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void frmMain::createMenus()
{
    QMenu *file = menuBar()->addMenu(tr("File(&F)"));
    file->setObjectName(QStringLiteral("mnuFile"));
    addAction(file, "mnuNew", tr("New(&N)"), &frmMain::mnuNew_Click)->setShortcut(QKeySequence::New);
    addAction(file, "mnuOpen", tr("Open(&S)"), &frmMain::mnuOpen_Click)->setShortcut(QKeySequence::Open);
    QAction *save = addAction(file, "mnuSave", tr("Save(&S)"), &frmMain::mnuSave_Click);
    save->setShortcut(QKeySequence::Save);
    QAction *saveAs = addAction(file, "mnuSave_as", tr("Save as(&A)"), &frmMain::mnuSave_as_Click);
    QAction *separator = file->addSeparator();
    QAction *cardWrite = m_mnuCardWrite
        = addAction(file, "mnuCardWrite", tr("Card write"), &frmMain::mnuCardWrite_Click);
    QMenu *print = file->addMenu(tr("Print"));
    print->setObjectName(QStringLiteral("mnuPrint"));
    addAction(print, "mnuInfCopy", tr("File information copy"), &frmMain::mnuInfCopy_Click);
    addAction(print, "mnuAllInfo", tr("All setting data copy"), &frmMain::mnuAllInfo_Click);
    addAction(print, "mnuAllProgram", tr("All program copy"), &frmMain::mnuAllProgram_Click);
    file->addSeparator();
    addAction(file, "mnuExit", tr("Exit"), &frmMain::mnuExit_Click);
    m_projectMenuItems = {save, saveAs, separator, cardWrite, print->menuAction()};
    m_fileEntries = MenuEntries(file);

    QMenu *tool = menuBar()->addMenu(tr("Tool(&T)"));
    tool->setObjectName(QStringLiteral("mnuTool"));
    QMenu *cardSlots = tool->addMenu(tr("Card slot setting"));
    cardSlots->setObjectName(QStringLiteral("mnuCardSlot"));
    for (int i = 0; i < CardSlotEntries; ++i) {
        m_mnuCard[i] = cardSlots->addAction(QString());
        m_mnuCard[i]->setObjectName(QStringLiteral("mnuCard_%1").arg(i));
        m_mnuCard[i]->setCheckable(true);
        connect(m_mnuCard[i], &QAction::triggered, this, [this, i] { mnuCard_Click(i); });
    }
    m_cardSlotEntries = MenuEntries(cardSlots);
    m_mnuSvSet = addAction(tool, "mnuSvSet", tr("Surveillance file enable"), &frmMain::mnuSvSet_Click);
    m_mnuSvSet->setCheckable(true);

    QMenu *help = menuBar()->addMenu(tr("Help(&H)"));
    help->setObjectName(QStringLiteral("mnuHelpMenu"));
    addAction(help, "mnuHelp", tr("Help(&H)"), &frmMain::mnuHelp_Click)
        ->setShortcut(QKeySequence::HelpContents);
}

void frmMain::createToolbar()
{
    QToolBar *toolbar = addToolBar(tr("Toolbar"));
    toolbar->setObjectName(QStringLiteral("TbrMain"));
    toolbar->setMovable(false);
    toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    const struct
    {
        const char *key;
        QString text;
        QString tip;
        QIcon icon;
        void (frmMain::*slot)();
    } buttons[] = {
        {"new", tr("New"), tr("New project"), ToolbarIcons::newFile(style()), &frmMain::mnuNew_Click},
        {"open", tr("Open"), tr("Open a setting file"), ToolbarIcons::open(style()), &frmMain::mnuOpen_Click},
        {"save", tr("Save"), tr("Save the setting file"), ToolbarIcons::save(style()),
         &frmMain::mnuSave_Click},
        {"print", tr("Print"), tr("Print the setting data"), ToolbarIcons::print(),
         &frmMain::mnuAllInfo_Click},
        {"help", tr("Help"), tr("Version information"), ToolbarIcons::help(), &frmMain::mnuHelp_Click},
    };
    for (const auto &button : buttons) {
        QAction *action = toolbar->addAction(button.icon, button.text);
        action->setObjectName(QLatin1String(button.key));
        action->setToolTip(button.tip);
        action->setStatusTip(button.tip);
        connect(action, &QAction::triggered, this, button.slot);
        if (qstrcmp(button.key, "save") == 0 || qstrcmp(button.key, "print") == 0)
            m_projectToolButtons.append(action);
    }
}

void frmMain::createStatusBar()
{
    m_fileNameDisplay = new QLabel(this);
    m_fileNameDisplay->setObjectName(QStringLiteral("lblFileName"));
    m_folderDisplay = new QLabel(this);
    m_folderDisplay->setObjectName(QStringLiteral("lblFileFolder"));
    m_cardSlotDisplay = new QLabel(this);
    m_cardSlotDisplay->setObjectName(QStringLiteral("lblCardSlot"));
    statusBar()->addWidget(m_cardSlotDisplay);
    statusBar()->addPermanentWidget(m_fileNameDisplay);
    statusBar()->addPermanentWidget(m_folderDisplay);
}

void frmMain::setProjectMenusVisible(bool visible)
{
    for (QAction *item : std::as_const(m_projectMenuItems))
        item->setVisible(visible);
    m_fileEntries.refresh();
    // Toolbar buttons stay in place, greyed, so the toolbar does not jump.
    for (QAction *button : std::as_const(m_projectToolButtons))
        button->setEnabled(visible);
}

bool frmMain::MDIForm_Load(SingleInstance &instance)
{
    if (!instance.acquire(m_context.state.AppPath)) {
        m_context.msgBox.show(tr("DQ-480 Setting soft is starting already"), MsgBox::Buttons::Ok,
                              MsgBox::Icon::Exclamation);
        return false;
    }
    // Sentences a crashed run left waiting would be taken for the project's own at the next Apply.
    ClearWorkFolder(m_context.state);
    m_cardMenu.captions[0] = tr("Nothing");
    for (int i = 0; i < CardSlotEntries; ++i)
        m_cardMenu.visible[i] = i == 0;
    showCardSlotMenu();
    m_mnuSvSet->setChecked(true);
    m_projectCommands->NewSettingFile();
    setWindowTitle(QStringLiteral("Arvon DQ-480"));

    SharedState &state = m_context.state;
    state.CardSlot.clear();
    state.CardSlotValid = false;
    state.CurrentFilePath.clear();

    show();
    // Sends the window to the screen now rather than after the card slot detections and the splash
    // window, so that the operator sees the program as soon as it is built. Input waits.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    // Kept on purpose: the card slots are detected twice at start-up, before and after the splash
    // shows, as the device's software always did.
    state.CardSlotValid = DetectCardSlots();
    // Said once, now, over the program's window, rather than as each sentence copy or card write
    // fails later.
    if (const QString problem = programFolderProblem(state.AppPath); !problem.isEmpty())
        m_context.msgBox.show(problem, MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
    m_splash = new frmSplash(this);
    m_splash->show();
    m_timer1->start();
    DetectCardSlots();
    return true;
}

bool frmMain::DetectCardSlots()
{
    const bool found = m_detection.DetectCardSlots(m_cardMenu);
    showCardSlotMenu();
    return found;
}

void frmMain::showCardSlotMenu()
{
    for (int i = 0; i < CardSlotEntries; ++i) {
        m_mnuCard[i]->setText(m_cardMenu.captions[i]);
        m_mnuCard[i]->setVisible(m_cardMenu.visible[i]);
        m_mnuCard[i]->setChecked(m_cardMenu.checked[i]);
    }
    m_cardSlotEntries.refresh();
    const SharedState &state = m_context.state;
    m_cardSlotDisplay->setText(state.CardSlotValid ? tr("Card slot: ") + state.CardSlot
                                                   : tr("Card slot: Nothing"));
}

void frmMain::refreshCardButtons()
{
    emit m_context.state.cardSlotChanged();
}

void frmMain::mnuCard_Click(int index)
{
    m_detection.MenuClick(m_cardMenu, index);
    showCardSlotMenu();
    refreshCardButtons();
}

void frmMain::SysInfo1_DeviceChange()
{
    m_detection.DeviceEvent(m_cardMenu);
    showCardSlotMenu();
    refreshCardButtons();
}

void frmMain::unloadSplash()
{
    if (m_splash)
        m_splash->close();
}

void frmMain::Timer1_Timer()
{
    m_timer1->stop();
    unloadSplash();
}

bool frmMain::eventFilter(QObject *watched, QEvent *event)
{
    // A click on the empty client area closes the splash window.
    if (watched == m_mdiArea->viewport() && event->type() == QEvent::MouseButtonPress)
        unloadSplash();
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::mnuNew_Click()
{
    SharedState &state = m_context.state;
    if (!state.CurrentFilePath.isEmpty())
        return;
    m_projectCommands->NewSettingFile();
    unloadSplash();
    state.ProjectFileName = QStringLiteral("New File");
    state.CurrentFilePath = state.ProjectFileName;
    showProjectWindow();
}

template<typename Read>
void frmMain::openWith(Read read)
{
    if (!m_context.state.CurrentFilePath.isEmpty())
        return;
    m_projectCommands->NewSettingFile();
    unloadSplash();
    if (read())
        showProjectWindow();
    refreshSurveillanceCheck();
}

void frmMain::mnuOpen_Click()
{
    openWith([this] { return m_projectCommands->OpenProject(); });
}

void frmMain::openProjectFile(const QString &path)
{
    openWith([this, &path] { return m_projectCommands->OpenProjectFile(path); });
}

void frmMain::showProjectWindow()
{
    auto *edit = new frmEdit(m_context, *m_projectCommands, m_mdiArea);
    connect(edit, &frmEdit::projectMenusVisible, this, &frmMain::setProjectMenusVisible);
    connect(edit, &frmEdit::captionChanged, this, &QWidget::setWindowTitle);
    connect(edit, &frmEdit::cardButtonsEnabled, m_mnuCardWrite, &QAction::setEnabled);
    m_editWindow = edit;
    edit->Form_Load();
    QMdiSubWindow *frame = m_mdiArea->addSubWindow(edit);
    frame->setAttribute(Qt::WA_DeleteOnClose);
    // Never larger than the room the main window has (a small or HiDPI-scaled screen), or the
    // window's buttons would sit below the bottom edge; never smaller than its layout needs.
    frame->resize(edit->sizeHint()
                      .expandedTo(QSize(600, 460))
                      .boundedTo(m_mdiArea->viewport()->size())
                      .expandedTo(frame->minimumSizeHint()));
    edit->show();
    refreshFileDisplays();
}

frmEdit *frmMain::editWindow() const
{
    return m_editWindow;
}

void frmMain::mnuSave_Click()
{
    m_projectCommands->SaveProject();
}

void frmMain::mnuSave_as_Click()
{
    m_projectCommands->SaveProjectAs();
}

void frmMain::mnuCardWrite_Click()
{
    // The same command as the card edit window's button, and like it only while a card is there.
    if (m_editWindow && m_mnuCardWrite->isEnabled())
        m_editWindow->cmdCaWrite_Click();
}

void frmMain::showPrintSetting(PrintKind kind)
{
    ::showPrintSetting(m_context, kind, 1, this);
}

void frmMain::mnuInfCopy_Click()
{
    showPrintSetting(PrintKind::FileInformation);
}

void frmMain::mnuAllInfo_Click()
{
    showPrintSetting(PrintKind::AllSettingData);
}

void frmMain::mnuAllProgram_Click()
{
    showPrintSetting(PrintKind::AllPrograms);
}

void frmMain::mnuExit_Click()
{
    close();
}

void frmMain::mnuSvSet_Click()
{
    m_context.state.SurveillanceFile = m_mnuSvSet->isChecked();
}

void frmMain::refreshSurveillanceCheck()
{
    m_mnuSvSet->setChecked(m_context.state.SurveillanceFile);
}

void frmMain::mnuHelp_Click()
{
    frmAbout about(m_context.msgBox, this);
    about.exec();
}

void frmMain::refreshFileDisplays()
{
    const SharedState &state = m_context.state;
    refreshSurveillanceCheck(); // a new or opened project brings its own switch
    m_fileNameDisplay->setText(shownFileName(state.ProjectFileName));
    m_folderDisplay->setText(folderDisplayText(state.ProjectFileName, state.ProjectFolder));
    // Screen readers read a status field by its name, so the name carries what the field shows.
    m_fileNameDisplay->setAccessibleName(tr("Filename: ") + m_fileNameDisplay->text());
    m_folderDisplay->setAccessibleName(tr("File location: ") + m_folderDisplay->text());
    m_folderDisplay->setToolTip(state.ProjectFolder);
}

bool frmMain::MDIForm_Unload()
{
    const QString question = pendingWorkQuestion(m_context.state);
    if (question.isEmpty()) {
        m_context.state.NewSetting();
    } else {
        if (!m_context.msgBox.confirm(question))
            return false;
        m_projectCommands->NewSettingFile();
    }
    unloadSplash();
    m_mdiArea->closeAllSubWindows();
    return true;
}

void frmMain::closeEvent(QCloseEvent *event)
{
    if (MDIForm_Unload())
        event->accept();
    else
        event->ignore();
}
